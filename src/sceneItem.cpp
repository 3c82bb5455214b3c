#include "kiv/sceneItem.h"

namespace Kiv_v4 {

SceneItem::SceneItem(const Path& path) : _path(path) {}

SceneItem::~SceneItem() = default;

std::vector<std::string> SceneItem::ancestorNodeTypes() const
{
    return {nodeType()};
}

bool SceneItem::isProperty() const
{
    return false;
}

std::string SceneItem::nodeName() const
{
    return _path.back().string();
}

} // namespace Kiv_v4
