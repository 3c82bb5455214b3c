#include "kiv/assimp/runTime.h"

#include <stdexcept>
#include <utility>

#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"

#include "gatewayObserver.h"
#include "hierarchyHandler.h"
#include "itemInterfaces.h"
#include "mounts.h"

namespace Kiv_v4::assimp {

namespace {

/// Shows a mount; while it is undone it keeps it.
class MountCommand : public UndoableCommand
{
public:
    MountCommand(std::shared_ptr<Mounts> mounts, std::shared_ptr<GatewayObserver> observer,
                 Mount mount, Path gateway)
        : _mounts(std::move(mounts)), _observer(std::move(observer)), _mount(std::move(mount)),
          _gateway(std::move(gateway))
    {}

    [[nodiscard]] std::string commandString() const override
    {
        return "Mount " + _mount.file->name();
    }

    void redo() override
    {
        _mounts->add(_mount, _gateway);
        if (Scene::hasInstance()) {
            Scene::instance().addObserver(_observer);
        }
        announceInvalidated(_gateway);
    }

    void undo() override
    {
        const auto gateway = _mount.edits->gateway;
        _mounts->remove(_mount);
        announceInvalidated(gateway);
    }

private:
    const std::shared_ptr<Mounts> _mounts;
    const std::shared_ptr<GatewayObserver> _observer;
    const Mount _mount;
    const Path _gateway;
};

} // namespace

RunTime::RunTime(const std::string& name)
    : _registration(name, kSeparator), _mounts(std::make_shared<Mounts>(_registration.id())),
      _gatewayObserver(std::make_shared<GatewayObserver>(_mounts))
{
    RunTimeMgr::instance().setHierarchyHandler(id(),
                                               std::make_shared<AssimpHierarchyHandler>(_mounts));
    installItemInterfaces(id(), _mounts);
}

RunTime::~RunTime() = default;

Rtid RunTime::id() const noexcept
{
    return _registration.id();
}

SceneItem::Ptr RunTime::mount(const std::shared_ptr<const SceneFile>& file, const Path& gateway)
{
    mountCmd(file, gateway)->execute();
    return _mounts->rootItem(gateway);
}

UndoableCommand::Ptr RunTime::mountCmd(const std::shared_ptr<const SceneFile>& file,
                                       const Path& gateway)
{
    if (!file) {
        throw std::invalid_argument("There is no file to mount under '" +
                                    PathString::string(gateway) + "'.");
    }
    return std::make_shared<MountCommand>(_mounts, _gatewayObserver, Mount{file}, gateway);
}

UndoableCommand::Ptr RunTime::copyMountCmd(const Path& source, const Path& gateway)
{
    const auto* mount = _mounts->find(source);
    if (!mount) {
        throw std::invalid_argument("No file is mounted under '" + PathString::string(source) +
                                    "'.");
    }
    Mount copy{mount->file, std::make_shared<Edits>(*mount->edits)};
    copy.edits->gateway = {}; // not shown yet
    return std::make_shared<MountCommand>(_mounts, _gatewayObserver, std::move(copy), gateway);
}

bool RunTime::unmount(const Path& gateway)
{
    const auto removed = _mounts->remove(gateway);
    if (removed) {
        announceInvalidated(gateway);
    }
    return removed;
}

bool RunTime::moveMount(const Path& gateway, const Path& newGateway)
{
    return _mounts->move(gateway, newGateway);
}

std::string RunTime::file(const Path& gateway) const
{
    const auto file = _mounts->file(gateway);
    return file ? file->name() : std::string();
}

std::vector<EditedItem> RunTime::editedItems(const Path& gateway) const
{
    std::vector<EditedItem> items;
    const auto* mount = _mounts->find(gateway);
    if (!mount) {
        return items;
    }
    const auto top = _mounts->rootItem(gateway)->path();
    const auto& edits = *mount->edits;
    for (const auto index : edits.nodes()) {
        items.push_back({itemBelow(top, mount->file, SceneFile::kRoot, index)->path(),
                         edits.find<TransformRecord>(index) != nullptr,
                         edits.find<CameraRecord>(index) != nullptr,
                         edits.find<LightRecord>(index) != nullptr,
                         edits.find<VisibilityRecord>(index) != nullptr});
    }
    return items;
}

std::size_t RunTime::nbItems(const Path& gateway) const
{
    const auto file = _mounts->file(gateway);
    return file ? file->size() : 0;
}

std::string RunTime::originalName(const Path& item) const
{
    const auto found = _mounts->item(item);
    if (!found) {
        throw std::invalid_argument("There is no item of a scene file at '" +
                                    PathString::string(item) + "'.");
    }
    return found->file()->originalName(found->index());
}

} // namespace Kiv_v4::assimp
