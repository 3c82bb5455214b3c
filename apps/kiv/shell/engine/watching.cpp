#include "shell/engine/watching.h"

#include <limits>
#include <utility>

#include "kiv/attributeNotification.h"
#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/cameraNotification.h"
#include "kiv/globalSelection.h"
#include "kiv/hierarchy.h"
#include "kiv/host/outline.h"
#include "kiv/light.h"
#include "kiv/lightNotification.h"
#include "kiv/object3d.h"
#include "kiv/object3dNotification.h"
#include "kiv/observableSelection.h"
#include "kiv/pathString.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"
#include "kiv/selectionNotification.h"
#include "kiv/transform3d.h"
#include "kiv/transform3dNotification.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

std::string textOf(const Path& path)
{
    return PathString::string(path);
}

std::string textOf(const SceneItem::Ptr& item)
{
    return item ? textOf(item->path()) : "nothing";
}

std::string deletionText(std::uint8_t subOpType)
{
    switch (subOpType) {
    case ObjectDelete::PreDelete:
        return "about to be deleted: ";
    case ObjectDelete::Destroyed:
        return "destroyed: ";
    default:
        return "deleted: ";
    }
}

std::string pathChangeText(const SceneCompositeNotification::Op& change)
{
    switch (change.subOpType) {
    case ObjectPathChange::Renamed:
        return "renamed: " + textOf(change.path) + " -> " + textOf(change.item);
    case ObjectPathChange::Reparented:
        return "reparented: " + textOf(change.path) + " -> " + textOf(change.item);
    case ObjectPathChange::PathAdded:
        return "path added: " + textOf(change.path);
    case ObjectPathChange::PathRemoved:
        return "path removed: " + textOf(change.path);
    default:
        return "path changed: " + textOf(change.path);
    }
}

std::string textOf(const SceneCompositeNotification::Op& change)
{
    switch (change.opType) {
    case SceneChanged::Added:
        return "added: " + textOf(change.path);
    case SceneChanged::Deleted:
        return deletionText(change.subOpType) + textOf(change.path);
    case SceneChanged::PathChanged:
        return pathChangeText(change);
    case SceneChanged::SubtreeInvalidated:
        return "subtree invalidated: " + textOf(change.path);
    case SceneChanged::Composite:
        break;
    }
    return "composite";
}

std::string textOf(const SelectionCompositeNotification::Op& change)
{
    switch (change.opType) {
    case SelectionChanged::Append:
        return "appended " + textOf(change.item);
    case SelectionChanged::Remove:
        return "removed " + textOf(change.item);
    case SelectionChanged::Insert:
        return "inserted " + textOf(change.item) + " before " + textOf(change.pos);
    case SelectionChanged::Clear:
        return "cleared";
    case SelectionChanged::ReplaceWith:
        return "replaced";
    case SelectionChanged::Composite:
        break;
    }
    return "composite";
}

/// The changes of a composite behind one another.
template <class Composite>
std::string listOf(const Composite& composite)
{
    std::string text;
    for (const auto& change : composite) {
        text += (text.empty() ? "" : "; ") + textOf(change);
    }
    return text.empty() ? "nothing" : text;
}

/// The line for a notification if it is one of class `N` (or, for composites, `All`).
template <class N, class All>
std::string changesText(const Notification& notification)
{
    if (const auto* all = dynamic_cast<const All*>(&notification)) {
        return "together: " + listOf(*all);
    }
    return textOf(typename All::Op(dynamic_cast<const N&>(notification)));
}

std::string keysOf(const AttributeMetadataChanged& change)
{
    std::string text;
    for (const auto& key : change.keys()) {
        text += " " + key;
    }
    return text;
}

std::string lineOf(const Notification& notification)
{
    if (dynamic_cast<const SceneChanged*>(&notification)) {
        return "scene " + changesText<SceneChanged, SceneCompositeNotification>(notification);
    }
    if (dynamic_cast<const SelectionChanged*>(&notification)) {
        return "selection " +
               changesText<SelectionChanged, SelectionCompositeNotification>(notification);
    }
    if (const auto* metadata = dynamic_cast<const AttributeMetadataChanged*>(&notification)) {
        return "attribute metadata changed: " + textOf(metadata->path()) + " " + metadata->name() +
               keysOf(*metadata);
    }
    if (const auto* attribute = dynamic_cast<const AttributeChanged*>(&notification)) {
        return "attribute changed: " + textOf(attribute->path()) + " " + attribute->name();
    }
    if (const auto* visibility = dynamic_cast<const VisibilityChanged*>(&notification)) {
        return "visibility changed: " + textOf(visibility->path());
    }
    if (const auto* transform = dynamic_cast<const Transform3dChanged*>(&notification)) {
        return "transform changed: " + textOf(transform->item());
    }
    if (const auto* camera = dynamic_cast<const CameraChanged*>(&notification)) {
        return "camera changed: " + textOf(camera->item());
    }
    if (const auto* light = dynamic_cast<const LightChanged*>(&notification)) {
        return "light changed: " + textOf(light->item());
    }
    return "notification";
}

class Teller : public Observer
{
public:
    explicit Teller(Watch::Tell tell) : _tell(std::move(tell)) {}

    void operator()(const Notification& notification) override { _tell(lineOf(notification)); }

private:
    const Watch::Tell _tell;
};

} // namespace

Watch::Watch(Tell tell, const SceneItem::Ptr& root)
    : _observer(std::make_shared<Teller>(std::move(tell)))
{
    Scene::instance().addObserver(_observer);
    GlobalSelection::get()->addObserver(_observer);
    Attributes::addObserver(_observer);
    Object3d::addObserver(_observer);
    watch(root);
}

Watch::~Watch() = default; // releases the observer, which ends all its observing

void Watch::include(const Path& path)
{
    if (const auto item = Hierarchy::createItem(path)) {
        watch(item);
    }
}

void Watch::watch(const SceneItem::Ptr& top)
{
    host::walk(top, std::numeric_limits<std::size_t>::max(), [&](const SceneItem::Ptr& item, auto) {
        Transform3d::addObserver(item, _observer);
        if (Camera::camera(item)) {
            Camera::addObserver(item, _observer);
        }
        if (Light::light(item)) {
            Light::addObserver(item, _observer);
        }
        return true;
    });
}

} // namespace app::shell
