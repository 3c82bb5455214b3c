#include "assimpFileHandler.h"

#include <assimp/Importer.hpp>
#include <stdexcept>

#include "kiv/assimp/sceneFile.h"

#include "contents.h"

namespace Kiv_v4::assimp {

namespace {

/// The importer lists them as "*.3ds;*.ase;...".
std::vector<std::string> importerSuffixes()
{
    std::string list;
    Assimp::Importer().GetExtensionList(list);
    std::vector<std::string> suffixes;
    for (std::size_t from = 0; from < list.size();) {
        const auto end = std::min(list.find(';', from), list.size());
        suffixes.push_back(list.substr(from + 1, end - from - 1)); // without the star
        from = end + 1;
    }
    return suffixes;
}

} // namespace

std::vector<std::string> AssimpFileHandler::suffixes() const
{
    static const auto suffixes = importerSuffixes();
    return suffixes;
}

SceneFileHandler::Mounting AssimpFileHandler::read(const std::string& file,
                                                   const Progress& progress)
{
    try {
        return [mounts = _mounts, content = assimp::read(file, progress)](const Path& gateway) {
            return mounts->mountFileCmd(content, gateway);
        };
    } catch (const ImportError& error) {
        throw std::runtime_error(error.reason());
    }
}

std::string AssimpFileHandler::file(const Path& gateway) const
{
    const auto file = _mounts->file(gateway);
    return file ? file->name() : std::string();
}

UndoableCommand::Ptr AssimpFileHandler::copyMountCmd(const Path& source, const Path& gateway)
{
    return _mounts->copyMountCmd(source, gateway);
}

} // namespace Kiv_v4::assimp
