#include <stdexcept>

#include "sceneFiles.h"

namespace app {

struct SceneFiles::File
{};

struct SceneFiles::RunTime
{};

SceneFiles::SceneFiles() = default;

SceneFiles::~SceneFiles() = default;

std::shared_ptr<const SceneFiles::File> SceneFiles::read(const std::string&, const Progress&) const
{
    throw std::runtime_error("this build of kiv reads no scene files");
}

Kiv_v4::Rtid SceneFiles::id() const
{
    return 0;
}

Kiv_v4::UndoableCommand::Ptr SceneFiles::mountCmd(const File&, const Kiv_v4::Path&)
{
    return nullptr;
}

Kiv_v4::UndoableCommand::Ptr SceneFiles::copyMountCmd(const Kiv_v4::Path&, const Kiv_v4::Path&)
{
    return nullptr;
}

std::string SceneFiles::file(const Kiv_v4::Path&) const
{
    return {};
}

std::vector<EditedItem> SceneFiles::editedItems(const Kiv_v4::Path&) const
{
    return {};
}

std::optional<std::string> SceneFiles::originalName(const Kiv_v4::SceneItem&) const
{
    return {};
}

char SceneFiles::separator()
{
    return ':';
}

} // namespace app
