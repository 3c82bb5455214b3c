#include "mounts.h"

#include <iterator>
#include <stdexcept>
#include <utility>
#include <vector>

#include "kiv/assimp/runTime.h"
#include "kiv/pathString.h"

namespace Kiv_v4::assimp {

void Mounts::add(const std::shared_ptr<const SceneFile>& file, const Path& gateway)
{
    requireFree(gateway);
    if (!file) {
        throw std::invalid_argument("There is no file to mount under '" +
                                    PathString::string(gateway) + "'.");
    }
    _mounts.emplace(gateway, Mount{file, std::make_shared<Edits>(gateway)});
}

bool Mounts::remove(const Path& gateway)
{
    const auto found = _mounts.find(gateway);
    if (found == _mounts.end()) {
        return false;
    }
    found->second.edits->gateway = {};
    _mounts.erase(found);
    return true;
}

bool Mounts::move(const Path& gateway, const Path& newGateway)
{
    const auto found = _mounts.find(gateway);
    if (found == _mounts.end()) {
        return false;
    }
    if (newGateway != gateway) {
        requireFree(newGateway);
        auto mount = _mounts.extract(found);
        mount.key() = newGateway;
        mount.mapped().edits->gateway = newGateway;
        _mounts.insert(std::move(mount));
    }
    return true;
}

void Mounts::moveAll(const Path& oldPath, const Path& newPath)
{
    std::vector<Mount> moved;
    for (auto mount = _mounts.begin(); mount != _mounts.end();) {
        const auto moves = mount->first.startsWith(oldPath);
        if (moves) {
            moved.push_back(mount->second);
        }
        mount = moves ? _mounts.erase(mount) : std::next(mount);
    }
    for (const auto& mount : moved) {
        const auto gateway = mount.edits->gateway.reparent(oldPath, newPath);
        mount.edits->gateway = _mounts.emplace(gateway, mount).second ? gateway : Path();
    }
}

std::shared_ptr<const SceneFile> Mounts::file(const Path& gateway) const
{
    const auto found = _mounts.find(gateway);
    return found == _mounts.end() ? nullptr : found->second.file;
}

std::shared_ptr<Item> Mounts::rootItem(const Path& gateway) const
{
    const auto mounted = file(gateway);
    if (!mounted) {
        return nullptr;
    }
    return topItem(gateway, mounted, SceneFile::kRoot);
}

std::shared_ptr<Item> Mounts::materialItem(const Path& gateway, NodeIndex index) const
{
    const auto mounted = file(gateway);
    const auto top = mounted->node(index).parent;
    return itemBelow(topItem(gateway, mounted, top)->path(), mounted, top, index);
}

std::shared_ptr<Item> Mounts::item(const Path& path) const
{
    const auto* mount = mountOf(path);
    const auto index = mount ? mount->file->find(path.getSegments().back()) : std::nullopt;
    return index ? std::make_shared<Item>(path, mount->file, *index) : nullptr;
}

std::optional<MountedNode> Mounts::nodeOrMaterial(const SceneItem::Ptr& item) const
{
    const auto* mount = mountOf(item->path());
    if (!mount) {
        return std::nullopt;
    }
    const auto* own = dynamic_cast<const Item*>(item.get());
    const auto index = own && own->file() == mount->file
                           ? own->index()
                           : mount->file->find(item->path().getSegments().back());
    return index ? std::optional(MountedNode(item, *mount, *index)) : std::nullopt;
}

std::optional<MountedNode> Mounts::node(const SceneItem::Ptr& item) const
{
    auto found = nodeOrMaterial(item);
    if (found && !found->file().isInScene(found->index())) {
        found.reset();
    }
    return found;
}

const Mount* Mounts::mountOf(const Path& path) const
{
    if (path.empty()) {
        return nullptr;
    }
    const auto& segment = path.getSegments().back();
    if (segment.runTimeId() != _runTimeId || segment.separator() != RunTime::kSeparator) {
        return nullptr;
    }
    const auto found = _mounts.find(path.popSegment());
    return found == _mounts.end() ? nullptr : &found->second;
}

std::shared_ptr<Item> Mounts::topItem(const Path& gateway,
                                      const std::shared_ptr<const SceneFile>& file,
                                      NodeIndex top) const
{
    const auto& name = file->node(top).component;
    return std::make_shared<Item>(gateway + PathSegment(name, _runTimeId, RunTime::kSeparator),
                                  file, top);
}

void Mounts::requireFree(const Path& gateway) const
{
    if (gateway.empty()) {
        throw std::invalid_argument("A file cannot be mounted under the empty path '" +
                                    gateway.string() + "'.");
    }
    if (_mounts.count(gateway) != 0) {
        throw std::invalid_argument("A file is mounted under '" + PathString::string(gateway) +
                                    "' already.");
    }
}

} // namespace Kiv_v4::assimp
