#include "sceneDocument.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

#include "fileReplacement.h"
#include "sceneDocumentFormat.h"

namespace app {

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

void requireReplaceable(const Mounting& scene, const std::string& file, Replacing replacing)
{
    std::error_code none; // of what is not there, which nothing is lost with
    for (const auto& mount : scene.mounts()) {
        if (fs::equivalent(mount.file, file, none)) {
            throw std::runtime_error("is mounted in the scene");
        }
    }
    if (replacing == Replacing::documents && fs::is_regular_file(file, none) &&
        !fs::is_empty(file) && !isDocument(file)) {
        throw std::runtime_error("is no scene document (save --force replaces it)");
    }
}

/// The folder that paths in the document are relative to: that of the file itself, whatever links
/// lead to it.
fs::path folderOf(const std::string& file)
{
    return linkTarget(file).parent_path();
}

/// Does `work` and puts the file in front of the reason for which it fails.
template <class Work>
void doWith(const std::string& file, Work work)
{
    try {
        work();
    } catch (const std::exception& error) {
        throw std::runtime_error(file + ": " + error.what());
    }
}

} // namespace

void save(const Mounting& scene, const std::string& file, Replacing replacing)
{
    doWith(file, [&] {
        requireReplaceable(scene, file, replacing);
        replaceFile(file, documentOf(scene, folderOf(file)));
    });
}

std::size_t stateOf(const Mounting& scene)
{
    return std::hash<std::string>()(documentOf(scene, "/"));
}

void open(Mounting& scene, const std::string& file, Edits& edits, const OnMissing& onMissing)
{
    const auto tell = [&](const std::string& complaint) { onMissing(file + ": " + complaint); };
    doWith(file, [&] {
        openDocument(scene, contentOf(file), folderOf(file), edits,
                     onMissing ? OnMissing(tell) : nullptr);
    });
}

} // namespace app
