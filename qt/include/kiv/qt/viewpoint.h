#pragma once

#include <QPointF>
#include <QRectF>
#include <optional>

#include "kiv/export.h"
#include "kiv/mathTypes.h"
#include "kiv/object3d.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::qt {

/// From where, in which direction and how wide a scene is looked at, and where its points are in a
/// picture. A plain value.
class KIV_EXPORT Viewpoint
{
public:
    /// Looks along -z from the origin, with a field of view of 40 degrees upward.
    Viewpoint();

    /// Looks at `target` from `distance` away: from +z for angles of zero, turned by `yaw` about
    /// the y axis, then lifted by `pitch`, in degrees.
    Viewpoint(const Vector3d& target, double distance, double yaw, double pitch);

    /// Returns the viewpoint of a camera of any run-time, with its projection and film back. Of its
    /// world matrix, scale and shear are left out. Nothing when the item is no camera, has no place
    /// in the world or one without a direction. Passes on what run-times throw.
    [[nodiscard]] static std::optional<Viewpoint> ofCamera(const SceneItem::Ptr& item);

    /// Returns the viewpoint in the same direction that has the box in its picture.
    [[nodiscard]] Viewpoint framing(const BoundingBox3d& box) const;

    /// Returns where the viewer is, and the unit vectors to the right, upward and forward.
    [[nodiscard]] const Vector3d& eye() const noexcept { return _eye; }
    [[nodiscard]] const Vector3d& right() const noexcept { return _right; }
    [[nodiscard]] const Vector3d& up() const noexcept { return _up; }
    [[nodiscard]] const Vector3d& forward() const noexcept { return _forward; }

    /// Returns whether parallel lines stay parallel.
    [[nodiscard]] bool isOrthographic() const noexcept { return _isOrthographic; }

    /// Returns half the width and height of the film, and its shift: at a distance of one, or in
    /// scene units when orthographic. The width is 0 when it takes that of the picture.
    [[nodiscard]] const QPointF& film() const noexcept { return _film; }
    [[nodiscard]] const QPointF& shift() const noexcept { return _shift; }

    /// Returns the part of a picture of that size that the film shows: all of it, or the largest
    /// rectangle in its middle that has the film's shape.
    [[nodiscard]] QRectF frame(const QSizeF& picture) const;

    /// Returns the point as seen: to the right, upward, and forward.
    [[nodiscard]] Vector3d seen(const Vector3d& point) const noexcept;

    /// Returns the place of a point as seen, in a picture of that size, from its upper left corner;
    /// nothing when it is not in front of the viewer.
    [[nodiscard]] std::optional<QPointF> placed(const Vector3d& seen, const QSizeF& picture) const;

    /// Returns how far in the picture a scene unit reaches at a distance in front of the viewer.
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
