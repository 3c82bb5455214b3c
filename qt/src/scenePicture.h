#pragma once

#include <QImage>
#include <QPalette>
#include <functional>
#include <vector>

#include "kiv/qt/sceneView.h"
#include "kiv/selection.h"

#include "schematicPainter.h"

namespace Kiv_v4::qt {

/// The picture of the shapes, drawn in slices: of many shapes each slice has some from everywhere.
class SceneView::Picture
{
public:
    /// What is drawn.
    struct Subject
    {
        const std::vector<detail::Shape>& shapes;
        const Selection& selection;
        const Viewpoint& viewpoint;
        const Path& camera; ///< Which is not drawn itself.
        QPalette palette;
        QSize size;
        double pixelRatio;
        double sceneSize;
        Vector3d centre;
        double cell;
    };

    /// Begins anew.
    void begin(const Subject& subject);

    /// Draws on for so many milliseconds, 0 for all. Returns whether there is more to draw.
    bool drawOn(const Subject& subject, int milliseconds);

    [[nodiscard]] const QImage& image() const noexcept { return _image; }
    [[nodiscard]] bool isStale() const noexcept { return _isStale; }
    [[nodiscard]] bool isDone() const noexcept { return !_isStale && _isDone; }
    void setStale() noexcept { _isStale = true; }

private:
    QImage _image;
    std::size_t _next = 0; ///< In the order of drawing.
    std::vector<std::size_t> _selected;
    bool _isStale = true;
    bool _isDone = false;
};

} // namespace Kiv_v4::qt
