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

/// The edit that the caller is about to make, so that a run-time that keeps several transforms for
/// an item can choose the one to edit.
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

    /// The kind of edit.
    [[nodiscard]] Type type() const noexcept { return _type; }

private:
    Type _type;
};

/// Edits the 3D transform of one scene item, property by property or as a matrix. Each run-time has
/// its own rule for making the item's matrix of the properties; `matrix()` returns the result.
///
/// Translations and pivots are in scene units, rotations in degrees about x, y and z, scale and
/// shear are factors. The values are absolute: `translate` sets the translation.
///
/// Each property has a command maker, which changes nothing and returns null if the run-time
/// refuses, a setter, which executes that command and drops it, or does nothing if it is null, and
/// a getter. The last four vector properties are optional: unless a run-time overrides them, they
/// cannot be set and read as zero.
///
/// Run-times announce changes with `notify`. The library finds the observers of an item by its path
/// and holds them by weak reference; for a null item these functions return false or 0. It keeps
/// the item that came with the first observer, for the notifications, until the last observer is
/// removed or the run-time's registration ends: observers must be removed.
class KIV_EXPORT Transform3d : public Transform3dRead
{
public:
    using Ptr = std::shared_ptr<Transform3d>;

    /// The transform of `item`; null for a null item, an empty path, a run-time without this
    /// interface, and an item without it. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr transform3d(const SceneItem::Ptr& item);

    /// The same, suited to the edit of `hint`.
    [[nodiscard]] static Ptr editTransform3d(const SceneItem::Ptr& item,
                                             const EditTransform3dHint& hint);

    ~Transform3d() override;

    /// The item's position in its parent's space.
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

    /// The translation that compensates for a moved rotate pivot.
    [[nodiscard]] virtual UndoableCommand::Ptr translateRotatePivotCmd(double x, double y,
                                                                       double z);
    virtual void translateRotatePivot(double x, double y, double z);
    [[nodiscard]] virtual Vector3d rotatePivotTranslation() const;

    /// The translation that compensates for a moved scale pivot.
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

    /// Set the properties so that `matrix()` is `matrix`, as far as the run-time can.
    [[nodiscard]] virtual UndoableCommand::Ptr setMatrixCmd(const Matrix4d& matrix) = 0;
    virtual void setMatrix(const Matrix4d& matrix);

    /// Returns false if `observer` already observes the item.
    static bool addObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    /// Returns false if `observer` does not observe the item.
    static bool removeObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    static bool removeObserver(const Path& path, const Observer::Ptr& observer);
    /// The number of living observers of the item.
    [[nodiscard]] static std::size_t nbObservers(const SceneItem::Ptr& item);
    /// Whether `observer` observes the item.
    [[nodiscard]] static bool hasObserver(const SceneItem::Ptr& item,
                                          const Observer::Ptr& observer);
    /// Whether the item at `path` has observers. Observers that died without being removed count.
    [[nodiscard]] static bool hasObservers(const Path& path);
    /// Whether an item of the run-time was ever observed; stays true after the last observer was
    /// removed.
    [[nodiscard]] static bool hasObservers(Rtid runTimeId);

    /// Notifies the observers of the item at `path` with a `Transform3dChanged` that carries the
    /// item that the first of them was added with.
    static void notify(const Path& path);
};

} // namespace Kiv_v4
