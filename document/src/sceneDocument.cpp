#include "kiv/document/sceneDocument.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <string_view>

#include "kiv/document/fileReplacement.h"
#include "kiv/host/errorPrefix.h"

#include "documentFormat.h"

namespace Kiv_v4::document {

namespace {

namespace fs = std::filesystem;

std::string contentOf(const std::string& file)
{
    if (fs::is_directory(file)) {
        throw std::runtime_error("is a directory");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error(std::strerror(errno));
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Whether the file begins as documents do.
bool isDocument(const std::string& file)
{
    static const std::regex start(R"(\s*\{\s*"format"\s*:\s*")" + std::string(kFormat) + '"');
    std::string head(256, '\0');
    std::ifstream(file, std::ios::binary).read(head.data(), std::ssize(head));
    return std::regex_search(head, start, std::regex_constants::match_continuous);
}

/// The suffixes of formats that hold scenes, whether or not this build reads them: a document of
/// such a name would mislead every other program.
constexpr std::string_view kSceneFileSuffixes[] = {
    ".3ds",  ".3mf",  ".abc",  ".ac",  ".amf",  ".ase", ".b3d", ".blend",   ".bvh", ".c4d",  ".cob",
    ".dae",  ".dxf",  ".fbx",  ".glb", ".gltf", ".hmp", ".ifc", ".iqm",     ".irr", ".lwo",  ".lws",
    ".lxo",  ".m3d",  ".ma",   ".max", ".mb",   ".md2", ".md3", ".md5mesh", ".mdl", ".ms3d", ".nff",
    ".obj",  ".off",  ".ogex", ".ply", ".pmx",  ".q3d", ".sib", ".smd",     ".stl", ".ter",  ".usd",
    ".usda", ".usdc", ".usdz", ".vrm", ".wrl",  ".x",   ".x3d", ".xgl"};

bool namesSceneFile(const fs::path& file)
{
    auto suffix = file.extension().string();
    std::ranges::transform(suffix, suffix.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::ranges::find(kSceneFileSuffixes, suffix) != std::end(kSceneFileSuffixes);
}

void requireReplaceable(const Workspace& scene, const std::string& file, Replacing replacing)
{
    std::error_code none; // for a missing file, with which nothing is lost
    for (const auto& mount : scene.mounts()) {
        if (fs::equivalent(mount.file, file, none)) {
            throw std::runtime_error("is mounted in the scene");
        }
    }
    if (replacing == Replacing::Anything || isDocument(file)) {
        return;
    }
    if (namesSceneFile(file)) {
        throw NotReplaceable(file + ": the name of a scene file, not of a document");
    }
    if (fs::is_regular_file(file, none) && !fs::is_empty(file)) {
        throw NotReplaceable(file + ": not a scene document");
    }
}

/// The folder for relative paths in the document: that of the file itself, whatever links lead to
/// it.
fs::path folderOf(const std::string& file)
{
    return linkTarget(file).parent_path();
}

template <class Work>
void doWith(const std::string& file, Work work)
{
    host::prefixed<std::runtime_error, Cancelled, NotReplaceable>(file, work);
}

} // namespace

NotReplaceable::~NotReplaceable() = default;

void save(const Workspace& scene, const std::string& file, Replacing replacing)
{
    doWith(file, [&] {
        requireReplaceable(scene, file, replacing);
        replaceFile(file, documentOf(scene, folderOf(file)));
    });
}

std::size_t documentHash(const Workspace& scene)
{
    return std::hash<std::string>()(documentOf(scene, "/"));
}

void open(Workspace& scene, const std::string& file, host::Transaction& edits,
          const OnMissing& onMissing)
{
    const auto tell = [&](const std::string& complaint) { onMissing(file + ": " + complaint); };
    doWith(file, [&] {
        openDocument(scene, contentOf(file), folderOf(file), edits,
                     onMissing ? OnMissing(tell) : nullptr);
    });
}

void open(Workspace& scene, const std::string& file, const OnMissing& onMissing)
{
    host::Transaction edits("open " + file);
    open(scene, file, edits, onMissing);
    edits.commit();
}

} // namespace Kiv_v4::document
