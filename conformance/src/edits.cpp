#include "edits.h"

#include <algorithm>
#include <iterator>

#include "kiv/attributeInfo.h"
#include "kiv/attributes.h"
#include "kiv/batchOpsHandler.h"
#include "kiv/camera.h"
#include "kiv/connection.h"
#include "kiv/connectionHandler.h"
#include "kiv/connections.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/object3d.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/sceneItemOps.h"
#include "kiv/selection.h"
#include "kiv/transform3d.h"

#include "attributeKinds.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

namespace {

using Items = std::vector<SceneItem::Ptr>;

Edit edit(const std::string& text, const SceneItem::Ptr& item, UndoableCommand::Ptr command,
          bool renames = false)
{
    return {command ? text : std::string(), item->path(), std::move(command), renames};
}

const SceneItem::Ptr& any(Checking& checking, const Items& items)
{
    return items[checking.below(items.size())];
}

Edit createChild(Checking& checking, const Items& items, const SceneItem::Ptr& item)
{
    const auto name = randomName(checking, item);
    const auto type = any(checking, items)->nodeType();
    return edit("createChildCmd('" + type + "', '" + name + "')", item,
                Hierarchy::hierarchy(item)->createChildCmd(type, PathComponent(name)));
}

Edit insertChild(Checking& checking, const Items& items, const SceneItem::Ptr& item)
{
    const auto& child = any(checking, items);
    const auto hierarchy = Hierarchy::hierarchy(item);
    const auto children = hierarchy->children();
    const auto place = checking.below(children.size() + 1);
    const auto before = place == children.size()
                            ? nullptr
                            : *std::next(children.begin(), static_cast<std::ptrdiff_t>(place));
    if (child->path().size() <= 1 || item->path().startsWith(child->path()) ||
        (before && *before == *child)) {
        return {};
    }
    return edit("insertChildCmd(" + textOf(child->path()) + ", " +
                    (before ? textOf(before->path()) : "null") + ')',
                item, hierarchy->insertChildCmd(child, before), true);
}

/// Some of the own children, in order.
SceneItemList someChildren(Checking& checking, const SceneItem::Ptr& item)
{
    auto children = Hierarchy::hierarchy(item)->children();
    children.remove_if([&](const SceneItem::Ptr& child) {
        return child->runTimeId() != item->runTimeId() || checking.below(2) == 0;
    });
    return children;
}

Edit createGroup(Checking& checking, const Items&, const SceneItem::Ptr& item)
{
    const auto members = someChildren(checking, item);
    const auto name = randomName(checking, item);
    return edit("createGroupCmd(" + std::to_string(members.size()) + " members, '" + name + "')",
                item, Hierarchy::hierarchy(item)->createGroupCmd(members, PathComponent(name)),
                true);
}

Edit reorder(Checking& checking, const Items&, const SceneItem::Ptr& item)
{
    const auto children = Hierarchy::hierarchy(item)->children();
    std::vector<SceneItem::Ptr> order(children.begin(), children.end());
    std::shuffle(order.begin(), order.end(), checking.random());
    if (order.size() < 2) {
        return {};
    }
    return edit("reorderCmd", item,
                Hierarchy::hierarchy(item)->reorderCmd({order.begin(), order.end()}));
}

Edit ungroup(Checking&, const Items&, const SceneItem::Ptr& item)
{
    return edit("ungroupCmd", item, Hierarchy::hierarchy(item)->ungroupCmd(), true);
}

Edit remove(Checking&, const Items&, const SceneItem::Ptr& item)
{
    const auto ops = SceneItemOps::sceneItemOps(item);
    return ops ? edit("deleteItemCmd", item, ops->deleteItemCmd(), true) : Edit{};
}

Edit duplicate(Checking&, const Items&, const SceneItem::Ptr& item)
{
    const auto ops = SceneItemOps::sceneItemOps(item);
    return ops ? edit("duplicateItemCmd", item, ops->duplicateItemCmd()) : Edit{};
}

Edit duplicateMany(Checking& checking, const Items& items, const SceneItem::Ptr& item)
{
    const auto handler = RunTimeMgr::instance().batchOpsHandler(item->runTimeId());
    Selection selection;
    for (auto count = checking.below(3); count > 0; --count) {
        selection.append(any(checking, items));
    }
    selection.append(item);
    return handler ? edit("duplicateItemsCmd(" + std::to_string(selection.size()) + " items)", item,
                          handler->duplicateItemsCmd(selection, {}))
                   : Edit{};
}

Edit rename(Checking& checking, const Items&, const SceneItem::Ptr& item)
{
    const auto ops = SceneItemOps::sceneItemOps(item);
    const auto name = randomName(checking, item);
    return ops ? edit("renameItemCmd('" + name + "')", item,
                      ops->renameItemCmd(PathComponent(name)), true)
               : Edit{};
}

/// One of the item's attributes; null if it has none.
Attribute::Ptr anyAttribute(Checking& checking, const SceneItem::Ptr& item)
{
    const auto attributes = Attributes::attributes(item);
    const auto names = attributes ? attributes->attributeNames() : std::vector<std::string>{};
    return names.empty() ? nullptr : attributes->attribute(names[checking.below(names.size())]);
}

Edit setAttribute(Checking& checking, const Items&, const SceneItem::Ptr& item)
{
    const auto attribute = anyAttribute(checking, item);
    return attribute ? edit("setCmd of attribute '" + attribute->name() + '\'', item,
                            randomSetCmd(checking, attribute))
                     : Edit{};
}

Edit setMetadata(Checking& checking, const Items&, const SceneItem::Ptr& item)
{
    const auto attribute = anyAttribute(checking, item);
    return attribute ? edit("setMetadataCmd of attribute '" + attribute->name() + '\'', item,
                            attribute->setMetadataCmd(kMetadataKey, int(checking.below(100))))
                     : Edit{};
}

Edit changeAttributes(Checking& checking, const Items&, const SceneItem::Ptr& item)
{
    static const char* const kNodeTypes[] = {
        Attribute::kBool,        Attribute::kInt,      Attribute::kFloat,   Attribute::kDouble,
        Attribute::kString,      Attribute::kFloat3,   Attribute::kInt3,    Attribute::kDouble3,
        Attribute::kColorFloat3, Attribute::kMatrix4d, Attribute::kFilename};
    const auto attributes = Attributes::attributes(item);
    if (!attributes) {
        return {};
    }
    const auto names = attributes->attributeNames();
    const auto name = names.empty() ? "none" : names[checking.below(names.size())];
    switch (checking.below(3)) {
    case 0: {
        const std::string type = kNodeTypes[checking.below(std::size(kNodeTypes))];
        return edit("addAttributeCmd(" + type + ", '" + name + "')", item,
                    attributes->addAttributeCmd(type, name));
    }
    case 1:
        return edit("removeAttributeCmd('" + name + "')", item,
                    attributes->removeAttributeCmd(name));
    default:
        return edit("renameAttributeCmd('" + name + "')", item,
                    attributes->renameAttributeCmd(name, "renamed" + name));
    }
}

Edit connect(Checking& checking, const Items& items, const SceneItem::Ptr& item)
{
    const auto handler = ConnectionHandler::connectionHandler(item->runTimeId());
    const auto present = handler ? handler->connections(item) : nullptr;
    if (!present) {
        return {};
    }
    const auto all = present->allConnections();
    if (!all.empty() && checking.below(2) == 0) {
        const auto& old = *all[checking.below(all.size())];
        return edit("disconnectCmd of attribute '" + old.dst().name() + '\'', item,
                    handler->disconnectCmd(old.src().attribute(), old.dst().attribute()));
    }
    const auto source = anyAttribute(checking, any(checking, items));
    const auto target = anyAttribute(checking, item);
    return source && target ? edit("connectCmd('" + source->name() + "', '" + target->name() + "')",
                                   item, handler->connectCmd(source, target))
                            : Edit{};
}

Edit transform(Checking& checking, const Items&, const SceneItem::Ptr& item)
{
    const auto transform = Transform3d::transform3d(item);
    if (!transform) {
        return {};
    }
    const auto x = randomNumber(checking);
    const auto y = randomNumber(checking);
    const auto z = randomNumber(checking);
    switch (checking.below(6)) {
    case 0:
        return edit("translateCmd", item, transform->translateCmd(x, y, z));
    case 1:
        return edit("rotateCmd", item, transform->rotateCmd(x, y, z));
    case 2:
        return edit("scaleCmd", item, transform->scaleCmd(1 + x * x, 1 + y * y, 1 + z * z));
    case 3:
        return edit("rotatePivotCmd", item, transform->rotatePivotCmd(x, y, z));
    case 4:
        return edit("scalePivotCmd", item, transform->scalePivotCmd(x, y, z));
    default: {
        Matrix4d matrix;
        matrix.matrix = {{{2, 0, 0, 0}, {0, 0, 1, 0}, {0, -1, 0, 0}, {x, y, z, 1}}};
        return edit("setMatrixCmd", item, transform->setMatrixCmd(matrix));
    }
    }
}

Edit visibility(Checking&, const Items&, const SceneItem::Ptr& item)
{
    const auto object = Object3d::object3d(item);
    return object ? edit("setVisibilityCmd", item, object->setVisibilityCmd(!object->visibility()))
                  : Edit{};
}

Edit camera(Checking& checking, const Items&, const SceneItem::Ptr& item)
{
    const auto camera = Camera::camera(item);
    if (!camera) {
        return {};
    }
    const auto value = static_cast<float>(1 + checking.below(100));
    switch (checking.below(3)) {
    case 0:
        return edit("focalLengthCmd", item, camera->focalLengthCmd(value));
    case 1:
        return edit("horizontalApertureCmd", item, camera->horizontalApertureCmd(value));
    default:
        return edit("focusDistanceCmd", item, camera->focusDistanceCmd(value));
    }
}

Edit light(Checking& checking, const Items&, const SceneItem::Ptr& item)
{
    const auto light = Light::light(item);
    if (!light) {
        return {};
    }
    const auto value = static_cast<float>(1 + checking.below(100));
    return checking.below(2) == 0 ? edit("intensityCmd", item, light->intensityCmd(value))
                                  : edit("colorCmd", item, light->colorCmd(0.5F, 0.25F, 1.0F));
}

/// Fills a value with numbers, or makes a text.
template <class T>
T randomValue(Checking& checking)
{
    const auto next = [&](auto& element) {
        element = static_cast<std::decay_t<decltype(element)>>(randomNumber(checking));
    };
    T value{};
    if constexpr (std::is_same_v<T, bool>) {
        value = checking.below(2) == 0;
    } else if constexpr (std::is_same_v<T, std::string>) {
        value = "text " + std::to_string(checking.below(100));
    } else if constexpr (std::is_arithmetic_v<T>) {
        next(value);
    } else if constexpr (requires { value.vector; }) {
        std::for_each(value.vector.begin(), value.vector.end(), next);
    } else if constexpr (requires { value.color; }) {
        std::for_each(value.color.begin(), value.color.end(), next);
    } else {
        for (auto& row : value.matrix) {
            std::for_each(row.begin(), row.end(), next);
        }
    }
    return value;
}

} // namespace

