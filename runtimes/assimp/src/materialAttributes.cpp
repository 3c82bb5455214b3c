#include "materialAttributes.h"

#include <algorithm>
#include <assimp/material.h>
#include <optional>
#include <string_view>

namespace Kiv_v4::assimp {

namespace {

enum class Kind { Color, ColorWithAlpha, Number, Flag };

/// The attribute name for a property of the importer's materials.
struct Known
{
    const char* key;
    unsigned texture;
    unsigned index;
    const char* name;
    Kind kind;
};

constexpr Known kKnown[] = {
    {AI_MATKEY_BASE_COLOR, "baseColor", Kind::ColorWithAlpha},
    {AI_MATKEY_COLOR_DIFFUSE, "diffuseColor", Kind::ColorWithAlpha},
    {AI_MATKEY_COLOR_SPECULAR, "specularColor", Kind::Color},
    {AI_MATKEY_COLOR_AMBIENT, "ambientColor", Kind::Color},
    {AI_MATKEY_COLOR_EMISSIVE, "emissiveColor", Kind::Color},
    {AI_MATKEY_COLOR_REFLECTIVE, "reflectiveColor", Kind::Color},
    {AI_MATKEY_COLOR_TRANSPARENT, "transparentColor", Kind::Color},
    {AI_MATKEY_METALLIC_FACTOR, "metallic", Kind::Number},
    {AI_MATKEY_ROUGHNESS_FACTOR, "roughness", Kind::Number},
    {AI_MATKEY_OPACITY, "opacity", Kind::Number},
    {AI_MATKEY_SHININESS, "shininess", Kind::Number},
    {AI_MATKEY_SHININESS_STRENGTH, "specularStrength", Kind::Number},
    {AI_MATKEY_REFLECTIVITY, "reflectivity", Kind::Number},
    {AI_MATKEY_REFRACTI, "indexOfRefraction", Kind::Number},
    {AI_MATKEY_TRANSMISSION_FACTOR, "transmission", Kind::Number},
    {AI_MATKEY_CLEARCOAT_FACTOR, "clearcoat", Kind::Number},
    {AI_MATKEY_CLEARCOAT_ROUGHNESS_FACTOR, "clearcoatRoughness", Kind::Number},
    {AI_MATKEY_BUMPSCALING, "bumpScale", Kind::Number},
    {AI_MATKEY_TWOSIDED, "twoSided", Kind::Flag},
    {AI_MATKEY_ENABLE_WIREFRAME, "wireframe", Kind::Flag},
};

const char* textureName(unsigned type) noexcept
{
    switch (type) {
    case aiTextureType_BASE_COLOR:
        return "baseColorTexture";
    case aiTextureType_DIFFUSE:
        return "diffuseTexture";
    case aiTextureType_SPECULAR:
        return "specularTexture";
    case aiTextureType_AMBIENT:
        return "ambientTexture";
    case aiTextureType_EMISSIVE:
    case aiTextureType_EMISSION_COLOR:
        return "emissiveTexture";
    case aiTextureType_HEIGHT:
        return "heightTexture";
    case aiTextureType_NORMALS:
    case aiTextureType_NORMAL_CAMERA:
        return "normalTexture";
    case aiTextureType_SHININESS:
        return "shininessTexture";
    case aiTextureType_OPACITY:
        return "opacityTexture";
    case aiTextureType_DISPLACEMENT:
        return "displacementTexture";
    case aiTextureType_LIGHTMAP:
        return "lightmapTexture";
    case aiTextureType_REFLECTION:
        return "reflectionTexture";
    case aiTextureType_METALNESS:
        return "metallicTexture";
    case aiTextureType_DIFFUSE_ROUGHNESS:
        return "roughnessTexture";
    case aiTextureType_AMBIENT_OCCLUSION:
        return "occlusionTexture";
    case aiTextureType_SHEEN:
        return "sheenTexture";
    case aiTextureType_CLEARCOAT:
        return "clearcoatTexture";
    case aiTextureType_TRANSMISSION:
        return "transmissionTexture";
    default:
        return "texture";
    }
}

using Value = std::optional<FileAttribute::Value>;

Value numberOf(const aiMaterial& material, const Known& known)
{
    ai_real number = 0;
    const auto found =
        aiGetMaterialFloat(&material, known.key, known.texture, known.index, &number);
    return found == aiReturn_SUCCESS ? Value(static_cast<float>(number)) : std::nullopt;
}

Value colorOf(const aiMaterial& material, const Known& known)
{
    aiColor4D color(0, 0, 0, 1);
    if (aiGetMaterialColor(&material, known.key, known.texture, known.index, &color) !=
        aiReturn_SUCCESS) {
        return std::nullopt;
    }
    const auto r = static_cast<float>(color.r);
    const auto g = static_cast<float>(color.g);
    const auto b = static_cast<float>(color.b);
    if (known.kind == Kind::Color) {
        return TypedColorN<float, 3>({r, g, b});
    }
    return TypedColorN<float, 4>({r, g, b, static_cast<float>(color.a)});
}

/// `std::nullopt` if the material has no such property, or one of another type.
Value valueOf(const aiMaterial& material, const Known& known)
{
    const aiMaterialProperty* property = nullptr;
    if (aiGetMaterialProperty(&material, known.key, known.texture, known.index, &property) !=
            aiReturn_SUCCESS ||
        property->mType == aiPTI_String) {
        return std::nullopt;
    }
    if (known.kind == Kind::Flag) { // importers write integers or single bytes
        return std::any_of(property->mData, property->mData + property->mDataLength,
                           [](char byte) { return byte != 0; });
    }
    if (property->mDataLength < sizeof(float)) {
        return std::nullopt;
    }
    return known.kind == Kind::Number ? numberOf(material, known) : colorOf(material, known);
}

} // namespace

FileAttributes materialAttributes(const aiMaterial& material)
{
    FileAttributes attributes;
    for (const auto& known : kKnown) {
        if (const auto value = valueOf(material, known)) {
            attributes.push_back({known.name, *value});
        }
    }
    for (unsigned i = 0; i < material.mNumProperties; ++i) {
        const auto& property = *material.mProperties[i];
        aiString file;
        if (std::string_view(property.mKey.C_Str()) == _AI_MATKEY_TEXTURE_BASE &&
            aiGetMaterialString(&material, _AI_MATKEY_TEXTURE_BASE, property.mSemantic,
                                property.mIndex, &file) == aiReturn_SUCCESS) {
            addAttribute(attributes, textureName(property.mSemantic),
                         FileName{{file.data, file.length}});
        }
    }
    return attributes;
}

} // namespace Kiv_v4::assimp
