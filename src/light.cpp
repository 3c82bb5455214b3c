#include "kiv/light.h"

#include "kiv/lightHandler.h"
#include "kiv/lightNotification.h"

#include "detail/dispatch.h"
#include "detail/executeIfAny.h"
#include "detail/itemObserverRegistry.h"
#include "detail/setValueCommand.h"

namespace Kiv_v4 {

namespace {
using ObservedItems = detail::ItemObserverRegistry<LightChanged>;
} // namespace

Light::Light() = default;

Light::~Light() = default;

Light::Ptr Light::light(const SceneItem::Ptr& item)
{
    return detail::dispatch("light", "src/light", item, &RunTimeMgr::lightHandler,
                            [&](auto& handler) { return handler.light(item); });
}

std::shared_ptr<Light::DirectionalInterface> Light::directionalInterface()
{
    return type() == Directional ? directionalInterfaceImpl() : nullptr;
}

std::shared_ptr<Light::SphereInterface> Light::sphereInterface()
{
    const auto kind = type();
    return kind == Point || kind == Spot ? sphereInterfaceImpl() : nullptr;
}

std::shared_ptr<Light::ConeInterface> Light::coneInterface()
{
    return type() == Spot ? coneInterfaceImpl() : nullptr;
}

std::shared_ptr<Light::AreaInterface> Light::areaInterface()
{
    return type() == Area ? areaInterfaceImpl() : nullptr;
}

void Light::intensity(float value)
{
    detail::executeIfAny(intensityCmd(value));
}

void Light::color(float r, float g, float b)
{
    detail::executeIfAny(colorCmd(r, g, b));
}

void Light::shadowEnable(bool value)
{
    detail::executeIfAny(shadowEnableCmd(value));
}

void Light::shadowColor(float r, float g, float b)
{
    detail::executeIfAny(shadowColorCmd(r, g, b));
}

void Light::diffuse(float value)
{
    detail::executeIfAny(diffuseCmd(value));
}

void Light::specular(float value)
{
    detail::executeIfAny(specularCmd(value));
}

Light::DirectionalInterface::DirectionalInterface() = default;

Light::DirectionalInterface::~DirectionalInterface() = default;

void Light::DirectionalInterface::angle(float value)
{
    detail::executeIfAny(angleCmd(value));
}

Light::SphereInterface::SphereInterface() = default;

Light::SphereInterface::~SphereInterface() = default;

void Light::SphereInterface::sphereProps(float radius, bool asPoint)
{
    detail::executeIfAny(spherePropsCmd(radius, asPoint));
}

Light::ConeInterface::ConeInterface() = default;

Light::ConeInterface::~ConeInterface() = default;

void Light::ConeInterface::coneProps(float coneAngle, float penumbraAngle, float dropoff)
{
    detail::executeIfAny(conePropsCmd(coneAngle, penumbraAngle, dropoff));
}

Light::AreaInterface::AreaInterface() = default;

Light::AreaInterface::~AreaInterface() = default;

void Light::AreaInterface::normalize(bool value)
{
    detail::executeIfAny(normalizeCmd(value));
}

bool Light::addObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().add(item, observer);
}

bool Light::removeObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().remove(item, observer);
}

std::size_t Light::nbObservers(const SceneItem::Ptr& item)
{
    return ObservedItems::instance().count(item);
}

bool Light::hasObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().has(item, observer);
}

bool Light::hasObservers(const Path& path)
{
    return ObservedItems::instance().hasAny(path);
}

bool Light::hasObservers(Rtid runTimeId)
{
    return ObservedItems::instance().hasAny(runTimeId);
}

void Light::notify(const Path& path)
{
    ObservedItems::instance().notify(path);
}

LightChanged::LightChanged(const SceneItem::Ptr& item) : _item(item) {}

LightChanged::~LightChanged() = default;

template class SetValueUndoableCommand<const Light::ConeProps&>;
template class SetValueUndoableCommand<const Light::SphereProps&>;

} // namespace Kiv_v4
