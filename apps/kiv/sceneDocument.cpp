#include "sceneDocument.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
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

void save(const Mounting& scene, const std::string& file)
{
    doWith(file, [&] { replaceFile(file, documentOf(scene, folderOf(file))); });
}

void open(Mounting& scene, const std::string& file, Edits& edits)
{
    doWith(file, [&] { openDocument(scene, contentOf(file), folderOf(file), edits); });
}

} // namespace app
