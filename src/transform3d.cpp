#include "kiv/transform3d.h"

#include <stdexcept>

#include "kiv/hierarchy.h"
#include "kiv/transform3dHandler.h"
#include "kiv/transform3dNotification.h"

#include "detail/dispatch.h"
#include "detail/executeIfAny.h"
#include "detail/itemObserverRegistry.h"

namespace Kiv_v4 {

namespace {

constexpr auto kFile = "src/transform3d";

using ObservedItems = detail::ItemObserverRegistry<Transform3dChanged>;

/// `matrix`, which leads to the space of the path's last segment, continued to world space.
Matrix4d toWorld(const Matrix4d& matrix, const Path& path)
{
    if (path.nbSegments() < 2) {
        return matrix;
    }
    const auto gateway = path.popSegment();
    const auto outer = Transform3dRead::transform3dRead(Hierarchy::createItem(gateway));
    if (!outer) {
        throw std::runtime_error("no transform at the gateway '" + gateway.string() + "'");
    }
    return matrix * outer->inclusiveMatrix();
}

} // namespace

EditTransform3dHint::~EditTransform3dHint() = default;

Transform3dRead::Transform3dRead() = default;

Transform3dRead::~Transform3dRead() = default;

Transform3dRead::Ptr Transform3dRead::transform3dRead(SceneItem::Ptr const& item)
{
    return detail::dispatch("transform3dRead", kFile, item, &RunTimeMgr::transform3dHandler,
                            [&](auto& handler) { return handler.transform3dRead(item); });
}

Matrix4d Transform3dRead::inclusiveMatrix() const
{
    return detail::logAndRethrow("inclusiveMatrix", kFile,
                                 [&] { return toWorld(segmentInclusiveMatrix(), path()); });
}

Matrix4d Transform3dRead::exclusiveMatrix() const
{
    return detail::logAndRethrow("exclusiveMatrix", kFile,
                                 [&] { return toWorld(segmentExclusiveMatrix(), path()); });
}

Transform3d::Ptr Transform3d::transform3d(SceneItem::Ptr const& item)
{
    return detail::dispatch("transform3d", kFile, item, &RunTimeMgr::transform3dHandler,
                            [&](auto& handler) { return handler.transform3d(item); });
}

Transform3d::Ptr Transform3d::editTransform3d(SceneItem::Ptr const& item,
                                              EditTransform3dHint const& hint)
{
    return detail::dispatch("editTransform3d", kFile, item, &RunTimeMgr::transform3dHandler,
                            [&](auto& handler) { return handler.editTransform3d(item, hint); });
}

Transform3d::~Transform3d() = default;

void Transform3d::translate(double x, double y, double z)
{
    detail::executeIfAny(translateCmd(x, y, z));
}

void Transform3d::rotate(double x, double y, double z)
{
    detail::executeIfAny(rotateCmd(x, y, z));
}

void Transform3d::scale(double x, double y, double z)
{
    detail::executeIfAny(scaleCmd(x, y, z));
}

void Transform3d::rotatePivot(double x, double y, double z)
{
    detail::executeIfAny(rotatePivotCmd(x, y, z));
}

void Transform3d::scalePivot(double x, double y, double z)
{
    detail::executeIfAny(scalePivotCmd(x, y, z));
}

UndoableCommand::Ptr Transform3d::translateRotatePivotCmd(double, double, double)
{
    return nullptr;
}

void Transform3d::translateRotatePivot(double x, double y, double z)
{
    detail::executeIfAny(translateRotatePivotCmd(x, y, z));
}

Vector3d Transform3d::rotatePivotTranslation() const
{
    return {};
}

UndoableCommand::Ptr Transform3d::translateScalePivotCmd(double, double, double)
{
    return nullptr;
}

void Transform3d::translateScalePivot(double x, double y, double z)
{
    detail::executeIfAny(translateScalePivotCmd(x, y, z));
}

Vector3d Transform3d::scalePivotTranslation() const
{
    return {};
}

UndoableCommand::Ptr Transform3d::rotateAxisCmd(double, double, double)
{
    return nullptr;
}

void Transform3d::rotateAxis(double x, double y, double z)
{
    detail::executeIfAny(rotateAxisCmd(x, y, z));
}

Vector3d Transform3d::rotateAxis() const
{
    return {};
}

UndoableCommand::Ptr Transform3d::shearCmd(double, double, double)
{
    return nullptr;
}

void Transform3d::shear(double x, double y, double z)
{
    detail::executeIfAny(shearCmd(x, y, z));
}

Vector3d Transform3d::shear() const
{
    return {};
}

void Transform3d::setMatrix(Matrix4d const& matrix)
{
    detail::executeIfAny(setMatrixCmd(matrix));
}

bool Transform3d::addObserver(SceneItem::Ptr const& item, Observer::Ptr const& observer)
{
    return ObservedItems::instance().add(item, observer);
}

bool Transform3d::removeObserver(SceneItem::Ptr const& item, Observer::Ptr const& observer)
{
    return ObservedItems::instance().remove(item, observer);
}

bool Transform3d::removeObserver(Path const& path, Observer::Ptr const& observer)
{
    return ObservedItems::instance().remove(path, observer);
}

std::size_t Transform3d::nbObservers(SceneItem::Ptr const& item)
{
    return ObservedItems::instance().count(item);
}

bool Transform3d::hasObserver(SceneItem::Ptr const& item, Observer::Ptr const& observer)
{
    return ObservedItems::instance().has(item, observer);
}

bool Transform3d::hasObservers(Path const& path)
{
    return ObservedItems::instance().hasAny(path);
}

bool Transform3d::hasObservers(Rtid runTimeId)
{
    return ObservedItems::instance().hasAny(runTimeId);
}

void Transform3d::notify(Path const& path)
{
    ObservedItems::instance().notify(path);
}

Transform3dHandler::Transform3dHandler() = default;

Transform3dHandler::~Transform3dHandler() = default;

Transform3dRead::Ptr Transform3dHandler::transform3dRead(SceneItem::Ptr const& item) const
{
    return transform3d(item);
}

Transform3d::Ptr Transform3dHandler::editTransform3d(SceneItem::Ptr const& item,
                                                     EditTransform3dHint const&) const
{
    return transform3d(item);
}

Transform3dChanged::Transform3dChanged(const SceneItem::Ptr& item) : _item(item) {}

Transform3dChanged::~Transform3dChanged() = default;

} // namespace Kiv_v4
