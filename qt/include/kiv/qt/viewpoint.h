#pragma once

#include <QPointF>
#include <QRectF>
#include <optional>

#include "kiv/export.h"
#include "kiv/mathTypes.h"
#include "kiv/object3d.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::qt {

/// The position, direction and field of view from which a scene is seen, and the projection of its
/// points into a picture. A plain value.
class KIV_EXPORT Viewpoint
{
public:
    /// Looks along -z from the origin, with a field of view of 40 degrees upward.
    Viewpoint();

    /// Looks at `target` from `distance` scene units away: from +z if both angles are 0; `yaw`
    /// turns about the y axis, `pitch` raises the viewer, both in degrees.
    Viewpoint(const Vector3d& target, double distance, double yaw, double pitch);

    /// Returns the viewpoint of a camera of any run-time, with its projection and film back. Of its
    /// world matrix, ignores scale and shear. `std::nullopt` if the item is not a camera, or has no
    /// world matrix or one without a direction. Exceptions of run-times pass through.
    [[nodiscard]] static std::optional<Viewpoint> ofCamera(const SceneItem::Ptr& item);

    /// Returns a viewpoint in the same direction with the whole box in its picture.
    [[nodiscard]] Viewpoint framing(const BoundingBox3d& box) const;

    /// The position of the viewer, and the unit vectors to the right, upward and forward.
    [[nodiscard]] const Vector3d& eye() const noexcept { return _eye; }
    [[nodiscard]] const Vector3d& right() const noexcept { return _right; }
    [[nodiscard]] const Vector3d& up() const noexcept { return _up; }
    [[nodiscard]] const Vector3d& forward() const noexcept { return _forward; }

    /// Returns whether the projection is orthographic.
    [[nodiscard]] bool isOrthographic() const noexcept { return _isOrthographic; }

    /// Returns half the width and height of the film, and its shift: at a distance of 1, or in
    /// scene units if orthographic. The width is 0 if the film is as wide as the picture.
    [[nodiscard]] const QPointF& film() const noexcept { return _film; }
    [[nodiscard]] const QPointF& shift() const noexcept { return _shift; }

    /// Returns the part of a picture of that size that the film covers: all of it, or the largest
    /// rectangle with the film's aspect ratio in its middle.
    [[nodiscard]] QRectF frame(const QSizeF& picture) const;

    /// Returns the point relative to the viewer: to the right, upward, and forward.
    [[nodiscard]] Vector3d seen(const Vector3d& point) const noexcept;

    /// Returns the position of a point relative to the viewer in a picture of that size, from the
    /// upper left corner; `std::nullopt` if it is not in front of the viewer.
    [[nodiscard]] std::optional<QPointF> placed(const Vector3d& seen, const QSizeF& picture) const;

    /// Returns the length in the picture of a scene unit at a distance in front of the viewer.
    [[nodiscard]] double scale(double distance, const QSizeF& picture) const;

private:
    Vector3d _eye;
    Vector3d _right{{1, 0, 0}};
    Vector3d _up{{0, 1, 0}};
    Vector3d _forward{{0, 0, -1}};
    QPointF _film;
    QPointF _shift;
    bool _isOrthographic = false;
};

} // namespace Kiv_v4::qt
