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
/// the run-time and its descendants, parents before children, children in their order. Clients use
/// `SubtreeWalk`.
///
/// The walk visits children of another run-time, but not their descendants: there the library
/// continues with their own run-time.
class KIV_EXPORT SegmentWalk
{
public:
    using Ptr = std::unique_ptr<SegmentWalk>;

    SegmentWalk();
    SegmentWalk(const SegmentWalk&) = delete;
    SegmentWalk& operator=(const SegmentWalk&) = delete;
    virtual ~SegmentWalk();

    /// Goes to the next item, in the first call to the one that the walk begins with. Returns false
    /// after the last.
    virtual bool next() = 0;

    /// Makes `next` leave out the descendants of the current item.
    virtual void skipSubtree() = 0;

    /// The number of levels from the item that the walk began with down to the current one; 0 for
    /// that item itself.
    [[nodiscard]] virtual std::size_t depth() const = 0;

    /// The current item's run-time.
    [[nodiscard]] virtual Rtid runTimeId() const = 0;

    /// The last component of the current item's path. Valid until the next call of `next`.
    [[nodiscard]] virtual const PathComponent& name() const = 0;

    /// The current item's `SceneItem::nodeType`. Valid until the next call of `next`.
    [[nodiscard]] virtual const std::string& nodeType() const = 0;

    /// The current item's path.
    [[nodiscard]] virtual Path path() const = 0;

    /// The current item.
    [[nodiscard]] virtual SceneItem::Ptr item() const = 0;
};

/// Visits an item and its descendants, parents before children, across gateways and whatever the
/// run-times are:
///
///     for (SubtreeWalk walk(top); walk.next();) {
///         if (walk.nodeType() == "group") { walk.skipSubtree(); }
///     }
///
/// Where the run-time offers `Hierarchy_v4_2`, the walk makes only the items and paths that the
/// caller asks for. Elsewhere it lists `Hierarchy::children`. It visits an item whose run-time has
/// no hierarchy handler, but nothing under it.
///
/// **Lifetime.** A walk is valid until the scene changes: after an edit, you must begin a new one.
/// A run-time that notices the change throws `std::logic_error` from `next`. Exceptions of
/// run-times pass through; after one, `next` continues with the remaining items.
///
/// **Cost.** Linear in the number of items, whatever the depth.
class KIV_EXPORT SubtreeWalk
{
public:
    /// Begins before `top`. The walk visits nothing if `top` is null or has an empty path.
    explicit SubtreeWalk(const SceneItem::Ptr& top);
    SubtreeWalk(const SubtreeWalk&) = delete;
    SubtreeWalk& operator=(const SubtreeWalk&) = delete;
    ~SubtreeWalk();

    /// Goes to the next item, in the first call to `top`. Returns false after the last, and from
    /// then on. The other functions must only be called after it returned true.
    bool next();

    /// Makes `next` leave out the descendants of the current item.
    void skipSubtree();

    /// The number of levels from `top` down to the current item.
    [[nodiscard]] std::size_t depth() const;

    /// The current item's run-time.
    [[nodiscard]] Rtid runTimeId() const;

    /// The last component of the current item's path. Valid until the next call of `next`.
    [[nodiscard]] const PathComponent& name() const;

    /// The current item's `SceneItem::nodeType`. Valid until the next call of `next`.
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
