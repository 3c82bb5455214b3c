#pragma once

#include <cmath>
#include <optional>

#include "kiv/camera.h"
#include "kiv/light.h"
#include "kiv/mathTypes.h"
#include "kiv/setValueCommands.h"

namespace Kiv_v4::kit {

/// Returns the value of these numbers; `std::nullopt` if one of them is NaN or infinite.
template <class Value, class... Numbers>
[[nodiscard]] std::optional<Value> finiteValue(Numbers... numbers)
{
    return (std::isfinite(numbers) && ...) ? std::optional<Value>(Value{{numbers...}})
                                           : std::nullopt;
}

/// How clients set values of a type: `Command`, the base class of the commands, and
/// `from(arguments...)`, which returns the value for the arguments of its `set`, or `std::nullopt`
/// if they are refused, as NaN and infinity are.
template <class Value>
struct Setting;

/// A flag.
template <>
struct Setting<bool>
{
    using Command = SetBoolUndoableCommand; ///< The base class of the commands.
    /// Takes both values.
    [[nodiscard]] static std::optional<bool> from(bool value) { return value; }
};

/// A number.
template <>
struct Setting<float>
{
    using Command = SetFloatUndoableCommand; ///< The base class of the commands.
    /// Takes finite numbers.
    [[nodiscard]] static std::optional<float> from(float value)
    {
        return std::isfinite(value) ? std::optional<float>(value) : std::nullopt;
    }
};

/// Three numbers.
template <>
struct Setting<Vector3d>
{
    using Command = SetDouble3UndoableCommand; ///< The base class of the commands.
    /// Takes finite numbers.
    [[nodiscard]] static std::optional<Vector3d> from(double x, double y, double z)
    {
        return finiteValue<Vector3d>(x, y, z);
    }
};

/// A colour.
template <>
struct Setting<Color3f>
{
    using Command = SetColor3fUndoableCommand; ///< The base class of the commands.
    /// Takes finite components, also negative ones and those above 1.
    [[nodiscard]] static std::optional<Color3f> from(const Color3f& color)
    {
        return finiteValue<Color3f>(color.color[0], color.color[1], color.color[2]);
    }
};

/// The projection of a camera.
template <>
struct Setting<Camera::Projection>
{
    using Command = SetIntUndoableCommand; ///< The base class of the commands.
    /// Takes the numbers of the enumeration.
    [[nodiscard]] static std::optional<Camera::Projection> from(int value)
    {
        return value == Camera::Perspective || value == Camera::Orthographic
                   ? std::optional<Camera::Projection>(static_cast<Camera::Projection>(value))
                   : std::nullopt;
    }
};

/// The sphere of a light.
template <>
struct Setting<Light::SphereProps>
{
    using Command = SetSpherePropsUndoableCommand; ///< The base class of the commands.
    /// Takes a finite radius.
    [[nodiscard]] static std::optional<Light::SphereProps> from(const Light::SphereProps& props)
    {
        return std::isfinite(props.radius) ? std::optional<Light::SphereProps>(props)
                                           : std::nullopt;
    }
};

/// The cone of a light.
template <>
struct Setting<Light::ConeProps>
{
    using Command = SetConePropsUndoableCommand; ///< The base class of the commands.
    /// Takes finite angles and a finite exponent.
    [[nodiscard]] static std::optional<Light::ConeProps> from(const Light::ConeProps& props)
    {
        const auto taken = std::isfinite(props.coneAngle) && std::isfinite(props.penumbraAngle) &&
                           std::isfinite(props.dropoff);
        return taken ? std::optional<Light::ConeProps>(props) : std::nullopt;
    }
};

} // namespace Kiv_v4::kit
