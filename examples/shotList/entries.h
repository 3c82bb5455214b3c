#pragma once

#include <memory>
#include <string>

#include "kiv/kiv.h"

#include "shotList.h"

/// The show as the library sees it: entries found by path. Handlers, interface objects and commands
/// share it, so that what a client keeps still answers when the run-time has gone.
class Entries
{
public:
    static constexpr char kSeparator = '|';

    Entries(Kiv::Rtid id, Entry show);

    [[nodiscard]] Kiv::Path rootPath() const;

    /// The entry at `path`, or null.
    [[nodiscard]] Entry* find(const Kiv::Path& path);

    /// The entry at `path`. Throws `std::invalid_argument` when there is none.
    [[nodiscard]] Entry& existing(const Kiv::Path& path);

    /// A new item for the entry at `path`, or null when there is none.
    [[nodiscard]] Kiv::SceneItem::Ptr item(const Kiv::Path& path);

private:
    const Kiv::Rtid _id;
    Entry _show;
};

using EntriesPtr = std::shared_ptr<Entries>;

/// The child of that name, or the end.
[[nodiscard]] std::list<Entry>::iterator childNamed(Entry& parent, const std::string& name);

/// `name`, made fit for path strings and unique among the children of `parent`; `own`, the child
/// that asks, does not count.
[[nodiscard]] std::string freeName(const Entry& parent, std::string name,
                                   const Entry* own = nullptr);

/// Tells the host's scene, if there is one.
template <class Change, class... Arguments>
void announce(const Arguments&... arguments)
{
    if (Kiv::Scene::hasInstance()) {
        Kiv::Scene::instance().notify(Change(arguments...));
    }
}
