#include "following.h"

#include <algorithm>

#include "kiv/attributeNotification.h"
#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/cameraNotification.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/lightNotification.h"
#include "kiv/object3d.h"
#include "kiv/object3dNotification.h"
#include "kiv/scene.h"
#include "kiv/transform3d.h"
#include "kiv/transform3dNotification.h"

#include "attributeKinds.h"

namespace Kiv_v4::conformance {

namespace {

const char* const kComplete = "notifications.complete";
const char* const kTime = "notifications.time";
const char* const kPaths = "notifications.paths";

bool exists(const Path& path)
{
    bool found = false;
    Checking::answers([&] { found = Hierarchy::createItem(path) != nullptr; });
    return found;
}

std::vector<Path> childPaths(const Path& path)
{
    std::vector<Path> paths;
    const auto item = Hierarchy::createItem(path);
    if (const auto hierarchy = item ? Hierarchy::hierarchy(item) : nullptr) {
        for (const auto& child : hierarchy->children()) {
            if (child && child->runTimeId() == path.runTimeId()) {
                paths.push_back(child->path());
            }
        }
    }
    return paths;
}

std::string names(const std::vector<Path>& paths)
{
    std::string text;
    for (const auto& path : paths) {
        text += (text.empty() ? "" : ", ") + path.back().string();
    }
    return text.empty() ? "none" : text;
}

/// The notifications that must announce a fact, in the words that `noteFact` records.
std::string announcementOf(const std::string& fact)
{
    static const std::string kTransforms[] = {"matrix", "translation",  "rotation",
                                              "scale",  "rotate pivot", "scale pivot"};
    return std::count(std::begin(kTransforms), std::end(kTransforms), fact) > 0 ? "matrix" : fact;
}

} // namespace

void Following::begin()
{
    _children.clear();
    for (const auto& root : _checking.running().roots) {
        fetch(root);
    }
}

void Following::expect(const Snapshot& items)
{
    _renewed.clear();
    _left.clear();
    _unplaced.clear();
    _facts.clear();
    _valuesThen.clear();
    _nbNotifications = 0;
    unobserve();
    for (const auto& state : items) {
        if (const auto item = Hierarchy::createItem(state.path)) {
            Transform3d::addObserver(item, shared_from_this());
            Camera::addObserver(item, shared_from_this());
            Light::addObserver(item, shared_from_this());
            _observed.push_back(item);
        }
    }
}

void Following::operator()(const Notification& notification)
{
    ++_nbNotifications;
    if (const auto* all = dynamic_cast<const SceneCompositeNotification*>(&notification)) {
        for (const auto& op : *all) {
            apply(op, false);
        }
    } else if (const auto* one = dynamic_cast<const SceneChanged*>(&notification)) {
        apply(Op(*one), true);
    } else if (const auto* value = dynamic_cast<const AttributeChanged*>(&notification)) {
        attributeChanged(value->path(), value->name());
    } else if (const auto* shown = dynamic_cast<const VisibilityChanged*>(&notification)) {
        noteFact(shown->path(), "visibility");
    } else if (const auto* moved = dynamic_cast<const Transform3dChanged*>(&notification)) {
        noteFact(moved->item()->path(), "matrix");
    } else if (const auto* camera = dynamic_cast<const CameraChanged*>(&notification)) {
        noteFact(camera->item()->path(), "camera");
    } else if (const auto* light = dynamic_cast<const LightChanged*>(&notification)) {
        noteFact(light->item()->path(), "light");
    }
}

void Following::apply(const Op& op, bool atOnce)
{
    const auto about = op.item ? op.item->path() : op.path;
    if (!isFollowed(about) && !isFollowed(op.path)) {
        return;
    }
    switch (op.opType) {
    case SceneChanged::Added:
        added(op.item, atOnce);
        break;
    case SceneChanged::Deleted:
        deleted(op.path, op.subOpType, atOnce);
        break;
    case SceneChanged::PathChanged:
        if (op.subOpType == ObjectPathChange::Renamed ||
            op.subOpType == ObjectPathChange::Reparented) {
            moved(op.item, op.path, atOnce);
        }
        break;
    case SceneChanged::SubtreeInvalidated:
        invalidated(op.item);
        break;
    default:
        break;
    }
}

void Following::added(const SceneItem::Ptr& item, bool atOnce)
{
    if (!item) {
        _checking.found(kPaths, {}, "an ObjectAdd with the new item", "one without an item");
        return;
    }
    if (atOnce && !exists(item->path())) {
        _checking.found(kTime, item->path(), "the new item can be queried when ObjectAdd comes",
                        "createItem returns null: the notification came before the change");
    }
    _renewed.push_back(item->path());
    place(item->path());
}

void Following::deleted(const Path& path, std::uint8_t kind, bool atOnce)
{
    if (_children.count(path) == 0) {
        if (_left.count(path) == 0) {
            _checking.found(kPaths, path, "a deletion of an item that observers know",
                            "the deletion of an unknown path");
        }
        return;
    }
    if (atOnce && kind == ObjectDelete::PostDelete && exists(path)) {
        _checking.found(kTime, path, "nothing at the path when ObjectPostDelete comes",
                        "createItem returns an item: the notification came before the change");
    }
    drop(path);
    _left.insert(path);
}

void Following::moved(const SceneItem::Ptr& item, const Path& from, bool atOnce)
{
    if (!item) {
        _checking.found(kPaths, from, "the item at its new path in the notification", "no item");
        return;
    }
    if (_children.count(from) == 0 && _left.count(from) == 0) {
        _checking.found(kPaths, from,
                        "a notification with the path by which observers know the item",
                        "a previous path that nobody knows, for " + textOf(item->path()));
    }
    if (atOnce && !exists(item->path())) {
        _checking.found(
            kTime, item->path(), "the item can be queried at its new path",
            "createItem returns null: the path is wrong, or the notification came before the "
            "change");
    }
    // A rename keeps the place, unless the notification says more.
    const auto parent = _children.find(from.pop());
    const auto sameParent = !from.empty() && parent != _children.end() &&
                            item->path().size() == from.size() && item->path().pop() == from.pop();
    if (sameParent) {
        auto& siblings = parent->second;
        const auto at = std::find(siblings.begin(), siblings.end(), from);
        if (at != siblings.end()) {
            *at = item->path();
        }
    }
    const auto known = knownUnder(from);
    drop(from);
    _left.insert(from);
    _renewed.push_back(item->path());
    if (sameParent && _unplaced.erase(from) == 0) {
        fetch(item->path());
    } else {
        place(item->path());
    }
    if (!exists(item->path())) {
        keep(known, from, item->path());
    }
}

Following::Children Following::knownUnder(const Path& top) const
{
    Children known;
    for (std::vector<Path> ahead{top}; !ahead.empty();) {
        const auto found = _children.find(ahead.back());
        ahead.pop_back();
        if (found != _children.end()) {
            ahead.insert(ahead.end(), found->second.begin(), found->second.end());
            known.insert(*found);
        }
    }
    return known;
}

void Following::keep(const Children& known, const Path& from, const Path& to)
{
    _children[to];
    for (const auto& [path, children] : known) {
        auto& kept = _children[path.reparent(from, to)];
        kept.clear();
        for (const auto& child : children) {
            kept.push_back(child.reparent(from, to));
        }
    }
}

void Following::invalidated(const SceneItem::Ptr& item)
{
    if (!item) {
        return;
    }
    _renewed.push_back(item->path());
    if (_children.count(item->path()) == 0) {
        // A gateway above the roots, or an item that is deleted under the same guard.
        for (const auto& root : _checking.running().roots) {
            if (root.startsWith(item->path())) {
                fetch(root);
            }
        }
        return;
    }
    fetch(item->path());
}

void Following::fetch(const Path& path)
{
    std::vector<Path> ahead{path};
    for (std::vector<Path> known{path}; !known.empty();) {
        const auto one = known.back();
        known.pop_back();
        const auto found = _children.find(one);
        if (found != _children.end()) {
            known.insert(known.end(), found->second.begin(), found->second.end());
            _children.erase(found);
        }
    }
    while (!ahead.empty() && _children.size() < 4 * _checking.options().maxItems) {
        const auto one = ahead.back();
        ahead.pop_back();
        if (!exists(one)) {
            continue;
        }
        auto children = childPaths(one);
        ahead.insert(ahead.end(), children.begin(), children.end());
        _children[one] = std::move(children);
    }
}

void Following::drop(const Path& path)
{
    const auto parent = path.size() > 1 ? _children.find(path.pop()) : _children.end();
    if (parent != _children.end()) {
        auto& siblings = parent->second;
        siblings.erase(std::remove(siblings.begin(), siblings.end(), path), siblings.end());
    }
    for (std::vector<Path> ahead{path}; !ahead.empty();) {
        const auto found = _children.find(ahead.back());
        ahead.pop_back();
        if (found != _children.end()) {
            ahead.insert(ahead.end(), found->second.begin(), found->second.end());
            _children.erase(found);
        }
    }
}

void Following::place(const Path& path)
{
    fetch(path);
    const auto parent = path.size() > 1 ? _children.find(path.pop()) : _children.end();
    if (parent == _children.end()) {
        return;
    }
    auto& siblings = parent->second;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), path), siblings.end());
    if (!exists(path)) { // later in the batch it moves to another path
        siblings.push_back(path);
        _unplaced.insert(path);
        _children[path];
        return;
    }
    auto at = siblings.begin();
    for (const auto& sibling : childPaths(parent->first)) {
        if (sibling == path) {
            break;
        }
        const auto known = std::find(siblings.begin(), siblings.end(), sibling);
        at = known == siblings.end() ? at : known + 1;
    }
    siblings.insert(at, path);
}

