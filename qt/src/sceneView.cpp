#include "kiv/qt/sceneView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "kiv/hierarchy.h"
#include "kiv/host/propertyValue.h"
#include "kiv/pathString.h"

#include "attempt.h"
#include "listening.h"
#include "sceneContent.h"
#include "sceneMove.h"
#include "scenePicture.h"
#include "texts.h"
#include "vectors.h"

namespace Kiv_v4::qt {

namespace {

using detail::attempt;

/// How long is drawn at a stretch, in milliseconds.
constexpr int kSlice = 12;
/// A press that moves less is a click.
constexpr double kClick = 4;

} // namespace

/// What the view turns about.
struct SceneView::Orbit
{
    Vector3d target;
    double distance = 10;
    double yaw = 30;
    double pitch = 20;
};

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

void SceneView::setUnit(const QString& unit)
{
    _unit = unit;
    update();
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
    return _content->isReading();
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
    frame(_selection->empty() ? _content->box() : _content->box(*_selection));
}

void SceneView::refresh()
{
    _content->read();
}

void SceneView::stopReading()
{
    _content->stop();
}

void SceneView::frame(const BoundingBox3d& box)
{
    if (box.empty()) {
        return;
    }
    leaveToOrbit();
    const auto centre = detail::scaled(detail::sum(box.min, box.max), 0.5);
    _orbit->target = centre;
    look();
    const auto framed = _viewpoint.framing(box);
    const auto narrowness = std::max(1.0, double(height()) / std::max(width(), 1));
    _orbit->distance = narrowness * detail::length(detail::sum(framed.eye(), centre, -1));
    look();
}

void SceneView::look()
{
    _viewpoint = Viewpoint(_orbit->target, _orbit->distance, _orbit->yaw, _orbit->pitch);
    redraw();
}

void SceneView::leaveToOrbit()
{
    if (_camera.empty()) {
        return;
    }
    _camera = Path();
    constexpr double kRadian = 180 / 3.14159265358979323846;
    const auto& forward = _viewpoint.forward().vector;
    _orbit->yaw = std::atan2(-forward[0], -forward[2]) * kRadian;
    _orbit->pitch =
        std::clamp(std::asin(std::clamp(-forward[1], -1.0, 1.0)) * kRadian, -89.0, 89.0);
    const auto box = _content->box();
    if (!box.empty()) {
        const auto centre = detail::scaled(detail::sum(box.min, box.max), 0.5);
        const auto depth = _viewpoint.seen(centre).vector[2];
        _orbit->distance = depth > 0 ? depth : _orbit->distance;
    }
    _orbit->target = detail::sum(_viewpoint.eye(), _viewpoint.forward(), _orbit->distance);
    Q_EMIT cameraChanged();
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
    _orbit->yaw -= by.x() * 0.4;
    _orbit->pitch = std::clamp(_orbit->pitch + by.y() * 0.4, -89.0, 89.0);
    look();
}

void SceneView::pan(const QPointF& by)
{
    leaveToOrbit();
    const auto reach = 1 / _viewpoint.scale(_orbit->distance, size());
    _orbit->target = detail::sum(_orbit->target, _viewpoint.right(), -by.x() * reach);
    _orbit->target = detail::sum(_orbit->target, _viewpoint.up(), by.y() * reach);
    look();
}

void SceneView::choose(const std::vector<Path>& paths, Qt::KeyboardModifiers modifiers)
{
    attempt("select", [&] {
        Selection chosen;
        if (modifiers & (Qt::ShiftModifier | Qt::ControlModifier)) {
            chosen = *_selection;
        }
        for (const auto& path : paths) {
            const auto item = Hierarchy::createItem(path);
            if (item && !chosen.append(item) && modifiers & Qt::ControlModifier) {
                chosen.remove(item);
            }
        }
        _selection->replaceWith(chosen);
    });
}

void SceneView::mousePressEvent(QMouseEvent* event)
{
    _pressed = _last = event->position();
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier) {
        const auto item = itemAt(_pressed);
        if (!item.empty() && !_selection->containsAncestorInclusive(item)) {
            choose({item}, Qt::NoModifier);
        }
    }
}

void SceneView::beginMove(const QPointF& at)
{
    const auto item = itemAt(at);
    if (!item.empty() && _selection->containsAncestorInclusive(item)) {
        attempt("move items", [this] { _move = std::make_unique<Move>(*_selection); });
        const auto box = _content->box(*_selection);
        const auto centre = detail::scaled(detail::sum(box.min, box.max), 0.5);
        _moveDepth = std::max(_viewpoint.seen(centre).vector[2], 1e-6);
    }
}

void SceneView::mouseMoveEvent(QMouseEvent* event)
{
    const auto by = event->position() - _last;
    const auto isAlt = event->modifiers() & Qt::AltModifier;
    const auto isShift = event->modifiers() & Qt::ShiftModifier;
    _last = event->position();
    if (event->buttons() & Qt::MiddleButton) {
        isAlt || isShift ? pan(by) : orbit(by);
    } else if (event->buttons() & Qt::LeftButton && isAlt) {
        orbit(by);
    } else if (event->buttons() & Qt::LeftButton) {
        drag(event->modifiers());
    }
}

void SceneView::drag(Qt::KeyboardModifiers modifiers)
{
    const auto by = _last - _pressed;
    if (!_move && _band.isNull()) {
        if (std::hypot(by.x(), by.y()) < kClick) {
            return;
        }
        if (modifiers == Qt::NoModifier) {
            beginMove(_pressed);
        }
    }
    if (!_move) {
        _band = QRectF(_pressed, _last).normalized();
        update();
        return;
    }
    const auto reach = 1 / _viewpoint.scale(_moveDepth, size());
    const auto moved = detail::sum(detail::scaled(_viewpoint.right(), by.x() * reach),
                                   _viewpoint.up(), -by.y() * reach);
    if (!attempt("move items", [&] { _move->to(moved); })) {
        _move.reset();
        _pressed = _last;
        return;
    }
    for (const auto& item : *_selection) {
        _content->update(item);
    }
}

void SceneView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const auto by = event->position() - _pressed;
    if (!_band.isNull()) {
        choose(itemsIn(_band), event->modifiers());
    } else if (!_move && std::hypot(by.x(), by.y()) < kClick &&
               !(event->modifiers() & Qt::AltModifier)) {
        const auto item = itemAt(event->position());
        choose(item.empty() ? std::vector<Path>() : std::vector{item}, event->modifiers());
    }
    _move.reset();
    _band = {};
    update();
}

void SceneView::wheelEvent(QWheelEvent* event)
{
    leaveToOrbit();
    _orbit->distance *= std::pow(0.85, event->angleDelta().y() / 120.0);
    look();
}

void SceneView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_F:
        frameSelection();
        break;
    case Qt::Key_A:
        frameAll();
        break;
    case Qt::Key_Escape:
        if (_move) {
            attempt("take the move back", [this] { _move->cancel(); });
            _move.reset();
        }
        _band = {};
        update();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
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
    _cell = std::pow(10, std::round(std::log10(depth / 8)));
    const auto centre =
        _camera.empty() ? _orbit->target : detail::scaled(detail::sum(box.min, box.max), 0.5);
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
    drawPicture(kSlice);
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
    const auto cell = detail::textOf(host::numberText(_cell));
    painter.drawText(corner, Qt::AlignLeft | Qt::AlignBottom,
                     tr("grid %1 %2").arg(cell, _unit).trimmed());
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
