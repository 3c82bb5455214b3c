#pragma once

#include "kiv/qt/sceneView.h"

namespace Kiv_v4::qt {

/// What the view turns about, and from where it looks there.
struct SceneView::Orbit
{
    [[nodiscard]] Viewpoint viewpoint() const;

    /// By a way of the mouse in the picture.
    void turn(const QPointF& by);
    void pan(const QPointF& by, const QSizeF& picture);

    /// By notches of the wheel.
    void zoom(double notches);

    /// Has the whole box in the picture, seen from where it looks now.
    void frame(const BoundingBox3d& box, const QSizeF& picture);

    /// Looks as the viewpoint does, upright, and turns about what of the scene is before it.
    void take(const Viewpoint& viewpoint, const BoundingBox3d& scene);

    Vector3d target;
    double distance = 10;
    double yaw = 30;
    double pitch = 20;
};

} // namespace Kiv_v4::qt
