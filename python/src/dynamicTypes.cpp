#include "dynamicTypes.h"

#include <tuple>
#include <typeindex>
#include <unordered_map>

#include "kiv/host/undoHistory.h"
#include "kiv/kiv.h"

namespace nanobind::detail {

namespace {

using namespace Kiv_v4;

/// The first of `Candidates`, derived classes first, that `object` is one of; `Base` otherwise.
/// What was found for a class is remembered: a cast of each kind would cost more than the rest of
/// the way to Python.
template <class Base, class... Candidates>
const std::type_info* nearest(const Base* object)
{
    if (!object) {
        return &typeid(Base);
    }
    static std::unordered_map<std::type_index, const std::type_info*> known;
    auto& found = known[typeid(*object)];
    if (!found) {
        ((!found && dynamic_cast<const Candidates*>(object) && (found = &typeid(Candidates))), ...);
        found = found ? found : &typeid(Base);
    }
    return found;
}

template <class>
struct Classes;

template <class... Entries>
struct Classes<std::tuple<Entries...>>
{
    static const std::type_info* of(const Attribute* attribute)
    {
        return nearest<Attribute, typename Entries::Type..., AttributeGeneric>(attribute);
    }
};

} // namespace

const std::type_info* type_hook<Attribute>::get(const Attribute* object)
{
    return Classes<decltype(attributeClasses())>::of(object);
}

const std::type_info* type_hook<Attributes>::get(const Attributes* object)
{
    return nearest<Attributes, Attributes_v4_2>(object);
}

const std::type_info* type_hook<Hierarchy>::get(const Hierarchy* object)
{
    return nearest<Hierarchy, Hierarchy_v4_2>(object);
}

const std::type_info* type_hook<Transform3dRead>::get(const Transform3dRead* object)
{
    return nearest<Transform3dRead, Transform3d>(object);
}

const std::type_info* type_hook<UINodeGraphNode>::get(const UINodeGraphNode* object)
{
    return nearest<UINodeGraphNode, UINodeGraphNode_v4_1>(object);
}

const std::type_info* type_hook<Notification>::get(const Notification* object)
{
    return nearest<Notification, AttributeMetadataChanged, AttributeChanged, CameraChanged,
                   LightChanged, Transform3dChanged, VisibilityChanged, ObjectAdd, ObjectPostDelete,
                   ObjectPreDelete, ObjectDestroyed, ObjectDelete, ObjectRename, ObjectReparent,
                   ObjectPathAdd, ObjectPathRemove, ObjectPathChange, SubtreeInvalidate,
                   SceneCompositeNotification, SceneChanged, SelectionItemAppended,
                   SelectionItemRemoved, SelectionItemInserted, SelectionCleared, SelectionReplaced,
                   SelectionCompositeNotification, SelectionChanged, host::UndoHistoryChanged>(
        object);
}

const std::type_info* type_hook<UndoableCommand>::get(const UndoableCommand* object)
{
    return nearest<UndoableCommand, SetBoolUndoableCommand, SetIntUndoableCommand,
                   SetFloatUndoableCommand, SetDoubleUndoableCommand, SetColor3fUndoableCommand,
                   SetColor4fUndoableCommand, SetMatrix3dUndoableCommand,
                   SetMatrix4dUndoableCommand, SetFloat2UndoableCommand, SetFloat3UndoableCommand,
                   SetDouble3UndoableCommand, SetFloat4UndoableCommand, SetConePropsUndoableCommand,
                   SetSpherePropsUndoableCommand, BaseUndoableCommand,
                   SceneItemResultUndoableCommand, InsertChildCommand,
                   AttributeResultUndoableCommand, ConnectionResultUndoableCommand,
                   SelectionUndoableCommand, BatchCompositeCommand, CompositeUndoableCommand,
                   SelectionAppendItem, SelectionRemoveItem, SelectionClear, SelectionReplaceWith>(
        object);
}

} // namespace nanobind::detail
