#include "kiv/object3d.h"

#include <algorithm>
#include <limits>

#include "kiv/object3dNotification.h"
#include "kiv/subject.h"

#include "detail/dispatch.h"
#include "detail/noDestructor.h"

namespace Kiv_v4 {

namespace {

constexpr auto kInfinity = std::numeric_limits<double>::infinity();

/// The subject for the observers of the objects of all run-times.
struct AnyObject3d : Subject
{};

Subject& anyObject3d()
{
    static detail::NoDestructor<AnyObject3d> subject;
    return *subject;
}

} // namespace

BoundingBox3d::BoundingBox3d()
    : min({kInfinity, kInfinity, kInfinity}), max({-kInfinity, -kInfinity, -kInfinity})
{}

BoundingBox3d::BoundingBox3d(const TypedVectorN<double, 3>& minimum,
                             const TypedVectorN<double, 3>& maximum)
    : min(minimum), max(maximum)
{}

bool BoundingBox3d::empty() const noexcept
{
    return min.vector[0] > max.vector[0] || min.vector[1] > max.vector[1] ||
           min.vector[2] > max.vector[2];
}

void BoundingBox3d::extend(const TypedVectorN<double, 3>& point) noexcept
{
    for (std::size_t axis = 0; axis < 3; ++axis) {
        min.vector[axis] = std::min(min.vector[axis], point.vector[axis]);
        max.vector[axis] = std::max(max.vector[axis], point.vector[axis]);
    }
}

void BoundingBox3d::extend(const BoundingBox3d& other) noexcept
{
    if (!other.empty()) {
        extend(other.min);
        extend(other.max);
    }
}

bool BoundingBox3d::operator==(const BoundingBox3d& other) const noexcept
{
    return (empty() && other.empty()) || (min == other.min && max == other.max);
}

Object3d::Object3d() = default;

Object3d::~Object3d() = default;

Object3d::Ptr Object3d::object3d(const SceneItem::Ptr& item)
{
    return detail::dispatch("object3d", "src/object3d", item, &RunTimeMgr::object3dHandler,
                            [&](auto& handler) { return handler.object3d(item); });
}

bool Object3d::addObserver(const Observer::Ptr& observer)
{
    return anyObject3d().addObserver(observer);
}

bool Object3d::removeObserver(const Observer::Ptr& observer)
{
    return anyObject3d().removeObserver(observer);
}

std::size_t Object3d::nbObservers()
{
    return anyObject3d().nbObservers();
}

bool Object3d::hasObserver(const Observer::Ptr& observer)
{
    return anyObject3d().hasObserver(observer);
}

void Object3d::notify(const Notification& notification)
{
    anyObject3d().notify(notification);
}

Object3dHandler::Object3dHandler() = default;

Object3dHandler::~Object3dHandler() = default;

VisibilityChanged::VisibilityChanged(const Path& path) : _path(path) {}

VisibilityChanged::~VisibilityChanged() = default;

} // namespace Kiv_v4
