#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "kiv/attribute.h"

namespace app {

/// The class that attributes of a type are of.
template <class A>
struct AttributeClass
{
    using Type = A;
    const char* name;
};

/// All classes with values to reach.
constexpr auto attributeClasses()
{
    using namespace Kiv_v4;
    return std::tuple{AttributeClass<AttributeBool>{Attribute::kBool},
                      AttributeClass<AttributeInt>{Attribute::kInt},
                      AttributeClass<AttributeFloat>{Attribute::kFloat},
                      AttributeClass<AttributeDouble>{Attribute::kDouble},
                      AttributeClass<AttributeString>{Attribute::kString},
                      AttributeClass<AttributeFilename>{Attribute::kFilename},
                      AttributeClass<AttributeEnumString>{Attribute::kEnumString},
                      AttributeClass<AttributeColorFloat3>{Attribute::kColorFloat3},
                      AttributeClass<AttributeColorFloat4>{Attribute::kColorFloat4},
                      AttributeClass<AttributeInt3>{Attribute::kInt3},
                      AttributeClass<AttributeFloat2>{Attribute::kFloat2},
                      AttributeClass<AttributeFloat3>{Attribute::kFloat3},
                      AttributeClass<AttributeFloat4>{Attribute::kFloat4},
                      AttributeClass<AttributeDouble3>{Attribute::kDouble3},
                      AttributeClass<AttributeMatrix3d>{Attribute::kMatrix3d},
                      AttributeClass<AttributeMatrix4d>{Attribute::kMatrix4d}};
}

/// The types that an attribute can be given, those without values to reach among them.
inline std::vector<std::string> attributeTypes()
{
    auto types =
        std::apply([](auto... classes) { return std::vector<std::string>{classes.name...}; },
                   attributeClasses());
    types.emplace_back(Kiv_v4::Attribute::kGeneric);
    return types;
}

/// Calls `visit` with the `AttributeClass` of the type; false for one without values to reach.
template <class Visit>
bool visitAttributeClass(const std::string& type, Visit visit)
{
    return std::apply(
        [&](auto... candidates) {
            return ((type == candidates.name && (visit(candidates), true)) || ...);
        },
        attributeClasses());
}

} // namespace app
