#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "kiv/subtreeWalk.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The items of another run-time that begin under the node at `path`; none for an ordinary item.
[[nodiscard]] SceneItemList itemsMountedAt(const Path& path, const Node& node);

/// Goes from node to node, and makes only the paths and items that are requested.
class MemoryWalk : public SegmentWalk
{
public:
    /// Begins before `top`, the node at `path`; visits nothing if `top` is null.
    MemoryWalk(std::shared_ptr<Tree> tree, const Path& path, Node* top);

    bool next() override;
    void skipSubtree() override { _skips = true; }
    [[nodiscard]] std::size_t depth() const override;
    [[nodiscard]] Rtid runTimeId() const override;
    [[nodiscard]] const PathComponent& name() const override;
    [[nodiscard]] const std::string& nodeType() const override;
    [[nodiscard]] Path path() const override;
    [[nodiscard]] SceneItem::Ptr item() const override;

private:
    bool goDown() noexcept;
    bool goOn();
    bool nextMounted();
    [[nodiscard]] Path ownPath() const;

    const std::shared_ptr<Tree> _tree;
    const std::uint64_t _version;
    Node* const _top;
    Node* _node;            ///< The current one, or the gateway of the current mounted item.
    std::size_t _depth = 0; ///< Of `_node`.
    bool _begun = false;
    bool _skips = false;
    /// Paths of the first nodes from `_top` down to `_node`: that of `_top` and the requested ones.
    mutable std::vector<Path> _paths;

    SceneItemList _mounted; ///< The current item and those after it.
    PathComponent _mountedName;
    std::string _mountedType;
};

} // namespace Kiv_v4::memory
