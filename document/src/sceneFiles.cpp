#include "sceneFiles.h"

#include "kiv/assimp/runTime.h"
#include "kiv/assimp/sceneFile.h"

namespace Kiv_v4::document {

struct SourceFile
{
    std::shared_ptr<const assimp::SceneFile> file;
};

struct SceneFiles::RunTime
{
    assimp::RunTime files;
};

SceneFiles::SceneFiles() : _runTime(std::make_unique<RunTime>()) {}

SceneFiles::~SceneFiles() = default;

std::shared_ptr<const SourceFile> SceneFiles::read(const std::string& file,
                                                   const Progress& progress) const
{
    try {
        const auto onward = [&progress](float fraction) {
            progress(fraction);
            return true;
        };
        return std::make_shared<SourceFile>(SourceFile{assimp::read(file, onward)});
    } catch (const assimp::ImportError& error) {
        throw std::runtime_error(error.reason());
    }
}

Rtid SceneFiles::id() const
{
    return _runTime->files.id();
}

UndoableCommand::Ptr SceneFiles::mountCmd(const SourceFile& file, const Path& gateway)
{
    return _runTime->files.mountCmd(file.file, gateway);
}

UndoableCommand::Ptr SceneFiles::copyMountCmd(const Path& source, const Path& gateway)
{
    return _runTime->files.copyMountCmd(source, gateway);
}

std::string SceneFiles::file(const Path& gateway) const
{
    return _runTime->files.file(gateway);
}

std::vector<EditedItem> SceneFiles::editedItems(const Path& gateway) const
{
    std::vector<EditedItem> items;
    for (const auto& item : _runTime->files.editedItems(gateway)) {
        items.push_back({item.path, item.transform, item.camera, item.light, item.visibility});
    }
    return items;
}

std::optional<std::string> SceneFiles::originalName(const SceneItem& item) const
{
    if (item.runTimeId() != id()) {
        return {};
    }
    return _runTime->files.originalName(item.path());
}

char SceneFiles::separator()
{
    return assimp::RunTime::kSeparator;
}

} // namespace Kiv_v4::document