const std::vector<EditMaker>& editMakers()
{
    static const std::vector<EditMaker> all = {
        createChild, insertChild, createGroup,   reorder,      ungroup,
        remove,      duplicate,   rename,        setAttribute, changeAttributes,
        setMetadata, transform,   duplicateMany, visibility,   camera,
        light,       connect};
    return all;
}

Edit randomEdit(Checking& checking)
{
    const auto items = walk(checking.running().roots, checking.options().maxItems);
    for (int attempt = 0; attempt < 200 && !items.empty(); ++attempt) {
        const auto& item = any(checking, items);
        // Deletions would soon leave nothing to edit.
        auto kind = checking.below(editMakers().size());
        if (editMakers()[kind] == remove && items.size() < 4) {
            kind = 0;
        }
        const auto grows = editMakers()[kind] == duplicate || editMakers()[kind] == duplicateMany;
        if (grows && items.size() * 2 > checking.options().maxItems) {
            continue;
        }
        Edit made;
        if (Checking::answers([&] { made = editMakers()[kind](checking, items, item); }) &&
            made.command) {
            return made;
        }
    }
    return {};
}

std::string randomName(Checking& checking, const SceneItem::Ptr& item)
{
    const auto separator = item->path().getSegments().back().separator();
    switch (checking.below(6)) {
    case 0:
        return item->nodeName();
    case 1: {
        const auto children = Hierarchy::hierarchy(item)->children();
        return children.empty() ? std::string("first") : children.front()->nodeName();
    }
    case 2:
        return std::string("a") + separator + 'b' + PathString::pathSegmentSeparator() + 'c';
    case 3:
        return checking.below(2) == 0 ? std::string() : std::string(1, separator);
    default:
        return "name" + std::to_string(checking.below(1000));
    }
}

double randomNumber(Checking& checking)
{
    return static_cast<double>(checking.below(41)) - 20;
}

UndoableCommand::Ptr randomSetCmd(Checking& checking, const Attribute::Ptr& attribute)
{
    UndoableCommand::Ptr command;
    visitKind(attribute, [&](auto& kind) {
        if constexpr (requires { kind.enumValues(); }) {
            const auto values = kind.enumValues();
            command = values.empty() ? nullptr : kind.setCmd(values[checking.below(values.size())]);
        } else {
            command = kind.setCmd(randomValue<decltype(kind.get())>(checking));
        }
    });
    return command;
}

} // namespace Kiv_v4::conformance
