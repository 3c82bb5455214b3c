#include "sceneOrbit.h"

#include <algorithm>
#include <cmath>

#include "vectors.h"

namespace Kiv_v4::qt {

namespace {

constexpr double kDegreesOfPixel = 0.4;
constexpr double kSteepest = 89;
constexpr double kRadian = 180 / 3.14159265358979323846;

} // namespace

Viewpoint SceneView::Orbit::viewpoint() const
{
    return {target, distance, yaw, pitch};
}

void SceneView::Orbit::turn(const QPointF& by)
{
    yaw -= by.x() * kDegreesOfPixel;
    pitch = std::clamp(pitch + by.y() * kDegreesOfPixel, -kSteepest, kSteepest);
}

void SceneView::Orbit::pan(const QPointF& by, const QSizeF& picture)
{
    const auto from = viewpoint();
    const auto reach = 1 / from.scale(distance, picture);
    target = detail::sum(target, from.right(), -by.x() * reach);
    target = detail::sum(target, from.up(), by.y() * reach);
}

void SceneView::Orbit::zoom(double notches)
{
    distance *= std::pow(0.85, notches);
}

void SceneView::Orbit::frame(const BoundingBox3d& box, const QSizeF& picture)
{
    target = detail::middle(box);
    const auto framed = viewpoint().framing(box);
    const auto narrowness = std::max(1.0, picture.height() / std::max(picture.width(), 1.0));
    distance = narrowness * detail::length(detail::sum(framed.eye(), target, -1));
}

void SceneView::Orbit::take(const Viewpoint& viewpoint, const BoundingBox3d& scene)
{
    const auto& forward = viewpoint.forward().vector;
    yaw = std::atan2(-forward[0], -forward[2]) * kRadian;
    pitch =
        std::clamp(std::asin(std::clamp(-forward[1], -1.0, 1.0)) * kRadian, -kSteepest, kSteepest);
    if (!scene.empty()) {
        const auto depth = viewpoint.seen(detail::middle(scene)).vector[2];
        distance = depth > 0 ? depth : distance;
    }
    target = detail::sum(viewpoint.eye(), viewpoint.forward(), distance);
}

} // namespace Kiv_v4::qt
