#pragma once

#include <memory>
#include <string>

#include "kiv/childFilter.h"
#include "kiv/export.h"
#include "kiv/resultCommands.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// Browses and edits the structure around one item, whatever its run-time, for outliners and
/// importers.
///
///     if (const auto hierarchy = Hierarchy::hierarchy(item)) {
///         for (const auto& child : hierarchy->children()) { ... }
///     }
///
/// At a gateway, an item under which another run-time's segment begins, the children are the other
/// run-time's root items (after the item's own children, if it has any), and their parent is the
/// gateway.
///
/// The operations with the suffix `Cmd` change nothing until the command is executed, and return
/// null if the run-time refuses. The conveniences of the same stem execute the command and drop it,
/// so they cannot be undone.
///
/// **Lifetime.** A hierarchy object is a short-lived view of the scene at the item's path. After
/// the item was renamed, moved or deleted, you must get a new one.
class KIV_EXPORT Hierarchy
{
public:
    using Ptr = std::shared_ptr<Hierarchy>;

    /// The hierarchy of `item`; null for a null item or an empty path. Throws `InvalidRunTimeId`
    /// (after logging it) if the item's run-time has no hierarchy handler.
    [[nodiscard]] static Ptr hierarchy(const SceneItem::Ptr& item);

    /// The item at `path`, made by the run-time of its last segment; null if the path is empty or
    /// names no item. Throws as `hierarchy` does.
    [[nodiscard]] static SceneItem::Ptr createItem(const Path& path);

    Hierarchy();
    Hierarchy(const Hierarchy&) = delete;
    Hierarchy& operator=(const Hierarchy&) = delete;
    virtual ~Hierarchy();

    /// The item that the hierarchy belongs to.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// Whether `children()` is not empty. Makes no children.
    [[nodiscard]] virtual bool hasChildren() const = 0;

    /// All children, in order. Linear in their number.
    [[nodiscard]] virtual SceneItemList children() const = 0;

    /// Whether `filteredChildren(filter)` is not empty.
    [[nodiscard]] virtual bool hasFilteredChildren(const ChildFilter& filter) const = 0;

    /// The children that pass `filter`, in order. The run-time ignores flags that it does not know;
    /// flags that are left out have their default.
    [[nodiscard]] virtual SceneItemList filteredChildren(const ChildFilter& filter) const = 0;

    /// The flags that this item's children can be filtered by, each with its default value.
    [[nodiscard]] virtual ChildFilter defaultChildFilter() const = 0;

    /// The item that lists this one among its children; null at the top of the scene.
    [[nodiscard]] virtual SceneItem::Ptr parent() const = 0;

    /// The parent of new items while this item is the target: the item itself if it takes children,
    /// otherwise the nearest ancestor that does; null if nothing can be added to the run-time.
    [[nodiscard]] virtual SceneItem::Ptr defaultParent() const = 0;

    /// Returns a command that makes a new last child. The run-time changes `name` if that is needed
    /// to make it unique among the children or fit its rules; the command's item has the final
    /// name.
    [[nodiscard]] virtual SceneItemResultUndoableCommand::Ptr
    createChildCmd(const std::string& nodeType, const PathComponent& name) = 0;

    /// Returns a command that moves `child`, an item of the same run-time, with its descendants, to
    /// just before `before`, one of this item's children, or after the last child if `before` is
    /// null. It keeps its name unless a child has that name.
    [[nodiscard]] virtual InsertChildCommand::Ptr insertChildCmd(const SceneItem::Ptr& child,
                                                                 const SceneItem::Ptr& before) = 0;

    /// Returns a command that makes a group under this item, in the place of the first of
    /// `members`, and moves `members`, all of them children of this item, under it in the given
    /// order. Without members, it makes an empty group after the last child.
    [[nodiscard]] virtual SceneItemResultUndoableCommand::Ptr
    createGroupCmd(const SceneItemList& members, const PathComponent& name) = 0;

    /// Returns a command that gives the children the order of `orderedList`; null unless it holds
    /// each child once.
    [[nodiscard]] virtual UndoableCommand::Ptr reorderCmd(const SceneItemList& orderedList) = 0;

    /// Executes `reorderCmd(orderedList)`. Returns false if the run-time refuses.
    virtual bool reorder(const SceneItemList& orderedList);

    /// Returns a command that puts the children of this item, a group, into its place and removes
    /// it.
    [[nodiscard]] virtual UndoableCommand::Ptr ungroupCmd() = 0;

    /// Executes `ungroupCmd()`. Returns false if the run-time refuses.
    virtual bool ungroup();
};

} // namespace Kiv_v4
