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

/// The facts that an outliner shows about a child without making its item.
struct ChildInfo
{
    PathComponent name;   ///< The last component of its path.
    std::string nodeType; ///< Its `SceneItem::nodeType`.
    Rtid runTimeId = 0;   ///< Its run-time; at a gateway it can differ from the parent's.
};

/// The additions to the first interface that clients with large scenes need: rows of children
/// instead of whole lists. A row is a child's place in `children()`, from 0 up.
///
/// The operations have defaults over `children()`, linear in the number of children; a run-time
/// overrides those that it can do faster. `hierarchyOrDefault` gives clients this interface for
/// every run-time.
class KIV_EXPORT Hierarchy_v4_2 : public Hierarchy
{
public:
    using Ptr = std::shared_ptr<Hierarchy_v4_2>;

    /// The same object as `Hierarchy::hierarchy`; null if it does not have this interface.
    [[nodiscard]] static Ptr hierarchy(const SceneItem::Ptr& item);

    /// The same; but if the object does not have this interface, returns one that adds the defaults
    /// to it. Null only if `Hierarchy::hierarchy` returns null.
    [[nodiscard]] static Ptr hierarchyOrDefault(const SceneItem::Ptr& item);

    ~Hierarchy_v4_2() override;

    /// The length of `children()`.
    [[nodiscard]] virtual std::size_t nbChildren() const;

    /// The child in that row; null if there is none.
    [[nodiscard]] virtual SceneItem::Ptr child(std::size_t row) const;

    /// The row of the child with that path; `std::nullopt` if no child has it.
    [[nodiscard]] virtual std::optional<std::size_t> row(const Path& child) const;

    /// Up to `count` children, from the row `first` on.
    [[nodiscard]] virtual SceneItemList childRange(std::size_t first, std::size_t count) const;

    /// The same children as names and types.
    [[nodiscard]] virtual std::vector<ChildInfo> childInfos(std::size_t first,
                                                            std::size_t count) const;

    /// Returns a command that makes new last children of one type, as `createChildCmd` makes one;
    /// the run-time may change the names. If it can, the run-time announces each run of the command
    /// in one notification; by default the command is a composite of `createChildCmd`. Null if the
    /// run-time refuses one of them.
    [[nodiscard]] virtual UndoableCommand::Ptr
    createChildrenCmd(const std::string& nodeType, const std::vector<PathComponent>& names);

    /// A walk over this item and its descendants. It may outlive this object. Clients use
    /// `SubtreeWalk`.
    [[nodiscard]] virtual SegmentWalk::Ptr segmentWalk() const;
};

} // namespace Kiv_v4
