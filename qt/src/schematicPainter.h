#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <QSizeF>
#include <array>
#include <optional>
#include <vector>

#include "kiv/qt/viewpoint.h"

#include "schematic.h"

namespace Kiv_v4::qt::detail {

/// Draws shapes, a grid and axes as seen from a viewpoint.
class SchematicPainter
{
public:
    /// `sceneSize` is what cameras and lights are sized by.
    SchematicPainter(QPainter& painter, const Viewpoint& viewpoint, const QSizeF& picture,
                     const QPalette& palette, double sceneSize);

    /// Draws a grid of cells of that size on the ground around `centre`, and the axes.
    void drawGround(const Vector3d& centre, double cell);

    /// Draws the shape and notes its place.
    void draw(const Shape& shape, bool isSelected);

    /// Draws the axes' directions in the corner.
    void drawCompass();

    /// Darkens what the camera's film does not show.
    void drawFrame();

private:
    using Corners = std::array<Vector3d, 8>;

    void drawBox(const Shape& shape, bool isSelected);
    void drawCamera(const Shape& shape);
    void drawLight(const Shape& shape);
    void drawEdges(const Corners& corners);
    void drawIcon(const char* name, const QPointF& at);
    bool line(const Vector3d& from, const Vector3d& to);
    bool seenLine(Vector3d from, Vector3d to);
    [[nodiscard]] std::optional<QPointF> place(const Vector3d& point) const;

    QPainter& _painter;
    const Viewpoint& _viewpoint;
    const QSizeF _picture;
    const QPalette& _palette;
    const double _symbol; ///< The size of cameras and lights.
    QRectF _drawn;        ///< What was drawn of the shape at hand.
};

} // namespace Kiv_v4::qt::detail
