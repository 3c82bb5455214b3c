#include "editCommands.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "nodeTypes.h"
#include "plannedCommand.h"
#include "steps.h"

namespace Kiv_v4::memory {

namespace {

/// The item's node unless it is the root; null for no item.
Node* editableNode(Tree& tree, const Path& path)
{
    auto* node = tree.find(path);
    return node && node->parent ? node : nullptr;
}

bool isChildOf(Tree& tree, const Path& parent, const SceneItem::Ptr& item)
{
    const auto* node = item ? editableNode(tree, item->path()) : nullptr;
    return node && node->parent == tree.find(parent);
}

/// The names of items that are different children of `parent`; nothing when they are not.
std::vector<PathComponent> namesOfChildren(Tree& tree, const Path& parent,
                                           const SceneItemList& items)
{
    std::vector<PathComponent> names;
    std::unordered_set<PathComponent> seen;
    for (const auto& item : items) {
        if (!isChildOf(tree, parent, item) || !seen.insert(item->path().back()).second) {
            return {};
        }
        names.push_back(item->path().back());
    }
    return names;
}

} // namespace

SceneItemResultUndoableCommand::Ptr createChildCmd(const TreePtr& tree, const Path& parent,
                                                   const std::string& nodeType,
                                                   const PathComponent& name)
{
    if (!tree->find(parent)) {
        return nullptr;
    }
    return std::make_shared<ItemCommand>(
        tree, "Make " + nodeType + " " + name.string(),
        [tree, parent, nodeType, wanted = name ? name : nodeType](Plan& plan) {
            const auto free = freeName(*tree, existing(*tree, parent), wanted.string());
            const Place place{parent, free, {}};
            plan.carryOut(insertion(tree, tree->make(nodeType, free), place));
            return place.path();
        });
}

InsertChildCommand::Ptr insertChildCmd(const TreePtr& tree, const Path& parent,
                                       const SceneItem::Ptr& child, const SceneItem::Ptr& before)
{
    if (!child || !editableNode(*tree, child->path()) || !tree->find(parent) ||
        parent.startsWith(child->path()) || (before && !isChildOf(*tree, parent, before))) {
        return nullptr;
    }
    return std::make_shared<ChildCommand>(
        tree, "Move " + child->nodeName(),
        [tree, parent, from = child->path(),
         next = before ? before->path().back() : PathComponent()](Plan& plan) {
            const auto own = from.pop() == parent ? from.back() : PathComponent();
            const auto free = freeName(*tree, existing(*tree, parent), from.back().string(), own);
            const Place to{parent, free, next};
            plan.carryOut(relocation(tree, from, to));
            return to.path();
        });
}

SceneItemResultUndoableCommand::Ptr createGroupCmd(const TreePtr& tree, const Path& parent,
                                                   const SceneItemList& members,
                                                   const PathComponent& name)
{
    auto names = namesOfChildren(*tree, parent, members);
    if (!tree->find(parent) || names.size() != members.size()) {
        return nullptr;
    }
    return std::make_shared<ItemCommand>(
        tree, "Group",
        [tree, parent, names = std::move(names),
         wanted = name ? name : PathComponent(std::string(kGroup))](Plan& plan) {
            const AnnouncementBatch batch;
            const auto free = freeName(*tree, existing(*tree, parent), wanted.string());
            const Place place{parent, free, names.empty() ? PathComponent() : names.front()};
            plan.carryOut(insertion(tree, tree->make(kGroup, free), place));
            for (const auto& member : names) {
                plan.carryOut(relocation(tree, parent + member, {place.path(), member, {}}));
            }
            return place.path();
        });
}

UndoableCommand::Ptr reorderCmd(const TreePtr& tree, const Path& parent,
                                const SceneItemList& orderedList)
{
    const auto* node = tree->find(parent);
    auto names = namesOfChildren(*tree, parent, orderedList);
    if (!node || !isOrderOf(*node, names)) {
        return nullptr;
    }
    return std::make_shared<EditCommand>(tree, "Reorder",
                                         [tree, parent, names = std::move(names)](Plan& plan) {
                                             plan.carryOut(reordering(tree, parent, names));
                                             return parent;
                                         });
}

UndoableCommand::Ptr ungroupCmd(const TreePtr& tree, const Path& group)
{
    const auto* node = editableNode(*tree, group);
    if (!node || node->type != kGroup) {
        return nullptr;
    }
    return std::make_shared<EditCommand>(
        tree, "Ungroup " + node->name.string(), [tree, group](Plan& plan) {
            const AnnouncementBatch batch;
            const auto parent = group.pop();
            for (const auto& member : childNames(existing(*tree, group))) {
                const auto free = freeName(*tree, existing(*tree, parent), member.string());
                plan.carryOut(relocation(tree, group + member, {parent, free, group.back()}));
            }
            plan.carryOut(removal(tree, group));
            return parent;
        });
}

UndoableCommand::Ptr deleteItemCmd(const TreePtr& tree, const Path& item)
{
    if (!editableNode(*tree, item)) {
        return nullptr;
    }
    return std::make_shared<EditCommand>(tree, "Delete " + item.back().string(),
                                         [tree, item](Plan& plan) {
                                             plan.carryOut(removal(tree, item));
                                             return item.pop();
                                         });
}

SceneItemResultUndoableCommand::Ptr duplicateItemCmd(const TreePtr& tree, const Path& item)
{
    if (!editableNode(*tree, item)) {
        return nullptr;
    }
    return std::make_shared<ItemCommand>(
        tree, "Duplicate " + item.back().string(),
        [tree, item](Plan& plan) { return duplicate(tree, item, plan); });
}

SceneItemResultUndoableCommand::Ptr renameItemCmd(const TreePtr& tree, const Path& item,
                                                  const PathComponent& newName)
{
    if (!editableNode(*tree, item) || !newName) {
        return nullptr;
    }
    return std::make_shared<ItemCommand>(tree, "Rename " + item.back().string(),
                                         [tree, item, newName](Plan& plan) {
                                             auto to = placeOf(*tree, item);
                                             to.name = validNameFor(*tree, item, newName);
                                             plan.carryOut(relocation(tree, item, to));
                                             return to.path();
                                         });
}

Path duplicate(const TreePtr& tree, const Path& item, Plan& plan)
{
    const auto& node = editable(*tree, item);
    const Place place{item.pop(), freeName(*tree, *node.parent, node.name.string()), {}};
    plan.carryOut(insertion(tree, tree->copy(node), place));
    return place.path();
}

PathComponent validNameFor(Tree& tree, const Path& item, const PathComponent& name)
{
    const auto* node = editableNode(tree, item);
    return node ? freeName(tree, *node->parent, name.string(), node->name) : PathComponent();
}

} // namespace Kiv_v4::memory
