#include "assimpHierarchy.h"

#include <algorithm>
#include <utility>

#include "assimpWalk.h"

namespace Kiv_v4::assimp {

namespace {

constexpr auto kHelpers = "helpers";

bool showsHelpers(const ChildFilter& filter)
{
    const auto flag = std::find_if(filter.begin(), filter.end(),
                                   [](const auto& known) { return known.name == kHelpers; });
    return flag == filter.end() || flag->value;
}

/// Calls `take` for each child of `parent`, in order, until it returns false; in the place of a
/// helper node, for the helper's children.
template <class Take>
void forEachAuthoredChild(const SceneFile& file, NodeIndex parent, Take take)
{
    std::vector<NodeIndex> pending; // the next one last
    const auto postpone = [&](NodeIndex index) {
        const auto& node = file.node(index);
        for (auto i = node.nbChildren; i > 0; --i) {
            pending.push_back(node.firstChild + i - 1);
        }
    };
    postpone(parent);
    while (!pending.empty()) {
        const auto index = pending.back();
        pending.pop_back();
        if (file.node(index).isHelper) {
            postpone(index);
        } else if (!take(index)) {
            return;
        }
    }
}

} // namespace

AssimpHierarchy::AssimpHierarchy(std::shared_ptr<const Mounts> mounts, SceneItem::Ptr item)
    : _mounts(std::move(mounts)), _item(std::move(item))
{}

SceneItem::Ptr AssimpHierarchy::sceneItem() const
{
    return _item;
}

template <class Visit>
void AssimpHierarchy::forRange(std::size_t first, std::size_t count, Visit visit) const
{
    if (const auto self = _mounts->nodeOrMaterial(_item)) {
        const auto& node = self->file().node(self->index());
        const auto from = std::min<std::size_t>(first, node.nbChildren);
        const auto to = from + std::min<std::size_t>(count, node.nbChildren - from);
        for (auto row = from; row < to; ++row) {
            visit(*self, static_cast<NodeIndex>(node.firstChild + row));
        }
    }
}

bool AssimpHierarchy::hasChildren() const
{
    return nbChildren() > 0;
}

SceneItemList AssimpHierarchy::children() const
{
    return childRange(0, nbChildren());
}

std::size_t AssimpHierarchy::nbChildren() const
{
    const auto self = _mounts->nodeOrMaterial(_item);
    return self ? self->file().node(self->index()).nbChildren : 0;
}

std::optional<std::size_t> AssimpHierarchy::row(const Path& child) const
{
    const auto self = _mounts->nodeOrMaterial(_item);
    if (!self || child.size() != _item->path().size() + 1 ||
        child.nbSegments() != _item->path().nbSegments() || !child.isAtOrBelow(_item->path())) {
        return std::nullopt;
    }
    const auto& node = self->file().node(self->index());
    const auto found = self->file().child(node, child.back());
    return found ? std::optional<std::size_t>(*found - node.firstChild) : std::nullopt;
}

SceneItemList AssimpHierarchy::childRange(std::size_t first, std::size_t count) const
{
    SceneItemList children;
    forRange(first, count, [&](const MountedNode& self, NodeIndex index) {
        children.push_back(below(self, index));
    });
    return children;
}

std::vector<ChildInfo> AssimpHierarchy::childInfos(std::size_t first, std::size_t count) const
{
    std::vector<ChildInfo> infos;
    forRange(first, count, [&](const MountedNode& self, NodeIndex index) {
        const auto& node = self.file().node(index);
        infos.push_back({node.component, nodeTypeName(node.type), _item->runTimeId()});
    });
    return infos;
}

SegmentWalk::Ptr AssimpHierarchy::segmentWalk() const
{
    const auto self = _mounts->nodeOrMaterial(_item);
    return self ? std::make_unique<FileWalk>(self->mount(), _item->path(), self->index())
                : std::make_unique<FileWalk>(nullptr, _item->path(), SceneFile::kRoot);
}

bool AssimpHierarchy::hasFilteredChildren(const ChildFilter& filter) const
{
    if (showsHelpers(filter)) {
        return hasChildren();
    }
    auto found = false;
    if (const auto self = _mounts->nodeOrMaterial(_item)) {
        forEachAuthoredChild(self->file(), self->index(),
                             [&found](NodeIndex) { return !(found = true); });
    }
    return found;
}

SceneItemList AssimpHierarchy::filteredChildren(const ChildFilter& filter) const
{
    if (showsHelpers(filter)) {
        return children();
    }
    SceneItemList children;
    if (const auto self = _mounts->nodeOrMaterial(_item)) {
        forEachAuthoredChild(self->file(), self->index(), [&](NodeIndex index) {
            children.push_back(below(*self, index));
            return true;
        });
    }
    return children;
}

ChildFilter AssimpHierarchy::defaultChildFilter() const
{
    return {{kHelpers, "Importer helper nodes", true}};
}

SceneItem::Ptr AssimpHierarchy::parent() const
{
    const auto self = _mounts->nodeOrMaterial(_item);
    if (!self) {
        return nullptr;
    }
    const auto above = self->file().node(self->index()).parent;
    if (above == self->index()) {
        return Hierarchy::createItem(self->mount()->gateway());
    }
    return std::make_shared<Item>(_item->path().pop(), self->mount(), above);
}

SceneItem::Ptr AssimpHierarchy::below(const MountedNode& node, NodeIndex index) const
{
    return itemBelow(_item->path(), node.mount(), node.index(), index);
}

SceneItem::Ptr AssimpHierarchy::defaultParent() const
{
    return nullptr;
}

SceneItemResultUndoableCommand::Ptr AssimpHierarchy::createChildCmd(const std::string&,
                                                                    const PathComponent&)
{
    return nullptr;
}

InsertChildCommand::Ptr AssimpHierarchy::insertChildCmd(const SceneItem::Ptr&,
                                                        const SceneItem::Ptr&)
{
    return nullptr;
}

SceneItemResultUndoableCommand::Ptr AssimpHierarchy::createGroupCmd(const SceneItemList&,
                                                                    const PathComponent&)
{
    return nullptr;
}

UndoableCommand::Ptr AssimpHierarchy::reorderCmd(const SceneItemList&)
{
    return nullptr;
}

UndoableCommand::Ptr AssimpHierarchy::ungroupCmd()
{
    return nullptr;
}

} // namespace Kiv_v4::assimp
