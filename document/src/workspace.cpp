#include "kiv/document/workspace.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/host/childName.h"
#include "kiv/host/itemLookup.h"
#include "kiv/memory/runTime.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/sceneFileHandler.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"

#include "isolatedReading.h"
#include "mountCommands.h"
#include "sceneFiles.h"

namespace Kiv_v4::document {

namespace {

std::string gatewayName(const std::string& file)
{
    const auto name = std::filesystem::path(file).stem().string();
    return name.empty() ? "file" : name;
}

/// The run-time that shows a file under the gateway, or 0.
Rtid runTimeAt(const Path& gateway)
{
    const auto ids = RunTimeMgr::instance().getIds();
    const auto found = std::find_if(ids.begin(), ids.end(), [&](Rtid id) {
        const auto handler = RunTimeMgr::instance().sceneFileHandler(id);
        return handler && !handler->file(gateway).empty();
    });
    return found == ids.end() ? 0 : *found;
}

/// The run-time of that name, which must read scene files.
Rtid readerNamed(const std::string& runTime)
{
    const auto& runTimes = RunTimeMgr::instance();
    std::vector<std::string> names;
    for (const auto id : runTimes.getIds()) {
        if (!runTimes.sceneFileHandler(id)) {
            continue;
        }
        names.push_back(runTimes.getName(id));
        if (names.back() == runTime) {
            return id;
        }
    }
    throw std::runtime_error("no run-time '" + runTime + "' reads scene files" +
                             host::suggestion(runTime, names));
}

/// The run-time that is to read the file; `usual` reads what nobody knows.
Rtid readerOf(const std::string& file, Rtid usual)
{
    const auto reading = SceneFileHandler::runTimesFor(file);
    const auto found =
        std::find_if(reading.begin(), reading.end(), [&](Rtid id) { return id != usual; });
    const auto reader = found == reading.end() ? usual : *found;
    if (reader == 0) {
        throw std::runtime_error("nothing here reads scene files of that kind");
    }
    return reader;
}

} // namespace

struct SourceFile
{
    Rtid runTime;
    SceneFileHandler::Mounting mounting;
};

Cancelled::~Cancelled() = default;

struct Workspace::RunTimes
{
    memory::RunTime memory;
    SceneFiles files;
    Progress progress;
    std::optional<Isolation> isolation;
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

void Workspace::setIsolation(std::optional<Isolation> isolation)
{
    _runTimes->isolation = isolation;
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

SceneItemResultUndoableCommand::Ptr Workspace::mountCmd(const std::string& file,
                                                        const SceneItem::Ptr& parent,
                                                        const std::string& name,
                                                        const std::string& runTime)
{
    const auto wanted = host::freeName(parent, name.empty() ? gatewayName(file) : name);
    const auto hierarchy = Hierarchy::hierarchy(parent);
    const auto creation = hierarchy ? hierarchy->createChildCmd("gateway", wanted) : nullptr;
    if (!creation) {
        throw std::runtime_error("nothing can be mounted under " +
                                 PathString::string(parent->path()));
    }
    return std::make_shared<MountCommand>(
        "mount " + file, creation, [this, content = read(file, runTime)](const Path& gateway) {
            return gatewayCmd(gateway, content);
        });
}

Workspace::File Workspace::read(const std::string& file, const std::string& runTime) const
{
    const auto id = runTime.empty() ? readerOf(file, _runTimes->files.id()) : readerNamed(runTime);
    const auto tell = [&](float fraction) {
        if (_runTimes->progress) {
            _runTimes->progress(file, fraction);
        }
        return true;
    };
    try {
        const auto handler = RunTimeMgr::instance().sceneFileHandler(id);
        auto readBefore = 0.0F;
        if (const auto& isolation = _runTimes->isolation) {
            readInChild(
                *isolation,
                [&](const auto& progress) { static_cast<void>(handler->read(file, progress)); },
                [&](float fraction) { return tell(fraction / 2); });
            readBefore = 0.5F;
        }
        const auto tellRest = [&](float fraction) {
            return tell(readBefore + fraction * (1 - readBefore));
        };
        auto content = std::make_shared<SourceFile>(SourceFile{id, handler->read(file, tellRest)});
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
    return std::make_shared<GatewayCommand>(model(), item,
                                            file ? file->runTime : _runTimes->files.id(),
                                            file ? file->mounting(item) : nullptr);
}

std::vector<UndoableCommand::Ptr> Workspace::copyMountsCmds(const SceneItem::Ptr& source,
                                                            const Path& copy)
{
    auto gateways = SceneSegmentHandler::findGatewayItems(source->path());
    if (isGateway(*source)) {
        gateways.append(source);
    }
    std::vector<UndoableCommand::Ptr> commands;
    for (const auto& gateway : gateways) {
        const auto& path = gateway->path();
        const auto runTime = model().gateway(path);
        const auto handler = RunTimeMgr::instance().sceneFileHandler(runTime);
        if (handler) {
            const auto target = path.reparent(source->path(), copy);
            commands.push_back(std::make_shared<GatewayCommand>(
                model(), target, runTime,
                handler->file(path).empty() ? nullptr : handler->copyMountCmd(path, target)));
        }
    }
    return commands;
}

std::vector<Workspace::Mount> Workspace::mounts() const
{
    std::vector<Mount> mounts;
    for (const auto& gateway : SceneSegmentHandler::findGatewayItems(root()->path())) {
        auto mount = mountAt(gateway->path());
        if (!mount.file.empty()) {
            mounts.push_back(std::move(mount));
        }
    }
    return mounts;
}

Workspace::Mount Workspace::mountAt(const Path& gateway) const
{
    const auto id = runTimeAt(gateway);
    const auto& runTimes = RunTimeMgr::instance();
    return id == 0
               ? Mount{gateway, {}, {}}
               : Mount{gateway, runTimes.sceneFileHandler(id)->file(gateway), runTimes.getName(id)};
}

std::string Workspace::mountedFile(const Path& gateway) const
{
    return mountAt(gateway).file;
}

bool Workspace::isGateway(const SceneItem& item) const
{
    return isInMemory(item) &&
           RunTimeMgr::instance().sceneFileHandler(model().gateway(item.path())) != nullptr;
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
