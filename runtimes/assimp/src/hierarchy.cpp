#include "hierarchy.h"

#include <algorithm>
#include <utility>

namespace Kiv_v4::assimp {

namespace {

constexpr auto kHelpers = "helpers";

bool showsHelpers(const ChildFilter& filter)
{
    const auto flag = std::find_if(filter.begin(), filter.end(),
                                   [](const auto& known) { return known.name == kHelpers; });
    return flag == filter.end() || flag->value;
}

/// Calls `take` for each child of `parent` that is no helper, and in the place of a helper for its
/// children, in order, until it returns false.
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

AssimpHierarchy::AssimpHierarchy(SceneItem::Ptr item, const Item& node)
    : _item(std::move(item)), _file(node.file()), _index(node.index())
{}

SceneItem::Ptr AssimpHierarchy::sceneItem() const
{
    return _item;
}

bool AssimpHierarchy::hasChildren() const
{
    return _file->node(_index).nbChildren > 0;
}

SceneItemList AssimpHierarchy::children() const
{
    SceneItemList children;
    const auto& node = _file->node(_index);
    for (NodeIndex i = 0; i < node.nbChildren; ++i) {
        children.push_back(itemBelow(_item->path(), _file, _index, node.firstChild + i));
    }
    return children;
}

bool AssimpHierarchy::hasFilteredChildren(ChildFilter const& filter) const
{
    if (showsHelpers(filter)) {
        return hasChildren();
    }
    auto found = false;
    forEachAuthoredChild(*_file, _index, [&found](NodeIndex) { return !(found = true); });
    return found;
}

SceneItemList AssimpHierarchy::filteredChildren(ChildFilter const& filter) const
{
    if (showsHelpers(filter)) {
        return children();
    }
    SceneItemList children;
    forEachAuthoredChild(*_file, _index, [&](NodeIndex index) {
        children.push_back(itemBelow(_item->path(), _file, _index, index));
        return true;
    });
    return children;
}

ChildFilter AssimpHierarchy::defaultChildFilter() const
{
    return {{kHelpers, "Importer helper nodes", true}};
}

SceneItem::Ptr AssimpHierarchy::parent() const
{
    const auto& path = _item->path();
    const auto above = _file->node(_index).parent;
    if (above == _index) {
        return Hierarchy::createItem(path.popSegment());
    }
    return std::make_shared<Item>(path.pop(), _file, above);
}

SceneItem::Ptr AssimpHierarchy::defaultParent() const
{
    return nullptr;
}

SceneItemResultUndoableCommand::Ptr AssimpHierarchy::createChildCmd(std::string const&,
                                                                    PathComponent const&)
{
    return nullptr;
}

InsertChildCommand::Ptr AssimpHierarchy::insertChildCmd(SceneItem::Ptr const&,
                                                        SceneItem::Ptr const&)
{
    return nullptr;
}

SceneItemResultUndoableCommand::Ptr AssimpHierarchy::createGroupCmd(SceneItemList const&,
                                                                    PathComponent const&)
{
    return nullptr;
}

UndoableCommand::Ptr AssimpHierarchy::reorderCmd(SceneItemList const&)
{
    return nullptr;
}

UndoableCommand::Ptr AssimpHierarchy::ungroupCmd()
{
    return nullptr;
}

} // namespace Kiv_v4::assimp
