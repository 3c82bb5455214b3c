#include "assimpMounts.h"

#include <stdexcept>

#include "kiv/assimp/runTime.h"
#include "kiv/pathString.h"

namespace Kiv_v4::assimp {

namespace {

PathSegmentView lastSegment(const Path& path)
{
    return path.segment(path.nbSegments() - 1);
}

} // namespace

std::shared_ptr<const SceneFile> Mounts::file(const Path& gateway) const
{
    const auto mount = find(gateway);
    return mount ? mount->file : nullptr;
}

UndoableCommand::Ptr Mounts::mountFileCmd(const std::shared_ptr<const SceneFile>& file,
                                          const Path& gateway)
{
    return mountCmd(std::make_shared<FileMount>(file), gateway, "Mount " + file->name());
}

UndoableCommand::Ptr Mounts::copyMountCmd(const Path& source, const Path& gateway)
{
    const auto mount = find(source);
    if (!mount) {
        throw std::invalid_argument("no file is mounted under '" + PathString::string(source) +
                                    "'.");
    }
    return mountCmd(std::make_shared<FileMount>(*mount), gateway, "Mount " + mount->file->name());
}

std::shared_ptr<Item> Mounts::rootItem(const Path& gateway) const
{
    const auto mount = find(gateway);
    return mount ? topItem(mount, SceneFile::kRoot) : nullptr;
}

std::shared_ptr<Item> Mounts::topItem(const std::shared_ptr<FileMount>& mount, NodeIndex top) const
{
    const PathSegment segment(mount->file->node(top).component, runTimeId(), RunTime::kSeparator);
    return std::make_shared<Item>(mount->gateway() + segment, mount, top);
}

std::shared_ptr<Item> Mounts::materialItem(const std::shared_ptr<FileMount>& mount,
                                           NodeIndex index) const
{
    const auto top = mount->file->node(index).parent;
    return itemBelow(topItem(mount, top)->path(), mount, top, index);
}

std::shared_ptr<Item> Mounts::item(const Path& path) const
{
    const auto mount = at(path);
    const auto index = mount ? mount->file->find(lastSegment(path)) : std::nullopt;
    return index ? std::make_shared<Item>(path, mount, *index) : nullptr;
}

std::optional<MountedNode> Mounts::nodeOrMaterial(const SceneItem::Ptr& item) const
{
    auto own = std::dynamic_pointer_cast<Item>(item);
    if (!own || !own->isShown()) {
        own = this->item(item->path());
    }
    return own ? std::optional(MountedNode(item, own->mount(), own->index())) : std::nullopt;
}

std::optional<MountedNode> Mounts::node(const SceneItem::Ptr& item) const
{
    auto found = nodeOrMaterial(item);
    if (found && !found->file().isInScene(found->index())) {
        found.reset();
    }
    return found;
}

} // namespace Kiv_v4::assimp