void Following::attributeChanged(const Path& path, const std::string& name)
{
    if (!isFollowed(path)) {
        return;
    }
    if (!exists(path)) {
        _checking.found(kPaths, path, "an AttributeChanged with the path of the item",
                        "a path that leads to no item");
        return;
    }
    noteFact(path, "attribute " + name);
    noteFact(path, "attributes");
    const auto attributes = Attributes::attributes(Hierarchy::createItem(path));
    const auto attribute = attributes ? attributes->attribute(name) : nullptr;
    _valuesThen[path][name] = attribute ? exactValue(attribute) : std::string();
}

void Following::noteFact(const Path& path, const std::string& fact)
{
    _facts.emplace(textOf(path), fact);
}

bool Following::isFollowed(const Path& path)
{
    return path.runTimeId() == _checking.id() || _children.count(path) > 0 ||
           std::any_of(_checking.running().roots.begin(), _checking.running().roots.end(),
                       [&](const Path& root) { return root.startsWith(path); });
}

bool Following::isTold(const Change& change) const
{
    return change.fact == kConnections || change.fact == kMaterials ||
           _facts.count({textOf(change.item), announcementOf(change.fact)}) > 0 ||
           std::any_of(_renewed.begin(), _renewed.end(),
                       [&](const Path& path) { return change.item.startsWith(path); });
}

