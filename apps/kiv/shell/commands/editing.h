#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kiv/host/transaction.h"
#include "kiv/sceneItem.h"

#include "shell/engine/session.h"

namespace app::shell {

/// Executes a command and enters it in the undo history under `name`. Throws `std::runtime_error`
/// that names the item and its run-time for a null command, which is how a run-time refuses.
void edit(const std::string& name, const Kiv_v4::SceneItem::Ptr& item,
          const Kiv_v4::UndoableCommand::Ptr& command);

/// The same within a larger step.
void run(Kiv_v4::host::Transaction& edits, const Kiv_v4::SceneItem::Ptr& item,
         const Kiv_v4::UndoableCommand::Ptr& command);

/// Prints the path of an item, or of each of several.
void print(const Session& session, const Kiv_v4::SceneItem::Ptr& item);

template <class Items>
void printAll(const Session& session, const Items& items)
{
    for (const auto& item : items) {
        print(session, item);
    }
}

/// Takes the items for which `goes` is true out of the selection, as part of a step: undoing it
/// selects them again, in their places.
void deselectIf(const Session& session, Kiv_v4::host::Transaction& edits,
                const std::function<bool(const Kiv_v4::SceneItem::Ptr&)>& goes);

/// Takes what is at and under the items out of the selection in the same way: part of a step that
/// removes them.
void deselectUnder(const Session& session, Kiv_v4::host::Transaction& edits,
                   const std::vector<Kiv_v4::SceneItem::Ptr>& items);

/// `item` as the user can type it.
[[nodiscard]] std::string textOf(const Kiv_v4::SceneItem::Ptr& item);

/// Throws `std::runtime_error` with the item and the reason.
[[noreturn]] void fail(const Kiv_v4::SceneItem::Ptr& item, const std::string& reason);

/// The interface object of the item; fails with the reason when the item has none.
template <class Interface>
[[nodiscard]] std::shared_ptr<Interface> required(std::shared_ptr<Interface> object,
                                                  const Kiv_v4::SceneItem::Ptr& item,
                                                  const std::string& reason)
{
    if (!object) {
        fail(item, reason);
    }
    return object;
}

} // namespace app::shell
