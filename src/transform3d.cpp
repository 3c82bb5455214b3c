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

Transform3dRead::Ptr Transform3dRead::transform3dRead(const SceneItem::Ptr& item)
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

Transform3d::Ptr Transform3d::transform3d(const SceneItem::Ptr& item)
{
    return detail::dispatch("transform3d", kFile, item, &RunTimeMgr::transform3dHandler,
                            [&](auto& handler) { return handler.transform3d(item); });
}

Transform3d::Ptr Transform3d::editTransform3d(const SceneItem::Ptr& item,
                                              const EditTransform3dHint& hint)
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

void Transform3d::setMatrix(const Matrix4d& matrix)
{
    detail::executeIfAny(setMatrixCmd(matrix));
}

bool Transform3d::addObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().add(item, observer);
}

bool Transform3d::removeObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().remove(item, observer);
}

bool Transform3d::removeObserver(const Path& path, const Observer::Ptr& observer)
{
    return ObservedItems::instance().remove(path, observer);
}

std::size_t Transform3d::nbObservers(const SceneItem::Ptr& item)
{
    return ObservedItems::instance().count(item);
}

bool Transform3d::hasObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().has(item, observer);
}

bool Transform3d::hasObservers(const Path& path)
{
    return ObservedItems::instance().hasAny(path);
}

bool Transform3d::hasObservers(Rtid runTimeId)
{
    return ObservedItems::instance().hasAny(runTimeId);
}

void Transform3d::notify(const Path& path)
{
    ObservedItems::instance().notify(path);
}

Transform3dHandler::Transform3dHandler() = default;

Transform3dHandler::~Transform3dHandler() = default;

Transform3dRead::Ptr Transform3dHandler::transform3dRead(const SceneItem::Ptr& item) const
{
    return transform3d(item);
}

Transform3d::Ptr Transform3dHandler::editTransform3d(const SceneItem::Ptr& item,
                                                     const EditTransform3dHint&) const
{
    return transform3d(item);
}

Transform3dChanged::Transform3dChanged(const SceneItem::Ptr& item) : _item(item) {}

Transform3dChanged::~Transform3dChanged() = default;

} // namespace Kiv_v4
