#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/hierarchy.h"
#include "kiv/path.h"
#include "kiv/pathComponent.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"
#include "kiv/subtreeWalk.h"

namespace Kiv_v4 {

/// What an outliner shows of a child without its item.
struct ChildInfo
{
    PathComponent name;   ///< The last component of its path.
    std::string nodeType; ///< Its `SceneItem::nodeType`.
    Rtid runTimeId = 0;   ///< Its run-time, which at a gateway can be another than the parent's.
};

/// What clients with large scenes need beyond the first interface: rows of children instead of
/// whole lists. A row is a child's place in `children()`, from 0 up.
///
/// The operations have defaults over `children()`, linear in the number of children, so that a
/// run-time overrides those that it can do better. Clients that do not care which run-time they
/// meet ask `hierarchyOrDefault` for it.
class KIV_EXPORT Hierarchy_v4_2 : public Hierarchy
{
public:
    using Ptr = std::shared_ptr<Hierarchy_v4_2>;

    /// The same object as `Hierarchy::hierarchy`, or null when it does not have this interface.
    [[nodiscard]] static Ptr hierarchy(const SceneItem::Ptr& item);

    /// The same, but for an object without this interface one that has it, does all else as that
    /// object does, and has the defaults. Null only when `Hierarchy::hierarchy` is.
    [[nodiscard]] static Ptr hierarchyOrDefault(const SceneItem::Ptr& item);

    ~Hierarchy_v4_2() override;

    /// The length of `children()`.
    [[nodiscard]] virtual std::size_t nbChildren() const;

    /// The child in that row; null when there is none.
    [[nodiscard]] virtual SceneItem::Ptr child(std::size_t row) const;

    /// The row of the child with that path; nothing when no child has it.
    [[nodiscard]] virtual std::optional<std::size_t> row(const Path& child) const;

    /// The `count` children from the row `first` on, or as many as there are.
    [[nodiscard]] virtual SceneItemList childRange(std::size_t first, std::size_t count) const;

    /// The same children as names and types.
    [[nodiscard]] virtual std::vector<ChildInfo> childInfos(std::size_t first,
                                                            std::size_t count) const;

    /// Makes new last children of one type, as `createChildCmd` makes one: names are changed where
    /// they must be. Executed, undone and redone, the command is told to the scene in one
    /// notification where the run-time can; by default it is a composite of `createChildCmd`. Null
    /// when the run-time refuses one of them.
    [[nodiscard]] virtual UndoableCommand::Ptr
    createChildrenCmd(const std::string& nodeType, const std::vector<PathComponent>& names);

    /// A walk over this item and what is under it. It may outlive this object. Clients use
    /// `SubtreeWalk`.
    [[nodiscard]] virtual SegmentWalk::Ptr segmentWalk() const;
};

} // namespace Kiv_v4
