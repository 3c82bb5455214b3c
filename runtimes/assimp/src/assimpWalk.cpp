#include "assimpWalk.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Kiv_v4::assimp {

namespace {
/// The number of levels that keep their path: the paths of deeper chains would take much memory
/// together.
constexpr std::size_t kNbLevelsKept = 256;
} // namespace

FileWalk::FileWalk(std::shared_ptr<FileMount> mount, const Path& path, NodeIndex top)
    : _mount(std::move(mount)), _gateway(_mount ? _mount->gateway() : Path()), _top(top),
      _index(top), _paths{path}
{}

bool FileWalk::next()
{
    if (!_mount) {
        return false;
    }
    if (_mount->gateway() != _gateway) {
        throw std::logic_error("The file was moved or unmounted during a walk over it.");
    }
    if (!std::exchange(_begun, true)) {
        return true;
    }
    if (std::exchange(_skips, false) || node().nbChildren == 0) {
        return goOn();
    }
    _index = node().firstChild;
    ++_depth;
    return true;
}

/// Goes to the node after the descendants of the current one.
bool FileWalk::goOn()
{
    for (; _index != _top; --_depth) {
        _paths.resize(std::min(_paths.size(), _depth));
        const auto parent = node().parent;
        const auto& above = _mount->file->node(parent);
        if (++_index < above.firstChild + above.nbChildren) {
            return true;
        }
        _index = parent;
    }
    _mount.reset();
    return false;
}

Path FileWalk::path() const
{
    if (_depth >= kNbLevelsKept) {
        return pathBelow(_paths.front(), *_mount->file, _top, _index);
    }
    NodeIndex unnamed[kNbLevelsKept];
    std::size_t count = 0;
    for (auto index = _index; count + _paths.size() <= _depth;
         index = _mount->file->node(index).parent) {
        unnamed[count++] = index;
    }
    while (count > 0) {
        _paths.push_back(_paths.back() + _mount->file->node(unnamed[--count]).component);
    }
    return _paths.back();
}

SceneItem::Ptr FileWalk::item() const
{
    return std::make_shared<Item>(path(), _mount, _index);
}

} // namespace Kiv_v4::assimp
