#include "kiv/qt/sceneView.h"

#include <QPainter>
#include <algorithm>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"

#include "attempt.h"
#include "grid.h"
#include "listening.h"
#include "sceneContent.h"
#include "sceneMove.h"
#include "sceneOrbit.h"
#include "scenePicture.h"
#include "texts.h"
#include "vectors.h"

namespace Kiv_v4::qt {

namespace {

using detail::attempt;

/// How long is drawn at a stretch, in milliseconds.
constexpr int kDrawingSlice = 12;

} // namespace

SceneView::SceneView(ObservableSelection::Ptr selection, QWidget* parent)
    : QWidget(parent), _selection(std::move(selection)),
      _selectionObserver(
          detail::listeningTo<Notification>([this](const Notification&) { redraw(); })),
      _orbit(std::make_unique<Orbit>()),
      _content(std::make_unique<Content>([this](bool isRead) { contentChanged(isRead); })),
      _picture(std::make_unique<Picture>())
{
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(160, 120);
    _selection->addObserver(_selectionObserver);
    look();
    refresh();
}

SceneView::~SceneView()
{
    _selection->removeObserver(_selectionObserver);
}

const Viewpoint& SceneView::viewpoint() const noexcept
{
    return _viewpoint;
}

bool SceneView::lookThrough(const Path& camera)
{
    return attempt("look through '" + PathString::string(camera) + "'", [&] {
        const auto viewpoint = Viewpoint::ofCamera(Hierarchy::createItem(camera));
        if (!viewpoint) {
            throw std::invalid_argument("not a camera with a place in the world");
        }
        _camera = camera;
        _viewpoint = *viewpoint;
        redraw();
        Q_EMIT cameraChanged();
    });
}

void SceneView::leaveCamera()
{
    if (!_camera.empty()) {
        leaveToOrbit();
        look();
    }
}

const Path& SceneView::camera() const noexcept
{
    return _camera;
}

void SceneView::setUnit(std::optional<double> metres)
{
    _unit = metres;
    redraw();
}

std::optional<double> SceneView::unit() const
{
    return _unit ? _unit : _content->unit();
}

BoundingBox3d SceneView::sceneBox() const
{
    return _content->box();
}

std::optional<QPointF> SceneView::placeOf(const Vector3d& point) const
{
    return _viewpoint.placed(_viewpoint.seen(point), size());
}

Path SceneView::itemAt(const QPointF& position) const
{
    const detail::Shape* best = nullptr;
    const auto area = [](const QRectF& place) { return place.width() * place.height(); };
    for (const auto& shape : _content->shapes()) {
        const auto& place = shape.place;
        if (!place.isNull() && place.adjusted(-3, -3, 3, 3).contains(position) &&
            (!best || area(place) < area(best->place))) {
            best = &shape;
        }
    }
    return best ? best->path : Path();
}

std::vector<Path> SceneView::itemsIn(const QRectF& rectangle) const
{
    std::vector<Path> paths;
    for (const auto& shape : _content->shapes()) {
        if (!shape.place.isNull() && rectangle.contains(shape.place)) {
            paths.push_back(shape.path);
        }
    }
    return paths;
}

bool SceneView::isReading() const noexcept
{
    return _content->isReading() || _content->isMeasuring();
}

bool SceneView::isDrawing() const noexcept
{
    return !_picture->isDone();
}

std::size_t SceneView::nbItems() const noexcept
{
    return _content->nbItems();
}

QSize SceneView::sizeHint() const
{
    return {640, 480};
}

void SceneView::frameAll()
{
    frame(_content->box());
}

void SceneView::frameSelection()
{
    if (_selection->empty()) {
        frameAll();
        return;
    }
    _content->measure(*_selection, [this](const BoundingBox3d& box) { frame(box); });
    Q_EMIT progressed();
}

void SceneView::refresh()
{
    _content->read();
}

void SceneView::stopReading()
{
    _content->endMeasuring();
    _content->stop();
}

void SceneView::frame(const BoundingBox3d& box)
{
    _content->endMeasuring();
    if (!box.empty()) {
        leaveToOrbit();
        _orbit->frame(box, size());
        look();
    }
}

void SceneView::look()
{
    _content->endMeasuring(); // for a view that the user left meanwhile
    _viewpoint = _orbit->viewpoint();
    redraw();
}

void SceneView::leaveToOrbit()
{
    if (!_camera.empty()) {
        _camera = Path();
        _orbit->take(_viewpoint, _content->box());
        Q_EMIT cameraChanged();
    }
}

void SceneView::redraw()
{
    _picture->setStale();
    update();
}

void SceneView::contentChanged(bool isRead)
{
    if (!_isFramed && !_content->shapes().empty() && _camera.empty()) {
        _isFramed = isRead;
        frameAll();
    }
    if (!_camera.empty()) {
        const auto viewpoint = attempt("look through a camera", std::optional<Viewpoint>(), [&] {
            return Viewpoint::ofCamera(Hierarchy::createItem(_camera));
        });
        viewpoint ? static_cast<void>(_viewpoint = *viewpoint) : leaveCamera();
    }
    redraw();
    Q_EMIT progressed();
}

void SceneView::orbit(const QPointF& by)
{
    leaveToOrbit();
    _orbit->turn(by);
    look();
}

void SceneView::pan(const QPointF& by)
{
    leaveToOrbit();
    _orbit->pan(by, size());
    look();
}

void SceneView::resizeEvent(QResizeEvent* /*event*/)
{
    redraw();
}

void SceneView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange) {
        redraw();
    }
    QWidget::changeEvent(event);
}

