#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "kiv/export.h"
#include "kiv/observer.h"
#include "kiv/rtid.h"
#include "kiv/transform3dRead.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// Which edit the caller is about to make, so that a run-time that keeps several transforms for an
/// item can choose the one to edit.
class KIV_EXPORT EditTransform3dHint
{
public:
    /// The kinds of edits.
    enum Type : std::uint32_t {
        NoHint = 0,
        Translate = 1,
        Rotate = 2,
        Scale = 3,
        RotatePivot = 4,
        ScalePivot = 5,
        Matrix = 6
    };

    EditTransform3dHint(Type type) : _type(type) {}
    EditTransform3dHint(const EditTransform3dHint&) = default;
    EditTransform3dHint& operator=(const EditTransform3dHint&) = default;
    virtual ~EditTransform3dHint();

    /// Which edit is to come.
    [[nodiscard]] Type type() const noexcept { return _type; }

private:
    Type _type;
};

/// Edits the 3D transform of one scene item, property by property or as a matrix. How a run-time
/// makes the item's matrix of the properties is its own business; `matrix()` gives the result.
///
/// Translations and pivots are in scene units, rotations in degrees about x, y and z, scale and
/// shear are factors. The values are absolute: `translate` sets the translation.
///
/// Each property has a command maker, which changes nothing and gives null when the run-time
/// refuses, a setter, which executes that command and drops it, or does nothing when there is none,
/// and a getter. The last four vector properties are optional: unless a run-time overrides them,
/// nothing can be set and zero is read.
///
/// Run-times announce changes with `notify`. Observers of an item are found by its path and held by
/// weak reference; a null item is answered with false or 0. The item given to the first observer is
/// kept, for the notifications, until the last one is removed or the run-time's registration ends:
/// do remove observers.
class KIV_EXPORT Transform3d : public Transform3dRead
{
public:
    using Ptr = std::shared_ptr<Transform3d>;

    /// The transform of `item`; null for a null item, an empty path, a run-time that offers
    /// none, and an item that has none. Exceptions of the run-time are logged and pass through.
    [[nodiscard]] static Ptr transform3d(const SceneItem::Ptr& item);

    /// The same, suited to the edit that is to come.
    [[nodiscard]] static Ptr editTransform3d(const SceneItem::Ptr& item,
                                             const EditTransform3dHint& hint);

    ~Transform3d() override;

    /// Where the item stands in its parent's space.
    [[nodiscard]] virtual UndoableCommand::Ptr translateCmd(double x, double y, double z) = 0;
    virtual void translate(double x, double y, double z);
    [[nodiscard]] virtual Vector3d translation() const = 0;

    /// The rotation about x, y and z, in degrees.
    [[nodiscard]] virtual UndoableCommand::Ptr rotateCmd(double x, double y, double z) = 0;
    virtual void rotate(double x, double y, double z);
    [[nodiscard]] virtual Vector3d rotation() const = 0;

    /// The factors along x, y and z.
    [[nodiscard]] virtual UndoableCommand::Ptr scaleCmd(double x, double y, double z) = 0;
    virtual void scale(double x, double y, double z);
    [[nodiscard]] virtual Vector3d scale() const = 0;

    /// The fixed point of the rotation, in the item's space.
    [[nodiscard]] virtual UndoableCommand::Ptr rotatePivotCmd(double x, double y, double z) = 0;
    virtual void rotatePivot(double x, double y, double z);
    [[nodiscard]] virtual Vector3d rotatePivot() const = 0;

    /// The fixed point of the scale, in the item's space.
    [[nodiscard]] virtual UndoableCommand::Ptr scalePivotCmd(double x, double y, double z) = 0;
    virtual void scalePivot(double x, double y, double z);
    [[nodiscard]] virtual Vector3d scalePivot() const = 0;

    /// Makes up for a rotate pivot that was moved.
    [[nodiscard]] virtual UndoableCommand::Ptr translateRotatePivotCmd(double x, double y,
                                                                       double z);
    virtual void translateRotatePivot(double x, double y, double z);
    [[nodiscard]] virtual Vector3d rotatePivotTranslation() const;

    /// Makes up for a scale pivot that was moved.
    [[nodiscard]] virtual UndoableCommand::Ptr translateScalePivotCmd(double x, double y, double z);
    virtual void translateScalePivot(double x, double y, double z);
    [[nodiscard]] virtual Vector3d scalePivotTranslation() const;

    /// A rotation, in degrees, of the axes about which `rotate` turns.
    [[nodiscard]] virtual UndoableCommand::Ptr rotateAxisCmd(double x, double y, double z);
    virtual void rotateAxis(double x, double y, double z);
    [[nodiscard]] virtual Vector3d rotateAxis() const;

    /// The shears xy, xz and yz.
    [[nodiscard]] virtual UndoableCommand::Ptr shearCmd(double x, double y, double z);
    virtual void shear(double x, double y, double z);
    [[nodiscard]] virtual Vector3d shear() const;

    /// Sets the properties so that `matrix()` is `matrix`, as far as the run-time can.
    [[nodiscard]] virtual UndoableCommand::Ptr setMatrixCmd(const Matrix4d& matrix) = 0;
    virtual void setMatrix(const Matrix4d& matrix);

    /// False when `observer` observes the item already.
    static bool addObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    /// False when `observer` does not observe the item.
    static bool removeObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    static bool removeObserver(const Path& path, const Observer::Ptr& observer);
    /// The number of living observers of the item.
    [[nodiscard]] static std::size_t nbObservers(const SceneItem::Ptr& item);
    /// Whether `observer` observes the item.
    [[nodiscard]] static bool hasObserver(const SceneItem::Ptr& item,
                                          const Observer::Ptr& observer);
    /// Whether the item at `path` is observed. Observers that died without being removed count.
    [[nodiscard]] static bool hasObservers(const Path& path);
    /// Whether an item of the run-time was ever observed; stays true when the last observer has
    /// gone.
    [[nodiscard]] static bool hasObservers(Rtid runTimeId);

    /// Tells the observers of the item at `path`, with a `Transform3dChanged` that carries the item
    /// given to the first of them.
    static void notify(const Path& path);
};

} // namespace Kiv_v4
