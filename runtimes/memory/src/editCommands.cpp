#include "editCommands.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "nodeTypes.h"
#include "recordedCommand.h"
#include "steps.h"

namespace Kiv_v4::memory {

namespace {

/// The item's node unless it is the root; null for no item.
template <class PathOrItem>
Node* editableNode(Tree& tree, const PathOrItem& item)
{
    auto* node = tree.find(item);
    return node && node->parent ? node : nullptr;
}

bool isChildOf(Tree& tree, const Node* parent, const SceneItem::Ptr& item)
{
    const auto* node = item ? editableNode(tree, *item) : nullptr;
    return node && node->parent == parent;
}

/// The names of items that must be different children of `parent`; `std::nullopt` if they are not.
std::vector<PathComponent> namesOfChildren(Tree& tree, const Node* parent,
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

/// Inserts a new item before the sibling `before`, or last if that is the null component, and
/// returns its path.
Path insertNew(const TreePtr& tree, const Path& parent, const std::string& nodeType,
               const std::string& wanted, const PathComponent& before, ChangeLog& log)
{
    const auto free = tree->freeName(existing(*tree, parent), wanted);
    auto made = tree->make(nodeType, free);
    auto& node = *made.get();
    const Place place{parent, free, before};
    return log.carryOut(tree, insertion(tree, std::move(made), place), node, place);
}

/// Moves an item to `to` and returns its path.
Path relocate(const TreePtr& tree, const Path& from, const Place& to, ChangeLog& log)
{
    return log.carryOut(tree, relocation(tree, from, to), existing(*tree, from), to);
}

/// The same for another name at its place; does nothing for its own name.
Path rename(const TreePtr& tree, const Path& item, const PathComponent& name, ChangeLog& log)
{
    auto to = placeOf(*tree, item);
    if (to.name == name) {
        return item;
    }
    to.name = name;
    return relocate(tree, item, to, log);
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
        [tree, parent, nodeType, wanted = name ? name : nodeType](ChangeLog& log) {
            return insertNew(tree, parent, nodeType, wanted.string(), {}, log);
        });
}

UndoableCommand::Ptr createChildrenCmd(const TreePtr& tree, const Path& parent,
                                       const std::string& nodeType,
                                       const std::vector<PathComponent>& names)
{
    if (!tree->find(parent)) {
        return nullptr;
    }
    return std::make_shared<EditCommand>(
        tree, "Make " + std::to_string(names.size()) + " " + nodeType,
        [tree, parent, nodeType, names](ChangeLog& log) {
            const AnnouncementBatch batch(names.size() > 1);
            for (const auto& name : names) {
                const auto& wanted = name ? name.string() : nodeType;
                insertNew(tree, parent, nodeType, wanted, {}, log);
            }
            return parent;
        });
}

InsertChildCommand::Ptr insertChildCmd(const TreePtr& tree, const Path& parent,
                                       const SceneItem::Ptr& child, const SceneItem::Ptr& before)
{
    const auto* moved = child ? editableNode(*tree, *child) : nullptr;
    const auto* target = tree->find(parent);
    if (!moved || !target || isUnder(*moved, *target) ||
        (before && !isChildOf(*tree, target, before))) {
        return nullptr;
    }
    return std::make_shared<ChildCommand>(
        tree, "Move " + child->nodeName(),
        [tree, parent, from = child->path(),
         next = before ? before->path().back() : PathComponent()](ChangeLog& log) {
            std::vector<PathComponent> freed;
            if (from.pop() == parent) {
                freed.push_back(from.back());
            }
            const auto free = tree->freeName(existing(*tree, parent), from.back().string(), freed);
            return relocate(tree, from, {parent, free, next}, log);
        });
}

SceneItemResultUndoableCommand::Ptr createGroupCmd(const TreePtr& tree, const Path& parent,
                                                   const SceneItemList& members,
                                                   const PathComponent& name)
{
    const auto* above = tree->find(parent);
    auto names = namesOfChildren(*tree, above, members);
    if (!above || names.size() != members.size()) {
        return nullptr;
    }
    return std::make_shared<ItemCommand>(
        tree, "Group",
        [tree, parent, names = std::move(names),
         wanted = name ? name : PathComponent(std::string(kGroup))](ChangeLog& log) {
            const AnnouncementBatch batch;
            // Until the members have left it, their names are taken.
            const auto final = tree->freeName(existing(*tree, parent), wanted.string(), names);
            const auto group = insertNew(tree, parent, kGroup, final.string(),
                                         names.empty() ? PathComponent() : names.front(), log);
            for (const auto& member : names) {
                log.carryOut(relocation(tree, parent + member, {group, member, {}}));
            }
            return rename(tree, group, final, log);
        });
}

UndoableCommand::Ptr reorderCmd(const TreePtr& tree, const Path& parent,
                                const SceneItemList& orderedList)
{
    const auto* node = tree->find(parent);
    auto names = namesOfChildren(*tree, node, orderedList);
    if (!node || !isOrderOf(*node, names)) {
        return nullptr;
    }
    return std::make_shared<EditCommand>(tree, "Reorder",
                                         [tree, parent, names = std::move(names)](ChangeLog& log) {
                                             log.carryOut(reordering(tree, parent, names));
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
        tree, "Ungroup " + node->name.string(), [tree, group](ChangeLog& log) {
            const AnnouncementBatch batch;
            auto parent = group.pop();
            auto emptied = group;
            for (const auto& member : childNames(existing(*tree, group))) {
                auto& above = existing(*tree, parent);
                const auto free = tree->freeName(above, member.string(), {emptied.back()});
                if (free == emptied.back()) {
                    emptied = rename(tree, emptied, tree->freeName(above, free.string()), log);
                }
                log.carryOut(relocation(tree, emptied + member, {parent, free, emptied.back()}));
            }
            log.carryOut(removal(tree, emptied));
            return parent;
        });
}

UndoableCommand::Ptr deleteItemCmd(const TreePtr& tree, const Path& item)
{
    if (!editableNode(*tree, item)) {
        return nullptr;
    }
    return std::make_shared<EditCommand>(tree, "Delete " + item.back().string(),
                                         [tree, item](ChangeLog& log) {
                                             log.carryOut(removal(tree, item));
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
        [tree, item](ChangeLog& log) { return duplicate(tree, item, log); });
}

SceneItemResultUndoableCommand::Ptr renameItemCmd(const TreePtr& tree, const Path& item,
                                                  const PathComponent& newName)
{
    if (!editableNode(*tree, item) || !newName) {
        return nullptr;
    }
    return std::make_shared<ItemCommand>(
        tree, "Rename " + item.back().string(), [tree, item, newName](ChangeLog& log) {
            return rename(tree, item, validNameFor(*tree, item, newName), log);
        });
}

Path duplicate(const TreePtr& tree, const Path& item, ChangeLog& log)
{
    const auto& node = editable(*tree, item);
    const Place place{item.pop(), tree->freeName(*node.parent, node.name.string()), {}};
    auto copied = tree->copy(node);
    auto& copy = *copied.get();
    return log.carryOut(tree, insertion(tree, std::move(copied), place), copy, place);
}

PathComponent validNameFor(Tree& tree, const Path& item, const PathComponent& name)
{
    const auto* node = editableNode(tree, item);
    return node ? tree.freeName(*node->parent, name.string(), {node->name}) : PathComponent();
}

} // namespace Kiv_v4::memory
