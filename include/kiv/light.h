#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "kiv/export.h"
#include "kiv/mathTypes.h"
#include "kiv/observer.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"
#include "kiv/setValueCommands.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// The light properties of one scene item, supplied by its run-time. A light with a direction
/// shines along -z of the item's space. Properties that only some kinds of light have are in
/// interfaces of their own.
///
/// Each property has a command maker, which changes nothing and returns null if the run-time
/// refuses, a setter, which executes that command and drops it, or does nothing if it is null, and
/// a getter.
///
/// Run-times announce changes with `notify`. The library finds the observers of an item by its path
/// and holds them by weak reference; for a null item these functions return false or 0. It keeps
/// the item that came with the first observer, for the notifications, until the last observer is
/// removed or the run-time's registration ends: observers must be removed, with an item of the path
/// that they were added under.
class KIV_EXPORT Light
{
public:
    using Ptr = std::shared_ptr<Light>;

    /// The kind of light. A light of kind `Other` has no interface of its own.
    enum Type : std::uint32_t {
        Other = 0,
        Directional = 1,
        Point = 2, ///< Has sphere properties.
        Spot = 3,  ///< Has sphere and cone properties.
        Area = 4
    };

    /// The sphere of a point or spot light.
    struct SphereProps
    {
        float radius = 0;     ///< Of the sphere that shines, in scene units.
        bool asPoint = false; ///< Shines from the sphere's centre whatever the radius.

        /// Same properties, exactly.
        bool operator==(const SphereProps& other) const
        {
            return radius == other.radius && asPoint == other.asPoint;
        }
        bool operator!=(const SphereProps& other) const { return !(*this == other); }
    };

    /// The cone of a spot light.
    struct ConeProps
    {
        float coneAngle = 0;     ///< The full angle of the cone of full intensity, in degrees.
        float penumbraAngle = 0; ///< From the cone's edge to where the light ends, in degrees.
        float dropoff = 0;       ///< The exponent of the fading from the axis to the edge.

        /// Same properties, exactly.
        bool operator==(const ConeProps& other) const
        {
            return coneAngle == other.coneAngle && penumbraAngle == other.penumbraAngle &&
                   dropoff == other.dropoff;
        }
        bool operator!=(const ConeProps& other) const { return !(*this == other); }
    };

    class DirectionalInterface;
    class SphereInterface;
    class ConeInterface;
    class AreaInterface;

    /// The light at `item`; null for a null item, an empty path, a run-time without this interface,
    /// and an item that is not a light. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr light(const SceneItem::Ptr& item);

    Light();
    Light(const Light&) = delete;
    Light& operator=(const Light&) = delete;
    virtual ~Light();

    /// The path of the item.
    [[nodiscard]] virtual const Path& path() const = 0;

    /// The item.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// The kind of light. It determines which of the interfaces below the light has.
    [[nodiscard]] virtual Type type() const = 0;

    /// The brightness factor on the colour; no unit of its own.
    [[nodiscard]] virtual UndoableCommand::Ptr intensityCmd(float value) = 0;
    virtual void intensity(float value);
    [[nodiscard]] virtual float intensity() const = 0;

    /// Red, green and blue, linear, usually from 0 to 1.
    [[nodiscard]] virtual UndoableCommand::Ptr colorCmd(float r, float g, float b) = 0;
    virtual void color(float r, float g, float b);
    [[nodiscard]] virtual Color3f color() const = 0;

    /// Whether the light casts shadows.
    [[nodiscard]] virtual UndoableCommand::Ptr shadowEnableCmd(bool value) = 0;
    virtual void shadowEnable(bool value);
    [[nodiscard]] virtual bool shadowEnable() const = 0;

    /// The colour of the shadows: red, green and blue, linear.
    [[nodiscard]] virtual UndoableCommand::Ptr shadowColorCmd(float r, float g, float b) = 0;
    virtual void shadowColor(float r, float g, float b);
    [[nodiscard]] virtual Color3f shadowColor() const = 0;

    /// The factor on the light's diffuse contribution.
    [[nodiscard]] virtual UndoableCommand::Ptr diffuseCmd(float value) = 0;
    virtual void diffuse(float value);
    [[nodiscard]] virtual float diffuse() const = 0;

    /// The factor on the light's specular contribution.
    [[nodiscard]] virtual UndoableCommand::Ptr specularCmd(float value) = 0;
    virtual void specular(float value);
    [[nodiscard]] virtual float specular() const = 0;

