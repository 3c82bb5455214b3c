#include "kiv/assimp/runTime.h"
#include "kiv/assimp/sceneFile.h"

#include "sceneFiles.h"

namespace app {

struct SceneFiles::File
{
    std::shared_ptr<const Kiv_v4::assimp::SceneFile> file;
};

struct SceneFiles::RunTime
{
    Kiv_v4::assimp::RunTime files;
};

SceneFiles::SceneFiles() : _runTime(std::make_unique<RunTime>()) {}

SceneFiles::~SceneFiles() = default;

std::shared_ptr<const SceneFiles::File> SceneFiles::read(const std::string& file,
                                                         const Progress& progress) const
{
    try {
        const auto onward = [&progress](float fraction) {
            progress(fraction);
            return true;
        };
        return std::make_shared<File>(File{Kiv_v4::assimp::read(file, onward)});
    } catch (const Kiv_v4::assimp::ImportError& error) {
        throw std::runtime_error(error.reason());
    }
}

Kiv_v4::Rtid SceneFiles::id() const
{
    return _runTime->files.id();
}

Kiv_v4::UndoableCommand::Ptr SceneFiles::mountCmd(const File& file, const Kiv_v4::Path& gateway)
{
    return _runTime->files.mountCmd(file.file, gateway);
}

Kiv_v4::UndoableCommand::Ptr SceneFiles::copyMountCmd(const Kiv_v4::Path& source,
                                                      const Kiv_v4::Path& gateway)
{
    return _runTime->files.copyMountCmd(source, gateway);
}

std::string SceneFiles::file(const Kiv_v4::Path& gateway) const
{
    return _runTime->files.file(gateway);
}

std::vector<EditedItem> SceneFiles::editedItems(const Kiv_v4::Path& gateway) const
{
    std::vector<EditedItem> items;
    for (const auto& item : _runTime->files.editedItems(gateway)) {
        items.push_back({item.path, item.transform, item.camera, item.light, item.visibility});
    }
    return items;
}

std::optional<std::string> SceneFiles::originalName(const Kiv_v4::SceneItem& item) const
{
    if (item.runTimeId() != id()) {
        return {};
    }
    return _runTime->files.originalName(item.path());
}

char SceneFiles::separator()
{
    return Kiv_v4::assimp::RunTime::kSeparator;
}

} // namespace app
