#include "kiv/attributeNotification.h"
#include "kiv/cameraNotification.h"
#include "kiv/host/sceneWatch.h"
#include "kiv/lightNotification.h"
#include "kiv/object3dNotification.h"
#include "kiv/pathString.h"
#include "kiv/sceneNotification.h"
#include "kiv/selectionNotification.h"
#include "kiv/transform3dNotification.h"

namespace Kiv_v4::host {

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

} // namespace

std::string textOf(const Notification& notification)
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

} // namespace Kiv_v4::host