    /// The interface for a kind; null for a light of another kind.
    [[nodiscard]] std::shared_ptr<DirectionalInterface> directionalInterface();
    [[nodiscard]] std::shared_ptr<SphereInterface> sphereInterface();
    [[nodiscard]] std::shared_ptr<ConeInterface> coneInterface();
    [[nodiscard]] std::shared_ptr<AreaInterface> areaInterface();

    /// Returns false if `observer` already observes the item.
    static bool addObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    /// Returns false if `observer` does not observe the item.
    static bool removeObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    /// The number of living observers of the item.
    [[nodiscard]] static std::size_t nbObservers(const SceneItem::Ptr& item);
    /// Whether `observer` observes the item.
    [[nodiscard]] static bool hasObserver(const SceneItem::Ptr& item,
                                          const Observer::Ptr& observer);
    /// Whether the item at `path` has observers. Observers that died without being removed count.
    [[nodiscard]] static bool hasObservers(const Path& path);
    /// Whether an item of the run-time was ever observed; stays true after the last observer was
    /// removed.
    [[nodiscard]] static bool hasObservers(Rtid runTimeId);

    /// Notifies the observers of the item at `path` with a `LightChanged` that carries the item
    /// that the first of them was added with.
    static void notify(const Path& path);

protected:
    /// Called only for a light of the kind.
    [[nodiscard]] virtual std::shared_ptr<DirectionalInterface> directionalInterfaceImpl() = 0;
    [[nodiscard]] virtual std::shared_ptr<SphereInterface> sphereInterfaceImpl() = 0;
    [[nodiscard]] virtual std::shared_ptr<ConeInterface> coneInterfaceImpl() = 0;
    [[nodiscard]] virtual std::shared_ptr<AreaInterface> areaInterfaceImpl() = 0;
};

/// The properties of a directional light.
class KIV_EXPORT Light::DirectionalInterface
{
public:
    using Ptr = std::shared_ptr<DirectionalInterface>;

    DirectionalInterface();
    DirectionalInterface(const DirectionalInterface&) = delete;
    DirectionalInterface& operator=(const DirectionalInterface&) = delete;
    virtual ~DirectionalInterface();

    /// The angular size of the source, in degrees; 0 for parallel rays.
    [[nodiscard]] virtual UndoableCommand::Ptr angleCmd(float value) = 0;
    virtual void angle(float value);
    [[nodiscard]] virtual float angle() const = 0;
};

/// The properties of a light that shines from a sphere: a point light or a spot light.
class KIV_EXPORT Light::SphereInterface
{
public:
    using Ptr = std::shared_ptr<SphereInterface>;

    SphereInterface();
    SphereInterface(const SphereInterface&) = delete;
    SphereInterface& operator=(const SphereInterface&) = delete;
    virtual ~SphereInterface();

    /// As the fields of `SphereProps`.
    [[nodiscard]] virtual UndoableCommand::Ptr spherePropsCmd(float radius, bool asPoint) = 0;
    virtual void sphereProps(float radius, bool asPoint);
    [[nodiscard]] virtual SphereProps sphereProps() const = 0;
};

/// The properties of the cone of a spot light.
class KIV_EXPORT Light::ConeInterface
{
public:
    using Ptr = std::shared_ptr<ConeInterface>;

    ConeInterface();
    ConeInterface(const ConeInterface&) = delete;
    ConeInterface& operator=(const ConeInterface&) = delete;
    virtual ~ConeInterface();

    /// As the fields of `ConeProps`.
    [[nodiscard]] virtual UndoableCommand::Ptr conePropsCmd(float coneAngle, float penumbraAngle,
                                                            float dropoff) = 0;
    virtual void coneProps(float coneAngle, float penumbraAngle, float dropoff);
    [[nodiscard]] virtual ConeProps coneProps() const = 0;
};

/// The properties of an area light.
class KIV_EXPORT Light::AreaInterface
{
public:
    using Ptr = std::shared_ptr<AreaInterface>;

    AreaInterface();
    AreaInterface(const AreaInterface&) = delete;
    AreaInterface& operator=(const AreaInterface&) = delete;
    virtual ~AreaInterface();

    /// Whether the light's power is independent of the size of the area.
    [[nodiscard]] virtual UndoableCommand::Ptr normalizeCmd(bool value) = 0;
    virtual void normalize(bool value);
    [[nodiscard]] virtual bool normalize() const = 0;
};

extern template class SetValueUndoableCommand<const Light::ConeProps&>;
extern template class SetValueUndoableCommand<const Light::SphereProps&>;

/// Sets the cone or the sphere of a light.
using SetConePropsUndoableCommand = SetValueUndoableCommand<const Light::ConeProps&>;
using SetSpherePropsUndoableCommand = SetValueUndoableCommand<const Light::SphereProps&>;

} // namespace Kiv_v4
