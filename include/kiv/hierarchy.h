#pragma once

#include <memory>
#include <string>

#include "kiv/childFilter.h"
#include "kiv/export.h"
#include "kiv/resultCommands.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// Browses and edits the structure around one item, whatever its run-time: what an outliner and an
/// importer need.
///
///     if (const auto hierarchy = Hierarchy::hierarchy(item)) {
///         for (const auto& child : hierarchy->children()) { ... }
///     }
///
/// At a gateway, an item under which another run-time's segment begins, the children are the other
/// run-time's root items (after the item's own children, if it has any), and their parent is the
/// gateway.
///
/// The operations with the suffix `Cmd` change nothing until the command is executed, and give null
/// when the run-time refuses. The conveniences of the same stem execute the command and drop it, so
/// they cannot be undone.
///
/// **Lifetime.** A hierarchy object is a short-lived view of the scene at the item's path. After
/// the item was renamed, moved or deleted, ask for a new one.
class KIV_EXPORT Hierarchy
{
public:
    using Ptr = std::shared_ptr<Hierarchy>;

    /// The hierarchy of `item`; null for a null item or an empty path. Throws `InvalidRunTimeId`
    /// (after logging it) when the item's run-time has no hierarchy handler.
    [[nodiscard]] static Ptr hierarchy(const SceneItem::Ptr& item);

    /// The item at `path`, made by the run-time of its last segment; null for an empty path or one
    /// that names nothing. Throws as `hierarchy` does.
    [[nodiscard]] static SceneItem::Ptr createItem(const Path& path);

    Hierarchy();
    Hierarchy(const Hierarchy&) = delete;
    Hierarchy& operator=(const Hierarchy&) = delete;
    virtual ~Hierarchy();

    /// The item that this is the hierarchy of.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// Whether `children()` is not empty, without the children being made.
    [[nodiscard]] virtual bool hasChildren() const = 0;

    /// All children, in order. Linear in their number.
    [[nodiscard]] virtual SceneItemList children() const = 0;

    /// Whether `filteredChildren(filter)` is not empty.
    [[nodiscard]] virtual bool hasFilteredChildren(const ChildFilter& filter) const = 0;

    /// The children that `filter` lets through, in order. Flags that the run-time does not know are
    /// ignored; flags that are left out have their default.
    [[nodiscard]] virtual SceneItemList filteredChildren(const ChildFilter& filter) const = 0;

    /// The flags that this item's children can be filtered by, each with its default value.
    [[nodiscard]] virtual ChildFilter defaultChildFilter() const = 0;

    /// The item that lists this one among its children; null at the top of the scene.
    [[nodiscard]] virtual SceneItem::Ptr parent() const = 0;

    /// Where new items belong while this one is the target: the item itself if it takes children,
    /// otherwise the nearest ancestor that does; null when the run-time cannot be added to.
    [[nodiscard]] virtual SceneItem::Ptr defaultParent() const = 0;

    /// Makes a new last child. The run-time changes `name` where it must, to make it unique among
    /// the children or to fit its rules; the command's item bears the final name.
    [[nodiscard]] virtual SceneItemResultUndoableCommand::Ptr
    createChildCmd(const std::string& nodeType, const PathComponent& name) = 0;

    /// Moves `child`, an item of the same run-time, with all that is under it, to just before
    /// `before`, one of this item's children, or after the last child when `before` is null. It
    /// keeps its name unless that is taken.
    [[nodiscard]] virtual InsertChildCommand::Ptr insertChildCmd(const SceneItem::Ptr& child,
                                                                 const SceneItem::Ptr& before) = 0;

    /// Makes a group under this item, in the place of the first of `members`, and moves `members`,
    /// all of them children of this item, under it in the given order. Without members, makes an
    /// empty group after the last child.
    [[nodiscard]] virtual SceneItemResultUndoableCommand::Ptr
    createGroupCmd(const SceneItemList& members, const PathComponent& name) = 0;

    /// Gives the children the order of `orderedList`, which holds each child once; null otherwise.
    [[nodiscard]] virtual UndoableCommand::Ptr reorderCmd(const SceneItemList& orderedList) = 0;

    /// Executes `reorderCmd(orderedList)`; false when the run-time refuses.
    virtual bool reorder(const SceneItemList& orderedList);

    /// Puts the children of this item, a group, into its place and removes it.
    [[nodiscard]] virtual UndoableCommand::Ptr ungroupCmd() = 0;

    /// Executes `ungroupCmd()`; false when the run-time refuses.
    virtual bool ungroup();
};

} // namespace Kiv_v4