void Following::compare(const Snapshot& before, const Snapshot& after)
{
    unobserve();
    compareStructure(after);
    for (const auto& change : changes(before, after)) {
        if (!isTold(change)) {
            _checking.found(kComplete, change.item, "a notification of " + change.fact,
                            _nbNotifications == 0 ? "no notification at all"
                                                  : "notifications of other things only");
        }
    }
    for (const auto& [path, values] : _valuesThen) {
        const auto item = Hierarchy::createItem(path);
        const auto attributes = item ? Attributes::attributes(item) : nullptr;
        for (const auto& [name, then] : values) {
            const auto attribute = attributes ? attributes->attribute(name) : nullptr;
            const auto now = attribute ? exactValue(attribute) : std::string();
            if (now != then) {
                _checking.found(kTime, path,
                                "attribute '" + name + "' has the new value, " + now +
                                    ", when the notification arrives",
                                "it still has " + then);
            }
        }
    }
}

void Following::compareStructure(const Snapshot& after)
{
    for (const auto& state : after) {
        const auto known = _children.find(state.path);
        const auto now = childPaths(state.path);
        if (known != _children.end() && known->second == now) {
            continue;
        }
        const auto parentKnown = known != _children.end();
        const auto isRenewed = std::count(_renewed.begin(), _renewed.end(), state.path) > 0;
        _checking.found(
            isRenewed ? kTime : kComplete, state.path,
            "an observer that followed the notifications has the children " + names(now),
            parentKnown ? "it has " + names(known->second) : "it does not know the item");
        begin(); // so that the next step is checked by itself
        return;
    }
    if (_children.size() > after.size() && after.size() < _checking.options().maxItems) {
        for (const auto& [path, children] : _children) {
            if (!exists(path)) {
                _checking.found(kComplete, path,
                                "an observer that followed the notifications knows that the "
                                "item has gone",
                                "it still lists the item");
                begin();
                return;
            }
        }
    }
}

void Following::unobserve()
{
    for (const auto& item : _observed) {
        Transform3d::removeObserver(item, shared_from_this());
        Camera::removeObserver(item, shared_from_this());
        Light::removeObserver(item, shared_from_this());
    }
    _observed.clear();
}

} // namespace Kiv_v4::conformance
