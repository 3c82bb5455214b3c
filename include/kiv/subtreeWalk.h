#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/pathComponent.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// A run-time's part of a walk over a subtree, made by `Hierarchy_v4_2::segmentWalk`: an item of
/// the run-time and all that is under it, parents before children, children in their order. Clients
/// use `SubtreeWalk`.
///
/// Children of another run-time are told like any other; what is under them is not, since the
/// library goes on there with their own run-time.
class KIV_EXPORT SegmentWalk
{
public:
    using Ptr = std::unique_ptr<SegmentWalk>;

    SegmentWalk();
    SegmentWalk(const SegmentWalk&) = delete;
    SegmentWalk& operator=(const SegmentWalk&) = delete;
    virtual ~SegmentWalk();

    /// Goes to the next item, first of all to the one that the walk begins with; false behind the
    /// last.
    virtual bool next() = 0;

    /// Lets `next` leave out what is under the current item.
    virtual void skipSubtree() = 0;

    /// The number of items between the current one and the one that the walk began with, that one
    /// counted; 0 for that one itself.
    [[nodiscard]] virtual std::size_t depth() const = 0;

    /// The current item's run-time.
    [[nodiscard]] virtual Rtid runTimeId() const = 0;

    /// The last component of the current item's path. Valid until the walk goes on.
    [[nodiscard]] virtual const PathComponent& name() const = 0;

    /// The current item's `SceneItem::nodeType`. Valid until the walk goes on.
    [[nodiscard]] virtual const std::string& nodeType() const = 0;

    /// The current item's path.
    [[nodiscard]] virtual Path path() const = 0;

    /// The current item.
    [[nodiscard]] virtual SceneItem::Ptr item() const = 0;
};

/// Goes over an item and all that is under it, parents before children, across gateways and
/// whatever the run-times are:
///
///     for (SubtreeWalk walk(top); walk.next();) {
///         if (walk.nodeType() == "group") { walk.skipSubtree(); }
///     }
///
/// It makes no items, and no paths but those asked for, where the run-time offers `Hierarchy_v4_2`.
/// Elsewhere it lists `Hierarchy::children`. An item whose run-time has no hierarchy handler is
/// told, and nothing under it.
///
/// **Lifetime.** The walk serves until the scene changes. To go on after an edit, begin anew; a
/// run-time that notices throws `std::logic_error` from `next`. What run-times throw passes
/// through; `next` can be called again and goes on with what is left.
///
/// **Cost.** Linear in the number of items, whatever the depth.
class KIV_EXPORT SubtreeWalk
{
public:
    /// Stands before `top`. A null item or one without a path gives a walk over nothing.
    explicit SubtreeWalk(const SceneItem::Ptr& top);
    SubtreeWalk(const SubtreeWalk&) = delete;
    SubtreeWalk& operator=(const SubtreeWalk&) = delete;
    ~SubtreeWalk();

    /// Goes to the next item, first of all to `top`; false behind the last, and from then on. All
    /// else is asked for only after it returned true.
    bool next();

    /// Lets `next` leave out what is under the current item.
    void skipSubtree();

    /// The number of steps from `top` down to the current item.
    [[nodiscard]] std::size_t depth() const;

    /// The current item's run-time.
    [[nodiscard]] Rtid runTimeId() const;

    /// The last component of the current item's path. Valid until the walk goes on.
    [[nodiscard]] const PathComponent& name() const;

    /// The current item's `SceneItem::nodeType`. Valid until the walk goes on.
    [[nodiscard]] const std::string& nodeType() const;

    /// The current item's path.
    [[nodiscard]] Path path() const;

    /// The current item.
    [[nodiscard]] SceneItem::Ptr item() const;

private:
    /// The walk within one run-time, below that within the run-time of the gateway.
    struct Level
    {
        SegmentWalk::Ptr walk;
        Rtid runTimeId;
        std::size_t depth; ///< Of the item that the walk began with.
    };

    KIV_HIDDEN bool enter(const SceneItem::Ptr& top, std::size_t depth);

    std::vector<Level> _levels;
};

} // namespace Kiv_v4
