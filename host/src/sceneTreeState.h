#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "kiv/host/runTimeWatch.h"
#include "kiv/host/sceneTree.h"
#include "kiv/observer.h"
#include "kiv/rtid.h"

#include "childReader.h"
#include "ops.h"

namespace Kiv_v4::host {

/// The state of a `SceneTree`.
///
/// **Invariants.** Every node but the root has a parent, stands under its path in `byPath`, and its
/// path is that of its parent and one component more. Listeners are notified of each change at
/// once, so this holds after each op of a batch; the run-times are queried for the rows of children
/// and for further children at its end.
struct SceneTree::State
{
    using Items = std::vector<SceneItem::Ptr>;
    using Op = detail::Op;

    State();
    ~State();

    [[nodiscard]] detail::ChildReader reader(const Node& node) const;
    /// The children from `first` on that are not rows elsewhere; `isLast` if no more follow.
    [[nodiscard]] Items childrenOf(const Node& node, std::size_t first, std::size_t count,
                                   bool& isLast) const;
    [[nodiscard]] Node* find(const Path& path) const;
    /// The node whose children include the one at `path`; null if it was not opened.
    [[nodiscard]] Node* openParentOf(const Path& path);
    [[nodiscard]] bool canFetch(const Node& node) const;
    void fetch(Node& node, std::size_t count);

    // Changes, each with a notification of the listeners. Rows are those after the change.
    void insert(Node& parent, std::size_t row, const std::vector<Node*>& nodes);
    void remove(Node& parent, std::size_t first, std::size_t count);
    void remove(Node& node) { remove(*node._parent, node.row(), 1); }
    void move(Node& node, Node& newParent, std::size_t row);
    void tellChanged(Node& node);

    /// Makes a node without a parent yet; null if there is one of that path.
    [[nodiscard]] Node* make(const Path& path, const SceneItem::Ptr& item = {});

    /// Sets the paths of the node, which is now at `path`, and of its descendants.
    void setPath(Node& node, const Path& path);

    // Following.
    void follow(const std::vector<Op>& ops, bool isBatch);
    void followMove(const Op& op);
    void followCome(const Path& path);
    void followGone(const Path& path);
    void followRunTime(RunTimeEvent event, Rtid runTimeId);

    /// Whether a known child can be inserted under the node without reading all others.
    [[nodiscard]] bool opensFor(Node& parent);

    /// Moves a node to the row of its item in the run-time; unknown rows are compared later.
    void settle(Node& node);

    /// Leaves rows as they are that are as many as the children or, of children that are not all
    /// read, as the first of them; others are compared later.
    void settleRows(Node& parent);

    // Comparing.
    void compareAtEnd();
    void invalidate(Node& top);
    void reconcile(Node& parent);
    void removeOthers(Node& parent, const std::unordered_set<const Node*>& wanted);

    Node root;
    std::unordered_map<Path, Node*> byPath;
    ChildFilter filter;
    std::vector<Listener*> listeners;
    bool isTelling = false; ///< Whether listeners are in the middle of a change.
    Observer::Ptr observer;

    // For the notification in progress.
    bool isBatch = false;
    std::unordered_set<Node*> unsure;  ///< Nodes whose rows may differ from the children.
    std::unordered_set<Node*> invalid; ///< With their descendants.
    std::unordered_set<Node*> fresh;   ///< Inserted.

    const RunTimeWatch watch{
        [this](RunTimeEvent event, Rtid runTimeId) { followRunTime(event, runTimeId); }};

private:
    void forget(Node& top);
};

} // namespace Kiv_v4::host
