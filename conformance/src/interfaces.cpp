#include "interfaces.h"

#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/contextOps.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/material.h"
#include "kiv/object3d.h"
#include "kiv/sceneItemOps.h"
#include "kiv/transform3d.h"

#include "attributeKinds.h"
#include "checking.h"

namespace Kiv_v4::conformance {

namespace {

using Before = std::function<void(const char*)>;

/// One operation, whose result is ignored.
template <class Function>
void call(const Before& before, const char* name, Function&& function)
{
    before(name);
    Checking::answers([&] { static_cast<void>(function()); });
}

/// One that makes a command.
template <class Function>
void run(const Before& before, const char* name, Function&& function)
{
    before(name);
    Checking::answers([&] {
        if (const auto command = function()) {
            command->execute();
        }
    });
}

/// The result of the function; null if it throws.
template <class Function>
auto given(Function&& function) -> decltype(function())
{
    decltype(function()) result;
    Checking::answers([&] { result = function(); });
    return result;
}

} // namespace

Interfaces Interfaces::of(const SceneItem::Ptr& item)
{
    Interfaces all(item);
    all._hierarchy = given([&] { return Hierarchy::hierarchy(item); });
    all._ops = given([&] { return SceneItemOps::sceneItemOps(item); });
    all._attributes = given([&] { return Attributes::attributes(item); });
    all._transform = given([&] { return Transform3d::transform3d(item); });
    all._object = given([&] { return Object3d::object3d(item); });
    all._camera = given([&] { return Camera::camera(item); });
    all._light = given([&] { return Light::light(item); });
    all._material = given([&] { return Material::material(item); });
    all._contextOps = given([&] { return ContextOps::contextOps(item); });
    if (all._attributes) {
        for (const auto& name : given([&] { return all._attributes->attributeNames(); })) {
            if (auto attribute = given([&] { return all._attributes->attribute(name); })) {
                all._each.push_back(std::move(attribute));
            }
        }
    }
    return all;
}

void Interfaces::use(const Before& before) const
{
    call(before, "nodeType", [&] { return _item->nodeType(); });
    call(before, "ancestorNodeTypes", [&] { return _item->ancestorNodeTypes(); });
    if (_hierarchy) {
        useHierarchy(before);
    }
    if (_ops) {
        useOps(before);
    }
    if (_attributes) {
        useAttributes(before);
    }
    useInSpace(before);
}

void Interfaces::useHierarchy(const Before& before) const
{
    const PathComponent name(std::string("stale"));
    call(before, "hasChildren", [&] { return _hierarchy->hasChildren(); });
    call(before, "children", [&] { return _hierarchy->children(); });
    call(before, "defaultChildFilter", [&] { return _hierarchy->defaultChildFilter(); });
    call(before, "filteredChildren", [&] { return _hierarchy->filteredChildren({}); });
    call(before, "parent", [&] { return _hierarchy->parent(); });
    call(before, "defaultParent", [&] { return _hierarchy->defaultParent(); });
    run(before, "createChildCmd", [&] { return _hierarchy->createChildCmd("group", name); });
    run(before, "insertChildCmd", [&] { return _hierarchy->insertChildCmd(_item, nullptr); });
    run(before, "createGroupCmd", [&] { return _hierarchy->createGroupCmd({}, name); });
    run(before, "reorderCmd", [&] { return _hierarchy->reorderCmd({}); });
    run(before, "ungroupCmd", [&] { return _hierarchy->ungroupCmd(); });
}

void Interfaces::useOps(const Before& before) const
{
    const PathComponent name(std::string("stale"));
    call(before, "SceneItemOps::path", [&] { return _ops->path(); });
    call(before, "validName", [&] { return _ops->validName(name); });
    run(before, "renameItemCmd", [&] { return _ops->renameItemCmd(name); });
    run(before, "duplicateItemCmd", [&] { return _ops->duplicateItemCmd(); });
    run(before, "deleteItemCmd", [&] { return _ops->deleteItemCmd(); });
}

void Interfaces::useAttributes(const Before& before) const
{
    const std::string name = "stale";
    call(before, "attributeNames", [&] { return _attributes->attributeNames(); });
    call(before, "hasAttribute", [&] { return _attributes->hasAttribute(name); });
    call(before, "attribute", [&] { return _attributes->attribute(name); });
    run(before, "addAttributeCmd",
        [&] { return _attributes->addAttributeCmd(Attribute::kInt, name); });
    run(before, "removeAttributeCmd", [&] { return _attributes->removeAttributeCmd(name); });
    for (const auto& attribute : _each) {
        call(before, "Attribute::name", [&] { return attribute->name(); });
        call(before, "Attribute::type", [&] { return attribute->type(); });
        call(before, "Attribute::hasValue", [&] { return attribute->hasValue(); });
        call(before, "Attribute::string", [&] { return attribute->string(); });
        call(before, "Attribute::metadata", [&] { return attribute->metadata(name); });
        call(before, "Attribute::setMetadata", [&] { return attribute->setMetadata(name, 1); });
        call(before, "Attribute::clearMetadata", [&] { return attribute->clearMetadata(name); });
        before("Attribute::get and setCmd");
        Checking::answers([&] {
            visitKind(attribute, [](auto& kind) {
                if (const auto command = kind.setCmd(kind.get())) {
                    command->execute();
                }
            });
        });
    }
}

void Interfaces::useInSpace(const Before& before) const
{
    if (_transform) {
        call(before, "matrix", [&] { return _transform->matrix(); });
        call(before, "segmentInclusiveMatrix",
             [&] { return _transform->segmentInclusiveMatrix(); });
        call(before, "segmentExclusiveMatrix",
             [&] { return _transform->segmentExclusiveMatrix(); });
        call(before, "inclusiveMatrix", [&] { return _transform->inclusiveMatrix(); });
        call(before, "translation", [&] { return _transform->translation(); });
        run(before, "translateCmd", [&] { return _transform->translateCmd(1, 2, 3); });
    }
    if (_object) {
        call(before, "boundingBox", [&] { return _object->boundingBox(); });
        call(before, "visibility", [&] { return _object->visibility(); });
        run(before, "setVisibilityCmd", [&] { return _object->setVisibilityCmd(false); });
    }
    if (_camera) {
        call(before, "focalLength", [&] { return _camera->focalLength(); });
        run(before, "focalLengthCmd", [&] { return _camera->focalLengthCmd(50); });
    }
    if (_light) {
        call(before, "intensity", [&] { return _light->intensity(); });
        run(before, "intensityCmd", [&] { return _light->intensityCmd(2); });
    }
    if (_material) {
        call(before, "materials", [&] { return _material->materials(); });
    }
    if (_contextOps) {
        call(before, "ContextOps::items", [&] { return _contextOps->items({}); });
    }
}

} // namespace Kiv_v4::conformance
