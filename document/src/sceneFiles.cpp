#include "sceneFiles.h"

#include "kiv/assimp/runTime.h"

namespace Kiv_v4::document {

struct SceneFiles::RunTime
{
    assimp::RunTime files;
};

SceneFiles::SceneFiles() : _runTime(std::make_unique<RunTime>()) {}

SceneFiles::~SceneFiles() = default;

Rtid SceneFiles::id() const
{
    return _runTime->files.id();
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
