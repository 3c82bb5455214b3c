#include "memoryHierarchy.h"

#include <algorithm>
#include <utility>

#include "editCommands.h"
#include "memoryItem.h"
#include "memoryWalk.h"

namespace Kiv_v4::memory {

namespace {

constexpr auto kMounted = "mounted";

bool showsMounted(const ChildFilter& filter)
{
    const auto flag = std::find_if(filter.begin(), filter.end(),
                                   [](const auto& known) { return known.name == kMounted; });
    return flag == filter.end() || flag->value;
}

} // namespace

MemoryHierarchy::MemoryHierarchy(std::shared_ptr<Tree> tree, SceneItem::Ptr item)
    : _tree(std::move(tree)), _item(std::move(item))
{}

SceneItem::Ptr MemoryHierarchy::sceneItem() const
{
    return _item;
}

bool MemoryHierarchy::hasChildren() const
{
    const auto* self = node();
    return self && (self->firstChild || !mountedItems().empty());
}

SceneItemList MemoryHierarchy::children() const
{
    auto children = ownChildren();
    children.splice(children.end(), mountedItems());
    return children;
}

bool MemoryHierarchy::hasFilteredChildren(const ChildFilter& filter) const
{
    const auto* self = node();
    return showsMounted(filter) ? hasChildren() : self && self->firstChild;
}

SceneItemList MemoryHierarchy::filteredChildren(const ChildFilter& filter) const
{
    return showsMounted(filter) ? children() : ownChildren();
}

ChildFilter MemoryHierarchy::defaultChildFilter() const
{
    return {{kMounted, "Mounted scenes", true}};
}

SceneItem::Ptr MemoryHierarchy::parent() const
{
    const auto* self = node();
    return self && self->parent ? makeItem(*_tree, _item->path().pop(), *self->parent) : nullptr;
}

SceneItem::Ptr MemoryHierarchy::defaultParent() const
{
    return node() ? _item : nullptr;
}

SceneItemResultUndoableCommand::Ptr MemoryHierarchy::createChildCmd(const std::string& nodeType,
                                                                    const PathComponent& name)
{
    return memory::createChildCmd(_tree, _item->path(), nodeType, name);
}

InsertChildCommand::Ptr MemoryHierarchy::insertChildCmd(const SceneItem::Ptr& child,
                                                        const SceneItem::Ptr& before)
{
    return memory::insertChildCmd(_tree, _item->path(), child, before);
}

SceneItemResultUndoableCommand::Ptr MemoryHierarchy::createGroupCmd(const SceneItemList& members,
                                                                    const PathComponent& name)
{
    return memory::createGroupCmd(_tree, _item->path(), members, name);
}

UndoableCommand::Ptr MemoryHierarchy::reorderCmd(const SceneItemList& orderedList)
{
    return memory::reorderCmd(_tree, _item->path(), orderedList);
}

UndoableCommand::Ptr MemoryHierarchy::ungroupCmd()
{
    return memory::ungroupCmd(_tree, _item->path());
}

std::size_t MemoryHierarchy::nbChildren() const
{
    const auto* self = node();
    return self ? _tree->nbChildren(*self) + mountedItems().size() : 0;
}

std::optional<std::size_t> MemoryHierarchy::row(const Path& child) const
{
    const auto* self = node();
    if (!self) {
        return std::nullopt;
    }
    if (const auto* found = _tree->find(child)) {
        return found->parent == self ? std::optional(_tree->rowOf(*found)) : std::nullopt;
    }
    auto row = _tree->nbChildren(*self);
    for (const auto& item : mountedItems()) {
        if (item->path() == child) {
            return row;
        }
        ++row;
    }
    return std::nullopt;
}

SceneItemList MemoryHierarchy::childRange(std::size_t first, std::size_t count) const
{
    SceneItemList range;
    forRange(
        first, count, [&](Node& child) { range.push_back(itemOf(child)); },
        [&](const SceneItem::Ptr& mounted) { range.push_back(mounted); });
    return range;
}

std::vector<ChildInfo> MemoryHierarchy::childInfos(std::size_t first, std::size_t count) const
{
    std::vector<ChildInfo> infos;
    forRange(
        first, count,
        [&](const Node& child) {
            infos.push_back({child.name, child.type, _tree->runTimeId()});
        },
        [&](const SceneItem::Ptr& mounted) {
            infos.push_back({mounted->path().back(), mounted->nodeType(), mounted->runTimeId()});
        });
    return infos;
}

UndoableCommand::Ptr MemoryHierarchy::createChildrenCmd(const std::string& nodeType,
                                                        const std::vector<PathComponent>& names)
{
    return memory::createChildrenCmd(_tree, _item->path(), nodeType, names);
}

SegmentWalk::Ptr MemoryHierarchy::segmentWalk() const
{
    return std::make_unique<MemoryWalk>(_tree, _item->path(), node());
}

/// Calls one function for each own child and the other for each mounted item in these rows.
template <class VisitOwn, class VisitMounted>
void MemoryHierarchy::forRange(std::size_t first, std::size_t count, VisitOwn visitOwn,
                               VisitMounted visitMounted) const
{
    const auto* self = node();
    if (!self) {
        return;
    }
    for (auto* child = _tree->childAt(*self, first); child && count > 0; child = child->next) {
        visitOwn(*child);
        --count;
    }
    if (self->gateway == 0 || count == 0) {
        return;
    }
    auto row = _tree->nbChildren(*self);
    for (const auto& mounted : mountedItems()) {
        if (row++ >= first && count > 0) {
            visitMounted(mounted);
            --count;
        }
    }
}

Node* MemoryHierarchy::node() const noexcept
{
    return _tree->find(*_item);
}

SceneItem::Ptr MemoryHierarchy::itemOf(Node& child) const
{
    return makeItem(*_tree, _item->path() + child.name, child);
}

SceneItemList MemoryHierarchy::ownChildren() const
{
    SceneItemList children;
    if (const auto* self = node()) {
        for (auto* child = self->firstChild; child; child = child->next) {
            children.push_back(itemOf(*child));
        }
    }
    return children;
}

SceneItemList MemoryHierarchy::mountedItems() const
{
    const auto* self = node();
    return self ? itemsMountedAt(_item->path(), *self) : SceneItemList();
}

MemoryHierarchyHandler::MemoryHierarchyHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree))
{}

Hierarchy::Ptr MemoryHierarchyHandler::hierarchy(const SceneItem::Ptr& item)
{
    return std::make_shared<MemoryHierarchy>(_tree, item);
}

SceneItem::Ptr MemoryHierarchyHandler::createItem(const Path& path)
{
    auto* node = _tree->find(path);
    return node ? makeItem(*_tree, path, *node) : nullptr;
}

SceneItemList MemoryHierarchyHandler::rootItems(const Path& gateway)
{
    auto* root = gateway.empty() ? _tree->find(_tree->rootPath()) : nullptr;
    return root ? SceneItemList{makeItem(*_tree, _tree->rootPath(), *root)} : SceneItemList();
}

} // namespace Kiv_v4::memory
