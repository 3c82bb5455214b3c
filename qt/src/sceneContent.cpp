#include "sceneContent.h"

#include <algorithm>
#include <utility>

#include "kiv/camera.h"
#include "kiv/cameraNotification.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/lightNotification.h"
#include "kiv/scene.h"
#include "kiv/transform3d.h"
#include "kiv/transform3dNotification.h"

#include "attempt.h"
#include "listening.h"

namespace Kiv_v4::qt {

namespace {

/// How long items are read at a stretch, in milliseconds.
constexpr int kReadingSlice = 10;

} // namespace

SceneView::Content::Content(std::function<void(bool)> changed)
    : _changed(std::move(changed)),
      _observer(detail::listeningTo<Notification>(
          [this](const Notification& notification) { receive(notification); })),
      _runTimes([this](RunTimeEvent event, Rtid) {
          if (event == RunTimeEvent::Leaving) {
              dropItems();
          }
      })
{
    _slice.setInterval(0);
    QObject::connect(&_slice, &QTimer::timeout, [this] { readOn(kReadingSlice); });
    _measureSlice.setInterval(0);
    QObject::connect(&_measureSlice, &QTimer::timeout, [this] { measureOn(kReadingSlice); });
    _restart.setSingleShot(true);
    QObject::connect(&_restart, &QTimer::timeout, [this] { read(); });
    _reread.setSingleShot(true);
    QObject::connect(&_reread, &QTimer::timeout, [this] { rereadMoved(); });
    Object3d::addObserver(_observer);
    if (Scene::hasInstance()) {
        Scene::instance().addObserver(_observer);
    }
}

SceneView::Content::~Content()
{
    unwatch();
    Object3d::removeObserver(_observer);
    if (Scene::hasInstance()) {
        Scene::instance().removeObserver(_observer);
    }
}

const std::vector<detail::Shape>& SceneView::Content::shapes() const noexcept
{
    return _shapes.empty() && _reading ? _reading->shapes() : _shapes;
}

std::size_t SceneView::Content::nbItems() const noexcept
{
    return _reading ? _reading->nbItems() : _nbItems;
}

std::optional<double> SceneView::Content::unit() const noexcept
{
    return _reading && _shapes.empty() ? _reading->unit() : _unit;
}

const BoundingBox3d& SceneView::Content::box() const
{
    const auto& all = shapes();
    for (; _nbExtended < all.size(); ++_nbExtended) {
        _extent.extend(all[_nbExtended]);
    }
    return _extent.box();
}

BoundingBox3d SceneView::Content::box(const Selection& selection) const
{
    detail::Extent extent;
    for (const auto& shape : shapes()) {
        if (selection.containsAncestorInclusive(shape.path)) {
            extent.extend(shape);
        }
    }
    return extent.box();
}

void SceneView::Content::measure(const Selection& selection,
                                 std::function<void(const BoundingBox3d&)> measured)
{
    _measuring = {selection, std::move(measured)};
    _measureSlice.start();
    measureOn(kReadingSlice);
}

void SceneView::Content::endMeasuring()
{
    _measureSlice.stop();
    _measuring.reset();
}

void SceneView::Content::measureOn(int milliseconds)
{
    auto& [selection, measured, extent, next] = *_measuring;
    const auto& all = shapes();
    const auto isDue = detail::dueAfter(milliseconds);
    for (; next < all.size() && !isDue(); ++next) {
        if (selection.containsAncestorInclusive(all[next].path)) {
            extent.extend(all[next]);
        }
    }
    if (next >= all.size()) {
        const auto done = std::move(*_measuring);
        endMeasuring();
        done.measured(done.extent.box());
    }
}

void SceneView::Content::read()
{
    _restart.stop();
    _reading = std::make_unique<detail::SceneReading>();
    _slice.start();
    readOn(kReadingSlice);
}

void SceneView::Content::finish()
{
    if (_restart.isActive()) {
        read();
    }
    if (_reading) {
        readOn(0);
    }
    if (_measuring) {
        measureOn(0);
    }
}

void SceneView::Content::stop()
{
    if (_reading) {
        complete();
    }
}

void SceneView::Content::readOn(int milliseconds)
{
    if (!_reading->readOn(milliseconds)) {
        complete();
    } else if (_shapes.empty()) {
        _changed(false);
    }
}

void SceneView::Content::complete()
{
    _slice.stop();
    const auto done = std::move(_reading);
    done->measure();
    _shapes = std::move(done->shapes());
    _nbItems = done->nbItems();
    _unit = done->unit();
    setExtent(done->extent(), _shapes.size());
    watch(done->placed());
    _changed(true);
}

void SceneView::Content::update(const SceneItem::Ptr& item)
{
    _moved.append(item);
    _reread.start(0);
}

void SceneView::Content::rereadMoved()
{
    auto isWhole = true;
    for (auto& shape : _shapes) {
        if (_moved.containsAncestorInclusive(shape.path)) {
            isWhole =
                detail::attempt("draw an item", false, [&] { return detail::reread(shape); }) &&
                isWhole;
        }
    }
    _moved.clear();
    setExtent({}, 0);
    if (!isWhole) {
        _restart.start(0);
    }
    _changed(true);
}

/// Whoever measures begins anew: there are other shapes, or they are elsewhere.
void SceneView::Content::setExtent(const detail::Extent& extent, std::size_t nbShapes)
{
    _extent = extent;
    _nbExtended = nbShapes;
    if (_measuring) {
        _measuring->extent = {};
        _measuring->next = 0;
    }
}

void SceneView::Content::watch(const std::vector<SceneItem::Ptr>& items)
{
    unwatch();
    _watched = items;
    for (const auto& item : _watched) {
        Transform3d::addObserver(item, _observer);
    }
    for (const auto& shape : _shapes) {
        if (shape.kind != detail::Shape::Box && _watched.size() < detail::SceneReading::kWatched) {
            const auto item = detail::attempt("follow an item", SceneItem::Ptr(),
                                              [&] { return Hierarchy::createItem(shape.path); });
            Camera::addObserver(item, _observer);
            Light::addObserver(item, _observer);
        }
    }
}

void SceneView::Content::unwatch()
{
    for (const auto& item : std::exchange(_watched, {})) {
        Transform3d::removeObserver(item, _observer);
        Camera::removeObserver(item, _observer);
        Light::removeObserver(item, _observer);
    }
}

void SceneView::Content::dropItems()
{
    _slice.stop();
    _reading.reset();
    _shapes.clear();
    _moved.clear();
    unwatch();
    setExtent({}, 0);
    _restart.start(0);
}

void SceneView::Content::receive(const Notification& notification)
{
    if (const auto* moved = dynamic_cast<const Transform3dChanged*>(&notification)) {
        update(moved->item());
    } else if (const auto* camera = dynamic_cast<const CameraChanged*>(&notification)) {
        update(camera->item());
    } else if (const auto* light = dynamic_cast<const LightChanged*>(&notification)) {
        update(light->item());
    } else {
        _restart.start(0);
    }
}

} // namespace Kiv_v4::qt
