#pragma once

#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "kiv/observer.h"
#include "kiv/sceneNotification.h"

#include "checking.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

/// Follows a scene by its notifications only, as an outliner does, and reports their faults.
class Following : public Observer, public std::enable_shared_from_this<Following>
{
public:
    explicit Following(Checking& checking) : _checking(checking) {}

    /// Begins anew with the result of a walk, and observes the scene from now on.
    void begin();

    /// Forgets the notifications so far; those of the next change count. Observes `items` one by
    /// one.
    void expect(const Snapshot& items);

    /// Compares the notifications with the change from `before` to `after`.
    void compare(const Snapshot& before, const Snapshot& after);

    /// The number of notifications since `expect`.
    [[nodiscard]] std::size_t nbNotifications() const noexcept { return _nbNotifications; }

    void operator()(const Notification& notification) override;

private:
    using Op = SceneCompositeNotification::Op;
    using Children = std::unordered_map<Path, std::vector<Path>>; // of each item that is known

    void apply(const Op& op, bool atOnce);
    void added(const SceneItem::Ptr& item, bool atOnce);
    void deleted(const Path& path, std::uint8_t kind, bool atOnce);
    void moved(const SceneItem::Ptr& item, const Path& from, bool atOnce);
    void invalidated(const SceneItem::Ptr& item);

    void fetch(const Path& path);
    void drop(const Path& path);
    void place(const Path& path);

    // Within a batch, paths may name nothing until its end: the known items under them stay known.
    [[nodiscard]] Children knownUnder(const Path& top) const;
    void keep(const Children& known, const Path& from, const Path& to);

    void attributeChanged(const Path& path, const std::string& name);
    void noteFact(const Path& path, const std::string& fact);

    [[nodiscard]] bool isFollowed(const Path& path);
    [[nodiscard]] bool isTold(const Change& change) const;
    void compareStructure(const Snapshot& after);
    void unobserve();

    Checking& _checking;
    Children _children;
    std::vector<Path> _renewed; // with their descendants
    std::unordered_set<Path> _left;
    std::unordered_set<Path> _unplaced; // in a batch, at paths that they have left since
    std::set<std::pair<std::string, std::string>> _facts; // text of the path, fact
    std::unordered_map<Path, std::unordered_map<std::string, std::string>> _valuesThen;
    std::vector<SceneItem::Ptr> _observed;
    std::size_t _nbNotifications = 0;
};

} // namespace Kiv_v4::conformance
