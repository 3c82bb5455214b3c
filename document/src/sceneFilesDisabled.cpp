#include <stdexcept>

#include "sceneFiles.h"

namespace Kiv_v4::document {

struct SourceFile
{};

struct SceneFiles::RunTime
{};

SceneFiles::SceneFiles() = default;

SceneFiles::~SceneFiles() = default;

std::shared_ptr<const SourceFile> SceneFiles::read(const std::string&, const Progress&) const
{
    throw std::runtime_error("this build of kiv reads no scene files");
}

Rtid SceneFiles::id() const
{
    return 0;
}

UndoableCommand::Ptr SceneFiles::mountCmd(const SourceFile&, const Path&)
{
    return nullptr;
}

UndoableCommand::Ptr SceneFiles::copyMountCmd(const Path&, const Path&)
{
    return nullptr;
}

std::string SceneFiles::file(const Path&) const
{
    return {};
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
