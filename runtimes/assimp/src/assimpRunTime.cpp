#include <stdexcept>
#include <utility>

#include "kiv/assimp/runTime.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "assimpFileHandler.h"
#include "assimpHierarchyHandler.h"
#include "assimpItemInterfaces.h"
#include "assimpMounts.h"

namespace Kiv_v4::assimp {

RunTime::RunTime(const std::string& name)
    : _registration(name, kSeparator),
      _mounts(std::make_shared<Mounts>(_registration.id(), kSeparator))
{
    RunTimeMgr::instance().setHierarchyHandler(id(),
                                               std::make_shared<AssimpHierarchyHandler>(_mounts));
    installItemInterfaces(id(), _mounts);
    RunTimeMgr::instance().setSceneFileHandler(id(), std::make_shared<AssimpFileHandler>(_mounts));
}

/// Interface objects and commands may keep the mounts.
RunTime::~RunTime()
{
    _mounts->close();
}

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
        throw std::invalid_argument("The file for '" + PathString::string(gateway) + "' is null.");
    }
    return _mounts->mountFileCmd(file, gateway);
}

UndoableCommand::Ptr RunTime::copyMountCmd(const Path& source, const Path& gateway)
{
    return _mounts->copyMountCmd(source, gateway);
}

bool RunTime::unmount(const Path& gateway)
{
    return _mounts->unmount(gateway);
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
    const auto mount = _mounts->find(gateway);
    if (!mount) {
        return items;
    }
    const auto top = _mounts->topItem(mount, SceneFile::kRoot)->path();
    const auto& edits = mount->edits;
    for (const auto index : edits.nodes()) {
        items.push_back({pathBelow(top, *mount->file, SceneFile::kRoot, index),
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
        throw std::invalid_argument("No such item in a scene file: '" + PathString::string(item) +
                                    "'.");
    }
    return found->file().originalName(found->index());
}

} // namespace Kiv_v4::assimp
