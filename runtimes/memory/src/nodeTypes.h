#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "kiv/light.h"

namespace Kiv_v4::memory {

// Types that code uses by name.
inline constexpr auto kGroup = "group";
inline constexpr auto kCamera = "camera";
inline constexpr auto kLight = "light"; ///< The common ancestor type of all kinds of lights.
inline constexpr auto kMaterial = "material";

/// An attribute that new nodes of a type have.
struct TypeAttribute
{
    using Default = std::variant<bool, int, float, std::string, Color3f>;

    std::string name;
    std::string displayName;
    Default defaultValue;
    std::string description;
};

/// The description of a node type.
struct NodeType
{
    std::string type;
    std::string displayName;
    std::string description;
    std::vector<std::string> classifications;
    std::vector<TypeAttribute> inputs = {};
    std::vector<TypeAttribute> outputs = {};
    std::optional<Light::Type> light = {}; ///< The kind of light, for types of lights.
};

/// The described types, in the order of a menu. Items may be of any other type.
[[nodiscard]] const std::vector<NodeType>& nodeTypes();

/// The description of a type; null if there is none.
[[nodiscard]] const NodeType* findNodeType(const std::string& type);

/// The kind of the lights of a type; `std::nullopt` for a type of other items.
[[nodiscard]] std::optional<Light::Type> lightKind(const std::string& type);

} // namespace Kiv_v4::memory
