#include "scenePicture.h"

#include <QElapsedTimer>
#include <numeric>

namespace Kiv_v4::qt {

namespace {

/// So many selected shapes are drawn once more, above all others.
constexpr std::size_t kOnTop = 5000;

/// The place of the shape that is drawn as the nth: neighbours are drawn far from one another, so
/// that any part of the drawing is one of the whole scene. (The step is the golden ratio of the
/// count, made prime to it.)
std::size_t spread(std::size_t nth, std::size_t count)
{
    auto step = static_cast<std::size_t>(static_cast<double>(count) * 0.618) | 1;
    while (std::gcd(step, count) != 1) {
        step += 2;
    }
    return nth * step % count;
}

} // namespace

void SceneView::Picture::begin(const Subject& subject)
{
    _isStale = _isDone = false;
    _next = 0;
    _selected.clear();
    const auto pixels = subject.size * subject.pixelRatio;
    if (_image.size() != pixels) {
        _image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    }
    _image.setDevicePixelRatio(subject.pixelRatio);
    _image.fill(subject.palette.color(QPalette::Base));
    QPainter painter(&_image);
    painter.setRenderHint(QPainter::Antialiasing);
    detail::SchematicPainter(painter, subject.viewpoint, subject.size, subject.palette,
                             subject.sceneSize)
        .drawGround(subject.centre, subject.cell);
}

bool SceneView::Picture::drawOn(const Subject& subject, int milliseconds)
{
    const auto count = subject.shapes.size();
    if (_isDone) {
        return false;
    }
    QPainter painter(&_image);
    painter.setRenderHint(QPainter::Antialiasing, count < 20000);
    detail::SchematicPainter drawing(painter, subject.viewpoint, subject.size, subject.palette,
                                     subject.sceneSize);
    const auto isSelected = [&](const Path& path) {
        return !subject.selection.empty() && subject.selection.containsAncestorInclusive(path);
    };
    QElapsedTimer clock;
    clock.start();
    while (_next < count && (milliseconds == 0 || clock.elapsed() < milliseconds)) {
        for (auto slice = std::min(_next + 32, count); _next < slice; ++_next) {
            const auto at = spread(_next, count);
            const auto& shape = subject.shapes[at];
            if (shape.path == subject.camera) {
                continue;
            }
            const auto selected = isSelected(shape.path);
            drawing.draw(shape, selected);
            if (selected && _selected.size() < kOnTop) {
                _selected.push_back(at);
            }
        }
    }
    _isDone = _next >= count;
    for (const auto at : _isDone ? _selected : std::vector<std::size_t>()) {
        drawing.draw(subject.shapes[at], true);
    }
    return !_isDone;
}

} // namespace Kiv_v4::qt