void SceneView::drawPicture(int milliseconds)
{
    const auto box = _content->box();
    const auto sceneSize =
        box.empty() ? _orbit->distance : detail::length(detail::sum(box.max, box.min, -1));
    const auto depth = std::max(_camera.empty() ? _orbit->distance : sceneSize, 1e-6);
    _cell = detail::cellFor(depth, unit());
    const auto centre = _camera.empty() ? _orbit->target : detail::middle(box);
    const Picture::Subject subject{_content->shapes(),
                                   *_selection,
                                   _viewpoint,
                                   _camera,
                                   palette(),
                                   size(),
                                   devicePixelRatioF(),
                                   std::max(sceneSize, 1e-6),
                                   box.empty() ? Vector3d() : centre,
                                   _cell};
    if (_picture->isStale()) {
        _picture->begin(subject);
    }
    if (_picture->drawOn(subject, milliseconds)) {
        update(); // and so on, until all is drawn
    }
}

void SceneView::paintEvent(QPaintEvent* /*event*/)
{
    drawPicture(kDrawingSlice);
    QPainter painter(this);
    painter.drawImage(0, 0, _picture->image());
    drawOver(painter);
}

void SceneView::drawOver(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    detail::SchematicPainter drawing(painter, _viewpoint, size(), palette(), 1);
    if (!_camera.empty()) {
        drawing.drawFrame();
    }
    drawing.drawCompass();
    painter.setPen(palette().color(QPalette::Text));
    const auto corner = rect().adjusted(72, 8, -12, -12);
    painter.drawText(corner, Qt::AlignLeft | Qt::AlignBottom, detail::cellText(_cell, unit()));
    if (!_camera.empty()) {
        const auto text = detail::textOf(PathString::string(_camera));
        const auto fitting = painter.fontMetrics().elidedText(text, Qt::ElideLeft, width() - 24);
        painter.drawText(rect().adjusted(12, 8, -12, -12), Qt::AlignLeft | Qt::AlignTop, fitting);
    }
    if (isReading()) {
        painter.drawText(corner, Qt::AlignRight | Qt::AlignBottom,
                         tr("reading, %L1 items").arg(nbItems()));
    }
    if (!_band.isNull()) {
        auto fill = palette().color(QPalette::Highlight);
        painter.setPen(fill);
        fill.setAlpha(40);
        painter.setBrush(fill);
        painter.drawRect(_band);
    }
}

QImage SceneView::picture()
{
    _content->finish();
    drawPicture(0);
    return grab().toImage();
}

} // namespace Kiv_v4::qt
