#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "kiv/export.h"
#include "kiv/observer.h"
#include "kiv/sceneItem.h"
#include "kiv/typedVectorN.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// An axis-aligned box, in scene units. It is empty when a minimum exceeds its maximum, as in a new
/// one.
struct KIV_EXPORT BoundingBox3d
{
    BoundingBox3d();
    BoundingBox3d(const TypedVectorN<double, 3>& minimum, const TypedVectorN<double, 3>& maximum);

    /// Whether there is no point in it.
    [[nodiscard]] bool empty() const noexcept;

    /// Grows just enough to hold the point, or the box.
    void extend(const TypedVectorN<double, 3>& point) noexcept;
    void extend(const BoundingBox3d& other) noexcept;

    /// Whether the same points are in it: exact, and empty boxes are equal whatever their numbers.
    bool operator==(const BoundingBox3d& other) const noexcept;
    bool operator!=(const BoundingBox3d& other) const noexcept { return !(*this == other); }

    /// The corners, in scene units.
    TypedVectorN<double, 3> min;
    TypedVectorN<double, 3> max;
};

/// What a scene item is as an object in space: its extent and whether it is shown.
///
/// Run-times announce shown and hidden items with `notify` and a `VisibilityChanged`. Observers
/// hear of the items of all run-times and are held by weak reference.
class KIV_EXPORT Object3d
{
public:
    using Ptr = std::shared_ptr<Object3d>;

    /// The object at `item`; null for a null item, an empty path, a run-time that offers none, and
    /// an item that has none. Exceptions of the run-time are logged and pass through.
    [[nodiscard]] static Ptr object3d(const SceneItem::Ptr& item);

    Object3d();
    Object3d(const Object3d&) = delete;
    Object3d& operator=(const Object3d&) = delete;
    virtual ~Object3d();

    /// The item.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// The box around the item and all that is under it in its run-time, in the item's space, shown
    /// or not; empty when there is nothing in it.
    [[nodiscard]] virtual BoundingBox3d boundingBox() const = 0;

    /// Whether the item itself is set to be shown. It is seen only when its ancestors are, too.
    [[nodiscard]] virtual bool visibility() const = 0;

    /// Executes `setVisibilityCmd` and drops it; false when the run-time refuses.
    virtual bool setVisibility(bool visible) = 0;

    /// Changes nothing yet; null when the run-time refuses.
    [[nodiscard]] virtual UndoableCommand::Ptr setVisibilityCmd(bool visible) = 0;

    /// Observers of the objects of all items, as `Subject` has them.
    static bool addObserver(const Observer::Ptr& observer);
    static bool removeObserver(const Observer::Ptr& observer);
    [[nodiscard]] static std::size_t nbObservers();
    [[nodiscard]] static bool hasObserver(const Observer::Ptr& observer);
    static void notify(const Notification& notification);
};

} // namespace Kiv_v4

#include "kiv/object3dHandler.h" // for code that knows this header alone
