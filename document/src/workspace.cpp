#include "kiv/document/workspace.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/host/childName.h"
#include "kiv/host/itemLookup.h"
#include "kiv/memory/runTime.h"
#include "kiv/pathString.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"

#include "mountCommands.h"
#include "sceneFiles.h"

namespace Kiv_v4::document {

namespace {

std::string gatewayName(const std::string& file)
{
    const auto name = std::filesystem::path(file).stem().string();
    return name.empty() ? "file" : name;
}

} // namespace

Cancelled::~Cancelled() = default;

struct Workspace::RunTimes
{
    memory::RunTime memory;
    SceneFiles files;
    Progress progress;
};

Workspace::Workspace() : _runTimes(std::make_unique<RunTimes>()) {}

Workspace::~Workspace() = default;

memory::DataModel& Workspace::model() const noexcept
{
    return _runTimes->memory.model();
}

bool Workspace::isInMemory(const SceneItem& item) const noexcept
{
    return item.runTimeId() == _runTimes->memory.id();
}

void Workspace::setProgress(Progress progress)
{
    _runTimes->progress = std::move(progress);
}

SceneItem::Ptr Workspace::root() const
{
    const auto& model = _runTimes->memory.model();
    return model.item(model.root());
}

Path Workspace::mount(const std::string& file)
{
    const auto command = mountCmd(file, root(), {});
    command->execute();
    return command->sceneItem()->path();
}

SceneItemResultUndoableCommand::Ptr
Workspace::mountCmd(const std::string& file, const SceneItem::Ptr& parent, const std::string& name)
{
    const auto wanted = host::freeName(parent, name.empty() ? gatewayName(file) : name);
    const auto hierarchy = Hierarchy::hierarchy(parent);
    const auto creation = hierarchy ? hierarchy->createChildCmd("gateway", wanted) : nullptr;
    if (!creation) {
        throw std::runtime_error("nothing can be mounted under " +
                                 PathString::string(parent->path()));
    }
    return std::make_shared<MountCommand>(
        "mount " + file, creation,
        [this, content = read(file)](const Path& gateway) { return gatewayCmd(gateway, content); });
}

Workspace::File Workspace::read(const std::string& file) const
{
    const auto tell = [&](float fraction) {
        if (_runTimes->progress) {
            _runTimes->progress(file, fraction);
        }
    };
    try {
        auto content = _runTimes->files.read(file, tell);
        tell(1);
        return content;
    } catch (const Cancelled&) {
        throw;
    } catch (...) {
        tell(1);
        throw;
    }
}

UndoableCommand::Ptr Workspace::gatewayCmd(const Path& item, const File& file)
{
    return std::make_shared<GatewayCommand>(model(), item, _runTimes->files.id(),
                                            file ? _runTimes->files.mountCmd(*file, item)
                                                 : nullptr);
}

std::vector<UndoableCommand::Ptr> Workspace::copyMountsCmds(const SceneItem::Ptr& source,
                                                            const Path& copy)
{
    auto gateways = SceneSegmentHandler::findGatewayItems(source->path(), _runTimes->files.id());
    if (isGateway(*source)) {
        gateways.append(source);
    }
    std::vector<UndoableCommand::Ptr> commands;
    for (const auto& gateway : gateways) {
        const auto& path = gateway->path();
        const auto target = path.reparent(source->path(), copy);
        commands.push_back(std::make_shared<GatewayCommand>(
            model(), target, _runTimes->files.id(),
            mountedFile(path).empty() ? nullptr : _runTimes->files.copyMountCmd(path, target)));
    }
    return commands;
}

std::vector<Workspace::Mount> Workspace::mounts() const
{
    std::vector<Mount> mounts;
    for (const auto& gateway :
         SceneSegmentHandler::findGatewayItems(root()->path(), _runTimes->files.id())) {
        auto file = mountedFile(gateway->path());
        if (!file.empty()) {
            mounts.push_back({gateway->path(), std::move(file)});
        }
    }
    return mounts;
}

std::string Workspace::mountedFile(const Path& gateway) const
{
    return _runTimes->files.file(gateway);
}

bool Workspace::isGateway(const SceneItem& item) const
{
    return isInMemory(item) && _runTimes->files.id() != 0 &&
           model().gateway(item.path()) == _runTimes->files.id();
}

std::string Workspace::fileOf(const SceneItem& item) const
{
    return mountedFile(isInMemory(item) ? item.path() : item.path().popSegment());
}

std::vector<EditedItem> Workspace::editedItems(const Path& gateway) const
{
    return _runTimes->files.editedItems(gateway);
}

Path Workspace::pathInFile(const Path& gateway, const std::string& text) const
{
    return gateway + PathSegment(text, _runTimes->files.id(), SceneFiles::separator());
}

SceneItem::Ptr Workspace::item(const std::string& text, const Path& gateway) const
{
    if (text.starts_with(memory::DataModel::kSeparator)) {
        if (const auto found = Hierarchy::createItem(host::pathOf(text))) {
            return found;
        }
    }
    const auto separator = SceneFiles::separator();
    const auto segment = text.starts_with(separator) ? text : separator + text;
    return Hierarchy::createItem(
        host::pathOf(PathString::string(gateway) + PathString::pathSegmentSeparator() + segment));
}

std::optional<std::string> Workspace::originalName(const SceneItem& item) const
{
    return _runTimes->files.originalName(item);
}

} // namespace Kiv_v4::document
