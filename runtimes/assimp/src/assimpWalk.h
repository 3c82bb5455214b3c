#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "kiv/subtreeWalk.h"

#include "assimpItem.h"

namespace Kiv_v4::assimp {

/// Goes from node to node of a file, and makes only the paths and items that are requested.
class FileWalk : public SegmentWalk
{
public:
    /// Begins before the node `top` at `path`; without a mount, visits nothing.
    FileWalk(std::shared_ptr<FileMount> mount, const Path& path, NodeIndex top);

    bool next() override;
    void skipSubtree() override { _skips = true; }
    [[nodiscard]] std::size_t depth() const override { return _depth; }
    [[nodiscard]] Rtid runTimeId() const override { return _paths.front().runTimeId(); }
    [[nodiscard]] const PathComponent& name() const override { return node().component; }
    [[nodiscard]] const std::string& nodeType() const override { return nodeTypeName(node().type); }
    [[nodiscard]] Path path() const override;
    [[nodiscard]] SceneItem::Ptr item() const override;

private:
    [[nodiscard]] const Node& node() const { return _mount->file->node(_index); }
    bool goOn();

    std::shared_ptr<FileMount> _mount; ///< Null after the last node.
    const Path _gateway;
    const NodeIndex _top;
    NodeIndex _index;
    std::size_t _depth = 0;
    bool _begun = false;
    bool _skips = false;
    /// Paths of the first nodes from `_top` down to the current one: that of `_top` and the
    /// requested ones.
    mutable std::vector<Path> _paths;
};

} // namespace Kiv_v4::assimp
