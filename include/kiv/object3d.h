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

/// An axis-aligned box, in scene units. It is empty if a minimum exceeds its maximum. A new box is
/// empty.
struct KIV_EXPORT BoundingBox3d
{
    BoundingBox3d();
    BoundingBox3d(const TypedVectorN<double, 3>& minimum, const TypedVectorN<double, 3>& maximum);

    /// Whether the box contains no point.
    [[nodiscard]] bool empty() const noexcept;

    /// Grows just enough to hold the point, or the box.
    void extend(const TypedVectorN<double, 3>& point) noexcept;
    void extend(const BoundingBox3d& other) noexcept;

    /// Whether both contain the same points. Compares exactly; empty boxes are equal whatever their
    /// numbers.
    bool operator==(const BoundingBox3d& other) const noexcept;
    bool operator!=(const BoundingBox3d& other) const noexcept { return !(*this == other); }

    /// The corners, in scene units.
    TypedVectorN<double, 3> min;
    TypedVectorN<double, 3> max;
};

/// A scene item as an object in space: its extent and whether it is shown.
///
/// Run-times announce shown and hidden items with `notify` and a `VisibilityChanged`. Observers are
/// notified of the items of all run-times; the library holds them by weak reference.
class KIV_EXPORT Object3d
{
public:
    using Ptr = std::shared_ptr<Object3d>;

    /// The object at `item`; null for a null item, an empty path, a run-time without this
    /// interface, and an item without it. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr object3d(const SceneItem::Ptr& item);

    Object3d();
    Object3d(const Object3d&) = delete;
    Object3d& operator=(const Object3d&) = delete;
    virtual ~Object3d();

    /// The item.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// The box around the item and its descendants in its run-time, shown or not, in the item's
    /// space; empty if they have no extent.
    [[nodiscard]] virtual BoundingBox3d boundingBox() const = 0;

    /// Whether the item itself is set to be shown. It is seen only if its ancestors are set to be
    /// shown, too.
    [[nodiscard]] virtual bool visibility() const = 0;

    /// Executes `setVisibilityCmd` and drops it. Returns false if the run-time refuses.
    virtual bool setVisibility(bool visible) = 0;

    /// Changes nothing yet; returns null if the run-time refuses.
    [[nodiscard]] virtual UndoableCommand::Ptr setVisibilityCmd(bool visible) = 0;

    /// Observers of the objects of all items. These functions work as those of `Subject`.
    static bool addObserver(const Observer::Ptr& observer);
    static bool removeObserver(const Observer::Ptr& observer);
    [[nodiscard]] static std::size_t nbObservers();
    [[nodiscard]] static bool hasObserver(const Observer::Ptr& observer);
    static void notify(const Notification& notification);
};

} // namespace Kiv_v4

#include "kiv/object3dHandler.h" // for code that knows this header alone
