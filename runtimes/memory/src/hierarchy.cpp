#include "hierarchy.h"

#include <algorithm>
#include <utility>

#include "kiv/runTimeMgr.h"

#include "editCommands.h"
#include "item.h"

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

bool MemoryHierarchy::hasFilteredChildren(ChildFilter const& filter) const
{
    const auto* self = node();
    return showsMounted(filter) ? hasChildren() : self && self->firstChild;
}

SceneItemList MemoryHierarchy::filteredChildren(ChildFilter const& filter) const
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
    return self && self->parent ? makeItem(_item->path().pop(), *self->parent) : nullptr;
}

SceneItem::Ptr MemoryHierarchy::defaultParent() const
{
    return node() ? _item : nullptr;
}

SceneItemResultUndoableCommand::Ptr MemoryHierarchy::createChildCmd(std::string const& nodeType,
                                                                    PathComponent const& name)
{
    return memory::createChildCmd(_tree, _item->path(), nodeType, name);
}

InsertChildCommand::Ptr MemoryHierarchy::insertChildCmd(SceneItem::Ptr const& child,
                                                        SceneItem::Ptr const& before)
{
    return memory::insertChildCmd(_tree, _item->path(), child, before);
}

SceneItemResultUndoableCommand::Ptr MemoryHierarchy::createGroupCmd(SceneItemList const& members,
                                                                    PathComponent const& name)
{
    return memory::createGroupCmd(_tree, _item->path(), members, name);
}

UndoableCommand::Ptr MemoryHierarchy::reorderCmd(SceneItemList const& orderedList)
{
    return memory::reorderCmd(_tree, _item->path(), orderedList);
}

UndoableCommand::Ptr MemoryHierarchy::ungroupCmd()
{
    return memory::ungroupCmd(_tree, _item->path());
}

Node* MemoryHierarchy::node() const noexcept
{
    return _tree->find(_item->path());
}

SceneItemList MemoryHierarchy::ownChildren() const
{
    SceneItemList children;
    if (const auto* self = node()) {
        for (const auto* child = self->firstChild; child; child = child->next) {
            children.push_back(makeItem(_item->path() + child->name, *child));
        }
    }
    return children;
}

SceneItemList MemoryHierarchy::mountedItems() const
{
    const auto* self = node();
    if (!self || self->gateway == 0) {
        return {};
    }
    const auto nested = RunTimeMgr::instance().hierarchyHandler(self->gateway);
    return nested ? nested->rootItems(_item->path()) : SceneItemList();
}

MemoryHierarchyHandler::MemoryHierarchyHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree))
{}

Hierarchy::Ptr MemoryHierarchyHandler::hierarchy(SceneItem::Ptr const& item)
{
    return std::make_shared<MemoryHierarchy>(_tree, item);
}

SceneItem::Ptr MemoryHierarchyHandler::createItem(Path const& path)
{
    const auto* node = _tree->find(path);
    return node ? makeItem(path, *node) : nullptr;
}

SceneItemList MemoryHierarchyHandler::rootItems(Path const& gateway)
{
    if (!gateway.empty()) {
        return {};
    }
    return {makeItem(_tree->rootPath(), _tree->root())};
}

} // namespace Kiv_v4::memory
