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
    _files.emplace(gateway, file);
}

bool Mounts::remove(const Path& gateway)
{
    return _files.erase(gateway) != 0;
}

bool Mounts::move(const Path& gateway, const Path& newGateway)
{
    const auto found = _files.find(gateway);
    if (found == _files.end()) {
        return false;
    }
    if (newGateway != gateway) {
        requireFree(newGateway);
        auto mount = _files.extract(found);
        mount.key() = newGateway;
        _files.insert(std::move(mount));
    }
    return true;
}

void Mounts::moveAll(const Path& oldPath, const Path& newPath)
{
    std::vector<std::pair<Path, std::shared_ptr<const SceneFile>>> moved;
    for (auto mount = _files.begin(); mount != _files.end();) {
        const auto moves = mount->first.startsWith(oldPath);
        if (moves) {
            moved.emplace_back(mount->first.reparent(oldPath, newPath), mount->second);
        }
        mount = moves ? _files.erase(mount) : std::next(mount);
    }
    _files.insert(moved.begin(), moved.end());
}

std::shared_ptr<const SceneFile> Mounts::file(const Path& gateway) const
{
    const auto found = _files.find(gateway);
    return found == _files.end() ? nullptr : found->second;
}

std::shared_ptr<Item> Mounts::rootItem(const Path& gateway) const
{
    const auto mounted = file(gateway);
    if (!mounted) {
        return nullptr;
    }
    const auto& name = mounted->node(SceneFile::kRoot).component;
    return std::make_shared<Item>(gateway + PathSegment(name, _runTimeId, RunTime::kSeparator),
                                  mounted, SceneFile::kRoot);
}

std::shared_ptr<Item> Mounts::item(const Path& path) const
{
    if (path.empty()) {
        return nullptr;
    }
    const auto& segment = path.getSegments().back();
    const auto mounted =
        segment.runTimeId() == _runTimeId && segment.separator() == RunTime::kSeparator
            ? file(path.popSegment())
            : nullptr;
    const auto index = mounted ? mounted->find(segment) : std::nullopt;
    return index ? std::make_shared<Item>(path, mounted, *index) : nullptr;
}

void Mounts::requireFree(const Path& gateway) const
{
    if (gateway.empty()) {
        throw std::invalid_argument("A file cannot be mounted under the empty path '" +
                                    gateway.string() + "'.");
    }
    if (_files.count(gateway) != 0) {
        throw std::invalid_argument("A file is mounted under '" + PathString::string(gateway) +
                                    "' already.");
    }
}

} // namespace Kiv_v4::assimp
