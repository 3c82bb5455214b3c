#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "kiv/export.h"
#include "kiv/observer.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// The camera properties of one scene item, supplied by its run-time. The camera stands at the
/// origin of the item's space, looks along -z and has +y upward.
///
/// Each property has a command maker, which changes nothing and returns null if the run-time
/// refuses, a setter, which executes that command and drops it, or does nothing if it is null, and
/// a getter.
///
/// Run-times announce changes with `notify`. The library finds the observers of an item by its path
/// and holds them by weak reference; for a null item these functions return false or 0. It keeps
/// the item that came with the first observer, for the notifications, until the last observer is
/// removed or the run-time's registration ends: observers must be removed.
class KIV_EXPORT Camera
{
public:
    using Ptr = std::shared_ptr<Camera>;

    /// The projection of a camera: with vanishing points, or with parallel lines kept parallel.
    enum Projection : std::uint32_t { Perspective = 0, Orthographic = 1 };

    /// The camera at `item`; null for a null item, an empty path, a run-time without this
    /// interface, and an item that is not a camera. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr camera(const SceneItem::Ptr& item);

    Camera();
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;
    virtual ~Camera();

    /// The path of the item.
    [[nodiscard]] virtual const Path& path() const = 0;

    /// The item.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// The width of the film back, in millimetres.
    [[nodiscard]] virtual UndoableCommand::Ptr horizontalApertureCmd(float value) = 0;
    virtual void horizontalAperture(float value);
    [[nodiscard]] virtual float horizontalAperture() const = 0;

    /// The height of the film back, in millimetres.
    [[nodiscard]] virtual UndoableCommand::Ptr verticalApertureCmd(float value) = 0;
    virtual void verticalAperture(float value);
    [[nodiscard]] virtual float verticalAperture() const = 0;

    /// How far the film back is shifted to the right, in millimetres.
    [[nodiscard]] virtual UndoableCommand::Ptr horizontalApertureOffsetCmd(float value) = 0;
    virtual void horizontalApertureOffset(float value);
    [[nodiscard]] virtual float horizontalApertureOffset() const = 0;

    /// How far the film back is shifted upward, in millimetres.
    [[nodiscard]] virtual UndoableCommand::Ptr verticalApertureOffsetCmd(float value) = 0;
    virtual void verticalApertureOffset(float value);
    [[nodiscard]] virtual float verticalApertureOffset() const = 0;

    /// The ratio of focal length to the diameter of the entrance pupil; 0 for a pinhole without
    /// depth of field.
    [[nodiscard]] virtual UndoableCommand::Ptr fStopCmd(float value) = 0;
    virtual void fStop(float value);
    [[nodiscard]] virtual float fStop() const = 0;

    /// The focal length, in millimetres. The horizontal field of view of a perspective camera is 2
    /// atan(horizontalAperture / (2 focalLength)).
    [[nodiscard]] virtual UndoableCommand::Ptr focalLengthCmd(float value) = 0;
    virtual void focalLength(float value);
    [[nodiscard]] virtual float focalLength() const = 0;

    /// The distance to the plane in focus, in scene units.
    [[nodiscard]] virtual UndoableCommand::Ptr focusDistanceCmd(float value) = 0;
    virtual void focusDistance(float value);
    [[nodiscard]] virtual float focusDistance() const = 0;

    /// The distance to the near clipping plane, in scene units.
    [[nodiscard]] virtual UndoableCommand::Ptr nearClipPlaneCmd(float value) = 0;
    virtual void nearClipPlane(float value);
    [[nodiscard]] virtual float nearClipPlane() const = 0;

    /// The distance to the far clipping plane, in scene units.
    [[nodiscard]] virtual UndoableCommand::Ptr farClipPlaneCmd(float value) = 0;
    virtual void farClipPlane(float value);
    [[nodiscard]] virtual float farClipPlane() const = 0;

    /// The kind of projection. An orthographic camera sees a rectangle of horizontalAperture by
    /// verticalAperture, with one scene unit per millimetre of aperture.
    [[nodiscard]] virtual UndoableCommand::Ptr projectionCmd(Projection value) = 0;
    virtual void projection(Projection value);
    [[nodiscard]] virtual Projection projection() const = 0;

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

    /// Notifies the observers of the item at `path` with a `CameraChanged` that carries the item
    /// that the first of them was added with.
    static void notify(const Path& path);
};

} // namespace Kiv_v4
