#include "schematic.h"

#include <QElapsedTimer>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "kiv/attributeVariant.h"
#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/hierarchy.h"
#include "kiv/host/matrix.h"
#include "kiv/host/outline.h"
#include "kiv/transform3dRead.h"

#include "attempt.h"
#include "vectors.h"

namespace Kiv_v4::qt::detail {

namespace {

constexpr auto kNone = std::numeric_limits<std::size_t>::max();

/// The attribute in which the root of a scene file tells the length of a scene unit in metres.
constexpr const char* kUnitFact = "file.sceneUnit";

Matrix4d identity()
{
    return {{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}};
}

bool isFinite(const Matrix4d& matrix)
{
    for (const auto& row : matrix.matrix) {
        for (const auto element : row) {
            if (!std::isfinite(element)) {
                return false;
            }
        }
    }
    return true;
}

/// Calls `visit` with the corners, where the matrix takes them.
template <class Visit>
void eachCorner(const BoundingBox3d& box, const Matrix4d& matrix, Visit visit)
{
    const std::array ends{box.min.vector, box.max.vector};
    for (std::size_t i = 0; i < 8; ++i) {
        visit(image({{ends[i & 1][0], ends[i >> 1 & 1][1], ends[i >> 2][2]}}, matrix));
    }
}

bool describeCamera(Shape& shape, const SceneItem::Ptr& item)
{
    const auto camera = Kiv_v4::Camera::camera(item);
    if (!camera) {
        return false;
    }
    shape.kind = Shape::Camera;
    shape.isOrthographic = camera->projection() == Kiv_v4::Camera::Orthographic;
    const auto focal = shape.isOrthographic ? 1.0 : double(camera->focalLength());
    shape.film = {camera->horizontalAperture() / 2 / focal, camera->verticalAperture() / 2 / focal};
    return true;
}

bool describeLight(Shape& shape, const SceneItem::Ptr& item)
{
    const auto light = Kiv_v4::Light::light(item);
    if (!light) {
        return false;
    }
    shape.kind = Shape::Light;
    shape.light = light->type();
    shape.color = light->color();
    if (const auto cone = light->coneInterface()) {
        constexpr double kHalfDegree = 3.14159265358979323846 / 360;
        shape.film.setX(std::tan(std::min(cone->coneProps().coneAngle, 170.F) * kHalfDegree));
    }
    return true;
}

bool describeBox(Shape& shape, const SceneItem::Ptr& item)
{
    const auto object = Object3d::object3d(item);
    shape.kind = Shape::Box;
    shape.box = object ? object->boundingBox() : BoundingBox3d();
    return !shape.box.empty();
}

} // namespace

void Extent::extend(const Shape& shape)
{
    if (!shape.isOuter) {
        (shape.kind == Shape::Box ? boxes : points).extend(worldBox(shape));
    }
}

std::function<bool()> dueAfter(int milliseconds)
{
    constexpr auto kStride = 64;
    QElapsedTimer clock;
    clock.start();
    return [clock, milliseconds, count = 0]() mutable {
        return milliseconds > 0 && ++count % kStride == 0 && clock.elapsed() >= milliseconds;
    };
}

SceneReading::SceneReading() : _tops(host::topItems()) {}

bool SceneReading::readOn(int milliseconds)
{
    const auto isDue = dueAfter(milliseconds);
    while (!_isRead && !isDue()) {
        _isRead = !next();
        if (_isRead) {
            tellOuter();
        } else {
            attempt("read an item in space", [this] { read(); });
        }
    }
    return !_isRead || measureOn(isDue);
}

bool SceneReading::measureOn(const std::function<bool()>& isDue)
{
    for (; _nbMeasured < _shapes.size() && !isDue(); ++_nbMeasured) {
        _extent.extend(_shapes[_nbMeasured]);
    }
    return _nbMeasured < _shapes.size();
}

void SceneReading::measure()
{
    if (!_isRead) {
        tellOuter();
    }
    measureOn(dueAfter(0));
}

bool SceneReading::next()
{
    auto isThere = false;
    while (!isThere && (_walk || !_tops.empty())) {
        if (!_walk) {
            _walk = std::make_unique<SubtreeWalk>(_tops.front());
            _tops.pop_front();
        }
        if (!attempt("walk the scene", [&] { isThere = _walk->next(); }) || !isThere) {
            _walk.reset();
        }
    }
    return isThere;
}

void SceneReading::read()
{
    ++_nbItems;
    const auto depth = _walk->depth();
    _levels.resize(depth);
    const Level above = depth ? _levels.back() : Level{identity(), _walk->runTimeId(), true, kNone};
    auto level = above;
    _levels.push_back(level);
    const auto item = _walk->item();
    const auto isPlaceless = above.runTimeId != _walk->runTimeId() && !above.hasTransform;
    if (!item || isPlaceless) {
        _walk->skipSubtree();
        return;
    }
    if (depth == 0 || above.runTimeId != _walk->runTimeId()) {
        addUnit(item);
    }
    const auto object = Object3d::object3d(item);
    const auto transform = Transform3dRead::transform3dRead(item);
    if (object && !object->visibility()) {
        addInner(above, transform ? transform->matrix() * above.world : above.world,
                 object->boundingBox());
        _walk->skipSubtree();
        return;
    }
    level.runTimeId = item->runTimeId();
    level.hasTransform = transform != nullptr;
    if (transform) {
        level.world = transform->matrix() * above.world;
        if (_placed.size() < kWatched) {
            _placed.push_back(item);
        }
    }
    if (isFinite(level.world)) {
        addShapes(item, above, level);
    }
    _levels.back() = level;
}

void SceneReading::addUnit(const SceneItem::Ptr& root)
{
    const auto attributes = Attributes::attributes(root);
    const auto attribute = attributes && attributes->hasAttribute(kUnitFact)
                               ? attributes->attribute(kUnitFact)
                               : nullptr;
    const auto told = attribute ? value(*attribute) : AttributeVariant();
    const auto* metres = std::get_if<double>(&told);
    if (metres && *metres > 0 && std::isfinite(*metres) &&
        std::find(_units.begin(), _units.end(), *metres) == _units.end()) {
        _units.push_back(*metres);
    }
}

std::optional<double> SceneReading::unit() const noexcept
{
    return _units.size() == 1 ? std::optional(_units.front()) : std::nullopt;
}

void SceneReading::addShapes(const SceneItem::Ptr& item, const Level& above, Level& level)
{
    Shape shape;
    shape.path = item->path();
    shape.world = level.world;
    if (describeCamera(shape, item) || describeLight(shape, item)) {
        _shapes.push_back(shape);
    } else if (describeBox(shape, item)) {
        addInner(above, shape.world, shape.box);
        level.box = _shapes.size();
        _shapes.push_back(shape);
    }
}

void SceneReading::addInner(const Level& above, const Matrix4d& world, const BoundingBox3d& box)
{
    if (above.box == kNone || box.empty()) {
        return;
    }
    auto& outer = _shapes[above.box];
    const auto [found, isNew] = _inner.try_emplace(above.box);
    auto& inner = found->second;
    if (isNew) {
        inner.fromWorld = host::inverse(outer.world);
        outer.isOuter = true; // for now
    }
    if (inner.fromWorld) {
        eachCorner(box, world * *inner.fromWorld,
                   [&](const Vector3d& corner) { inner.box.extend(corner); });
    }
}

/// An item's box holds all that is under it. Whether there is anything of its own in it, its size
/// tells.
void SceneReading::tellOuter()
{
    for (const auto& [at, inner] : _inner) {
        auto grown = inner.box;
        grown.extend(_shapes[at].box);
        const auto more =
            length(sum(grown.max, grown.min, -1)) - length(sum(inner.box.max, inner.box.min, -1));
        _shapes[at].isOuter =
            !inner.fromWorld || more <= 1e-3 * length(sum(grown.max, grown.min, -1));
    }
}

bool reread(Shape& shape)
{
    const auto item = Hierarchy::createItem(shape.path);
    const auto world = item ? host::worldMatrix(item) : std::nullopt;
    if (!world || !isFinite(*world)) {
        return false;
    }
    shape.world = *world;
    return describeCamera(shape, item) || describeLight(shape, item) || describeBox(shape, item);
}

BoundingBox3d worldBox(const Shape& shape)
{
    BoundingBox3d box;
    if (shape.kind != Shape::Box) {
        box.extend(axis(shape.world, 3));
        return box;
    }
    eachCorner(shape.box, shape.world, [&](const Vector3d& corner) { box.extend(corner); });
    return box;
}

} // namespace Kiv_v4::qt::detail
