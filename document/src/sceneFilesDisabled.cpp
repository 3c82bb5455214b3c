#include "sceneFiles.h"

namespace Kiv_v4::document {

struct SceneFiles::RunTime
{};

SceneFiles::SceneFiles() = default;

SceneFiles::~SceneFiles() = default;

Rtid SceneFiles::id() const
{
    return 0;
}

std::vector<EditedItem> SceneFiles::editedItems(const Path&) const
{
    return {};
}

std::optional<std::string> SceneFiles::originalName(const SceneItem&) const
{
    return {};
}

char SceneFiles::separator()
{
    return ':';
}

} // namespace Kiv_v4::document
