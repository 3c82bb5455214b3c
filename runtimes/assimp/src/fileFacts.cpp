#include "fileFacts.h"

#include <algorithm>
#include <array>
#include <assimp/commonMetaData.h>
#include <assimp/scene.h>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "declaredUnits.h"
#include "materialAttributes.h"

namespace Kiv_v4::assimp {

namespace {

namespace fs = std::filesystem;

/// The metadata with a fact name of its own, whatever its name in the format.
struct Told
{
    const char* key;
    const char* name;
};

constexpr Told kTold[] = {
    {AI_METADATA_SOURCE_FORMAT, "format"},
    {AI_METADATA_SOURCE_FORMAT_VERSION, "formatVersion"},
    {AI_METADATA_SOURCE_GENERATOR, "generator"},
    {"generator", "generator"},
    {AI_METADATA_SOURCE_COPYRIGHT, "copyright"},
    {"Author", "author"},
    {"creator", "author"},
    {"Title", "title"},
    {"title", "title"},
    {"Created", "created"},
    {"created", "created"},
    {"Modified", "modified"},
    {"modified", "modified"},
};

/// Moves the entries with a fact name of their own out of the metadata.
FileAttributes toldIn(FileAttributes& metadata)
{
    FileAttributes facts;
    for (const auto& [key, name] : kTold) {
        const auto found = std::find_if(metadata.begin(), metadata.end(),
                                        [key = key](const auto& e) { return e.name == key; });
        if (found != metadata.end()) {
            facts.push_back({name, std::move(found->value)});
            metadata.erase(found);
        }
    }
    return facts;
}

/// The importer calls a format by the name of the part that reads it.
std::string formatOf(FileAttributes& facts)
{
    constexpr std::string_view reader = " Importer";
    for (auto& fact : facts) {
        auto* text = fact.name == "format" ? std::get_if<std::string>(&fact.value) : nullptr;
        if (text) {
            if (text->ends_with(reader)) {
                text->resize(text->size() - reader.size());
            }
            return *text;
        }
    }
    return {};
}

void addUnits(FileAttributes& facts, const DeclaredUnits& declared)
{
    if (declared.unit) {
        facts.push_back({"unit", *declared.unit});
    }
    if (declared.sceneUnit) {
        facts.push_back({"sceneUnit", *declared.sceneUnit});
    }
    if (declared.upAxis) {
        facts.push_back({"upAxis", *declared.upAxis});
    }
}

void addMeshes(FileAttributes& facts, const aiScene& scene)
{
    std::uint64_t vertices = 0;
    std::uint64_t faces = 0;
    std::uint64_t bones = 0;
    std::uint64_t uvSets = 0;
    std::for_each(scene.mMeshes, scene.mMeshes + scene.mNumMeshes, [&](const aiMesh* mesh) {
        vertices += mesh->mNumVertices;
        faces += mesh->mNumFaces;
        bones += mesh->mNumBones;
        uvSets = std::max<std::uint64_t>(uvSets, mesh->GetNumUVChannels());
    });
    facts.push_back({"meshes", numberValue(scene.mNumMeshes)});
    facts.push_back({"vertices", numberValue(vertices)});
    facts.push_back({"faces", numberValue(faces)});
    facts.push_back({"uvSets", numberValue(uvSets)});
    facts.push_back({"bones", numberValue(bones)});
}

void addAnimations(FileAttributes& facts, const aiScene& scene)
{
    constexpr auto kUsualTicks = 25.0; // the importer's default
    facts.push_back({"animations", numberValue(scene.mNumAnimations)});
    std::for_each(scene.mAnimations, scene.mAnimations + scene.mNumAnimations,
                  [&](const aiAnimation* animation) {
                      const auto ticks = animation->mTicksPerSecond;
                      const auto seconds = animation->mDuration / (ticks > 0 ? ticks : kUsualTicks);
                      const auto name = std::string(animation->mName.data, animation->mName.length);
                      facts.push_back({"animation." + (name.empty() ? "unnamed" : name), seconds});
                  });
}

/// The names of the textures of all materials, each once.
std::vector<std::string> textureFiles(const aiScene& scene)
{
    std::vector<std::string> files;
    std::unordered_set<std::string> seen;
    for (unsigned i = 0; i < scene.mNumMaterials; ++i) {
        for (const auto& attribute : materialAttributes(*scene.mMaterials[i])) {
            const auto* file = std::get_if<FileName>(&attribute.value);
            if (file && !file->text.empty() && seen.insert(file->text).second) {
                files.push_back(file->text);
            }
        }
    }
    return files;
}

/// The text with each %20 and the like as the byte that it stands for.
std::string decoded(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned byte = 0;
        const auto* digits = text.data() + i + 1;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            result += static_cast<char>(byte);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

/// Whether a texture is where the file says, seen from its folder, or beside it.
bool isThere(const fs::path& folder, std::string name)
{
    std::replace(name.begin(), name.end(), '\\', '/');
    const fs::path places[] = {name, decoded(name), fs::path(name).filename()};
    return name.find('\0') == name.npos && // which no file's name holds
           std::any_of(std::begin(places), std::end(places), [&folder](const fs::path& place) {
               std::error_code none;
               return !place.empty() && fs::is_regular_file(folder / place, none);
           });
}

void addTextures(FileAttributes& facts, const aiScene& scene, const std::string& file)
{
    const auto folder = fs::path(file).parent_path();
    FileAttributes missing;
    FileAttributes textures;
    for (const auto& name : textureFiles(scene)) {
        textures.push_back({"texture", FileName{name}});
        if (!scene.GetEmbeddedTexture(name.c_str()) && !isThere(folder, name)) {
            missing.push_back({"missingTexture", FileName{name}});
        }
    }
    facts.push_back({"embeddedTextures", numberValue(scene.mNumTextures)});
    facts.push_back({"textures", numberValue(textures.size())});
    facts.push_back({"missingTextures", numberValue(missing.size())});
    std::move(textures.begin(), textures.end(), std::back_inserter(facts));
    std::move(missing.begin(), missing.end(), std::back_inserter(facts));
}

} // namespace

FileAttributes fileFacts(const aiScene& scene, const std::string& file)
{
    FileAttributes metadata;
    if (scene.mMetaData) {
        addMetadata(metadata, *scene.mMetaData);
    }
    auto facts = toldIn(metadata);
    const auto format = formatOf(facts);
    addUnits(facts, declaredUnits(format, metadata, file));
    addMeshes(facts, scene);
    facts.push_back({"materials", numberValue(scene.mNumMaterials)});
    addTextures(facts, scene, file);
    addAnimations(facts, scene);
    for (auto& entry : metadata) {
        facts.push_back({"metadata." + entry.name, std::move(entry.value)});
    }
    for (auto& fact : facts) {
        fact.name.insert(0, "file.");
    }
    return facts;
}

} // namespace Kiv_v4::assimp
