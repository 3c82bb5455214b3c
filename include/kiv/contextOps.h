#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// One entry of a context menu: an operation, a submenu, or a separator.
struct ContextItem
{
    struct SeparatorTag
    {};

    /// An operation or a submenu, without an icon.
    ContextItem(std::string key, std::string text, bool submenu, bool checkable_, bool checked_,
                bool exclusive_, bool enabled_)
        : ContextItem(std::move(key), std::move(text), {}, submenu, checkable_, checked_,
                      exclusive_, enabled_)
    {}

    /// The same with an icon.
    ContextItem(std::string key, std::string text, std::string icon, bool submenu, bool checkable_,
                bool checked_, bool exclusive_, bool enabled_)
        : item(std::move(key)), label(std::move(text)), image(std::move(icon)),
          hasChildren(submenu), checkable(checkable_), checked(checked_), exclusive(exclusive_),
          enabled(enabled_)
    {}

    /// A line between entries, with a heading or without.
    ContextItem(SeparatorTag, std::string heading) : label(std::move(heading)), separator(true) {}

    std::string item;  ///< The entry's key, one element of the path given to `ContextOps::doOp`.
    std::string label; ///< The text shown.
    std::string image; ///< The name of an icon; empty for none.

    bool hasChildren = false; ///< A submenu; `items` lists its entries.
    bool checkable = false;   ///< Shows a check mark or not.
    bool checked = false;     ///< The check mark is set.
    bool exclusive = false;   ///< Checking it unchecks its checkable neighbours.
    bool enabled = true;      ///< Can be chosen.
    bool separator = false;   ///< True only for separators.
};

/// The context menu of one item, as its run-time offers it.
class KIV_EXPORT ContextOps
{
public:
    using Ptr = std::shared_ptr<ContextOps>;

    /// The keys from the top of the menu to an entry.
    using ItemPath = std::vector<std::string>;

    /// The menu of `item`; null for a null item, an empty path, a run-time without this interface,
    /// and an item without it. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr contextOps(const SceneItem::Ptr& item);

    ContextOps();
    ContextOps(const ContextOps&) = delete;
    ContextOps& operator=(const ContextOps&) = delete;
    virtual ~ContextOps();

    /// The item that the menu belongs to.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// The entries of the submenu at `itemPath`, in order, or of the menu itself for an empty path;
    /// none if the path does not lead to a submenu.
    [[nodiscard]] virtual std::vector<ContextItem> items(const ItemPath& itemPath) const = 0;

    /// Executes `doOpCmd(itemPath)` and drops it; does nothing if the run-time refuses.
    virtual void doOp(const ItemPath& itemPath);

    /// The command behind an entry; null if there is none or the run-time refuses.
    [[nodiscard]] virtual UndoableCommand::Ptr doOpCmd(const ItemPath& itemPath) = 0;
};

} // namespace Kiv_v4

#include "kiv/contextOpsHandler.h" // for code that knows this header alone
