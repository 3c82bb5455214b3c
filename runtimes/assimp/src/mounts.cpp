#include "mounts.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>
#include <vector>

#include "kiv/assimp/runTime.h"
#include "kiv/pathString.h"

namespace Kiv_v4::assimp {

namespace {

PathSegmentView lastSegment(const Path& path)
{
    return path.segment(path.nbSegments() - 1);
}

} // namespace

void Mounts::add(const Mount& mount, const Path& gateway)
{
    requireFree(gateway);
    _mounts.emplace(gateway, mount);
    mount.edits->gateway = gateway;
}

bool Mounts::remove(const Path& gateway)
{
    if (const auto found = _mounts.find(gateway); found != _mounts.end()) {
        found->second.edits->gateway = {};
        _mounts.erase(found);
        return true;
    }
    const auto parked = lastParked(gateway);
    if (parked == _parked.end()) {
        return false;
    }
    _parked.erase(parked);
    return true;
}

void Mounts::remove(const Mount& mount)
{
    if (!mount.edits->gateway.empty()) {
        remove(Path(mount.edits->gateway)); // a copy, since it is emptied
    } else {
        std::erase_if(_parked,
                      [&](const auto& parked) { return parked.mount.edits == mount.edits; });
    }
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

std::vector<Path> Mounts::moveAll(const Path& oldPath, const Path& newPath)
{
    std::vector<Mount> moved;
    for (auto mount = _mounts.begin(); mount != _mounts.end();) {
        const auto moves = mount->first.startsWith(oldPath);
        if (moves) {
            moved.push_back(mount->second);
        }
        mount = moves ? _mounts.erase(mount) : std::next(mount);
    }
    std::vector<Path> gateways;
    for (const auto& mount : moved) {
        gateways.push_back(mount.edits->gateway.reparent(oldPath, newPath));
        if (const auto inTheWay = _mounts.find(gateways.back()); inTheWay != _mounts.end()) {
            parkMount(inTheWay);
        }
        add(mount, gateways.back());
    }
    return gateways;
}

void Mounts::park(const Path& path)
{
    for (auto mount = _mounts.begin(); mount != _mounts.end();) {
        mount = mount->first.startsWith(path) ? parkMount(mount) : std::next(mount);
    }
}

Mounts::Shown::iterator Mounts::parkMount(Shown::iterator mount)
{
    _parked.push_back({mount->first, mount->second});
    mount->second.edits->gateway = {};
    return _mounts.erase(mount);
}

std::vector<Path> Mounts::parkedUnder(const Path& path) const
{
    std::vector<Path> gateways;
    for (const auto& [gateway, mount] : _parked) {
        if (gateway.startsWith(path) && !find(gateway) &&
            std::find(gateways.begin(), gateways.end(), gateway) == gateways.end()) {
            gateways.push_back(gateway);
        }
    }
    return gateways;
}

void Mounts::resume(const Path& gateway)
{
    const auto parked = lastParked(gateway);
    add(parked->mount, gateway);
    _parked.erase(parked);
}

void Mounts::removeAll(const Path& path)
{
    park(path);
    std::erase_if(_parked, [&](const auto& parked) { return parked.gateway.startsWith(path); });
}

const Mount* Mounts::find(const Path& gateway) const
{
    const auto found = _mounts.find(gateway);
    return found == _mounts.end() ? nullptr : &found->second;
}

std::shared_ptr<const SceneFile> Mounts::file(const Path& gateway) const
{
    const auto* mount = find(gateway);
    return mount ? mount->file : nullptr;
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
    const auto index = mount ? mount->file->find(lastSegment(path)) : std::nullopt;
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
                           : mount->file->find(lastSegment(item->path()));
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
    const auto segment = lastSegment(path);
    if (segment.runTimeId() != _runTimeId || segment.separator() != RunTime::kSeparator) {
        return nullptr;
    }
    return find(path.popSegment());
}

std::vector<Mounts::Parked>::iterator Mounts::lastParked(const Path& gateway)
{
    const auto last = std::find_if(_parked.rbegin(), _parked.rend(),
                                   [&](const auto& parked) { return parked.gateway == gateway; });
    return last == _parked.rend() ? _parked.end() : std::prev(last.base());
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
