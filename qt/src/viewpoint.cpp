#include "kiv/qt/viewpoint.h"

#include <algorithm>
#include <cmath>

#include "kiv/camera.h"
#include "kiv/host/matrix.h"

#include "vectors.h"

namespace Kiv_v4::qt {

namespace {

using namespace detail;

constexpr double kDegree = 3.14159265358979323846 / 180;
/// The tangent of half the angle of view upward, unless a camera tells another.
constexpr double kHalfHeight = 0.36397;
/// Nothing nearer than this share of a scene unit is drawn.
constexpr double kNearestSeen = 1e-6;

} // namespace

Viewpoint::Viewpoint() : _film(0, kHalfHeight) {}

Viewpoint::Viewpoint(const Vector3d& target, double distance, double yaw, double pitch)
    : Viewpoint()
{
    const auto side = std::cos(pitch * kDegree);
    _forward = {{-side * std::sin(yaw * kDegree), -std::sin(pitch * kDegree),
                 -side * std::cos(yaw * kDegree)}};
    _right = {{std::cos(yaw * kDegree), 0, -std::sin(yaw * kDegree)}};
    _up = cross(_right, _forward);
    _eye = sum(target, _forward, -distance);
}

std::optional<Viewpoint> Viewpoint::ofCamera(const SceneItem::Ptr& item)
{
    const auto camera = Camera::camera(item);
    const auto world = camera ? host::worldMatrix(item) : std::nullopt;
    if (!world) {
        return std::nullopt;
    }
    Viewpoint viewpoint;
    viewpoint._eye = axis(*world, 3);
    viewpoint._forward = unit(scaled(axis(*world, 2), -1));
    viewpoint._right = unit(cross(viewpoint._forward, axis(*world, 1)));
    viewpoint._up = cross(viewpoint._right, viewpoint._forward);
    viewpoint._isOrthographic = camera->projection() == Camera::Orthographic;
    const auto focal = viewpoint._isOrthographic ? 1.0 : double(camera->focalLength());
    viewpoint._film = {camera->horizontalAperture() / 2 / focal,
                       camera->verticalAperture() / 2 / focal};
    viewpoint._shift = {camera->horizontalApertureOffset() / focal,
                        camera->verticalApertureOffset() / focal};
    const auto& film = viewpoint._film;
    const auto isWide = film.x() > 0 && film.y() > 0 && std::isfinite(film.x() * film.y());
    return isWide && length(viewpoint._right) > 0 ? std::optional(viewpoint) : std::nullopt;
}

Viewpoint Viewpoint::framing(const BoundingBox3d& box) const
{
    auto moved = *this;
    if (!box.empty()) {
        const auto centre = middle(box);
        const auto radius = std::max(length(sum(box.max, box.min, -1)) / 2, kNearestSeen);
        const auto film = _film.x() > 0 ? std::min(_film.x(), _film.y()) : _film.y();
        // In all of the ball around the box, with a little room at the edges.
        const auto distance = 1.05 * radius * std::sqrt(1 + 1 / (film * film));
        moved._eye = sum(centre, _forward, -distance);
    }
    return moved;
}

QRectF Viewpoint::frame(const QSizeF& picture) const
{
    auto size = picture;
    if (_film.x() > 0) {
        size = QSizeF(_film.x(), _film.y()).scaled(picture, Qt::KeepAspectRatio);
    }
    return {QPointF((picture.width() - size.width()) / 2, (picture.height() - size.height()) / 2),
            size};
}

Vector3d Viewpoint::seen(const Vector3d& point) const noexcept
{
    const auto from = sum(point, _eye, -1);
    return {{dot(from, _right), dot(from, _up), dot(from, _forward)}};
}

std::optional<QPointF> Viewpoint::placed(const Vector3d& seen, const QSizeF& picture) const
{
    const auto& [x, y, z] = seen.vector;
    if (!(z > kNearestSeen)) {
        return std::nullopt;
    }
    const auto distance = _isOrthographic ? 1.0 : z;
    const auto factor = scale(1, picture);
    return frame(picture).center() +
           QPointF(x / distance - _shift.x(), -(y / distance - _shift.y())) * factor;
}

double Viewpoint::scale(double distance, const QSizeF& picture) const
{
    return frame(picture).height() / (2 * _film.y()) / (_isOrthographic ? 1 : distance);
}

} // namespace Kiv_v4::qt
