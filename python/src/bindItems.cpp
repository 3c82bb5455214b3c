#include "bound.h"
#include "overrides.h"

namespace bound {

namespace {

using kiv::SceneItem;

class PyItem : public Derivable<SceneItem>
{
public:
    using Derivable::Derivable;
    KIV_PURE_NOUN(std::string, nodeType)
    KIV_NOUN(std::vector<std::string>, ancestorNodeTypes)
    KIV_NOUN(bool, isProperty)
};

class PyHierarchyHandler : public Derivable<kiv::HierarchyHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::Hierarchy::Ptr, hierarchy, (const SceneItem::Ptr& item), (item))
    KIV_PURE_METHOD(SceneItem::Ptr, createItem, (const kiv::Path& path), (path))
    KIV_PURE_METHOD(kiv::SceneItemList, rootItems, (const kiv::Path& gateway), (gateway))
};

class PyOpsHandler : public Derivable<kiv::SceneItemOpsHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::SceneItemOps::Ptr, sceneItemOps, (const SceneItem::Ptr& item), (item))
};

class PyMenuHandler : public Derivable<kiv::ContextOpsHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::ContextOps::Ptr, contextOps, (const SceneItem::Ptr& item), (item))
};

/// The interface of an item as a property of the item; None where its run-time has none.
template <class Interface>
auto interfaceOf(std::shared_ptr<Interface> (*get)(const SceneItem::Ptr&))
{
    return [get](const SceneItem::Ptr& item) { return get(item); };
}

void bindItem(nb::module_& module)
{
    nb::class_<SceneItem, PyItem> type(module, "SceneItem", contract("SceneItem"));
    type.def(nb::init<const kiv::Path&>(), "path"_a);
    type.def_prop_ro("node_type", &SceneItem::nodeType, contract("SceneItem::nodeType"));
    type.def_prop_ro("ancestor_node_types", &SceneItem::ancestorNodeTypes,
                     contract("SceneItem::ancestorNodeTypes"));
    type.def_prop_ro("is_property", &SceneItem::isProperty, contract("SceneItem::isProperty"));
    type.def_prop_ro(
        "path", [](const SceneItem& self) { return self.path(); }, contract("SceneItem::path"));
    type.def_prop_ro("run_time_id", &SceneItem::runTimeId, contract("SceneItem::runTimeId"));
    type.def_prop_ro("node_name", &SceneItem::nodeName, contract("SceneItem::nodeName"));
    type.def(
        "__eq__", [](const SceneItem& self, const SceneItem& other) { return self == other; },
        nb::is_operator());
    type.def("__hash__", [](const SceneItem& self) { return self.path().hash(); });
    type.def("__repr__", [](nb::handle self) {
        return nb::str("<{} {!r} at {!r}>")
            .format(self.type().attr("__name__"), self.attr("node_type"),
                    nb::str(self.attr("path")));
    });
}

/// What tools ask of items all day, without the class of the interface being named.
void bindShortcuts(nb::handle item)
{
    const auto add = [&](const char* name, nb::object getter, const char* doc) {
        item.attr(name) =
            nb::module_::import_("builtins").attr("property")(getter, nb::none(), nb::none(), doc);
    };
    add("children", nb::cpp_function([](const SceneItem::Ptr& self) {
            return kiv::Hierarchy::hierarchy(self)->children();
        }),
        "The children of the item, in order. Linear in their number.");
    add("parent", nb::cpp_function([](const SceneItem::Ptr& self) {
            return kiv::Hierarchy::hierarchy(self)->parent();
        }),
        "The item that lists this one among its children; None at the top.");
    add("hierarchy", nb::cpp_function(interfaceOf(&kiv::Hierarchy::hierarchy)),
        contract("Hierarchy::hierarchy"));
    add("attributes", nb::cpp_function(interfaceOf(&kiv::Attributes::attributes)),
        contract("Attributes::attributes"));
    add("operations", nb::cpp_function(interfaceOf(&kiv::SceneItemOps::sceneItemOps)),
        contract("SceneItemOps::sceneItemOps"));
    add("transform3d", nb::cpp_function(interfaceOf(&kiv::Transform3d::transform3d)),
        contract("Transform3d::transform3d"));
    add("object3d", nb::cpp_function(interfaceOf(&kiv::Object3d::object3d)),
        contract("Object3d::object3d"));
    add("camera", nb::cpp_function(interfaceOf(&kiv::Camera::camera)), contract("Camera::camera"));
    add("light", nb::cpp_function(interfaceOf(&kiv::Light::light)), contract("Light::light"));
    add("material", nb::cpp_function(interfaceOf(&kiv::Material::material)),
        contract("Material::material"));
    add("context_ops", nb::cpp_function(interfaceOf(&kiv::ContextOps::contextOps)),
        contract("ContextOps::contextOps"));
}

void bindFilter(nb::module_& module)
{
    using Flag = kiv::ChildFilterFlag;
    Class<Flag> flag(module, "ChildFilterFlag");
    flag.def(nb::init<std::string, std::string, bool>(), "name"_a, "label"_a, "value"_a);
    flag.field("name", &Flag::name);
    flag.field("label", &Flag::label);
    flag.field("value", &Flag::value);
    using Info = kiv::ChildInfo;
    Class<Info> info(module, "ChildInfo");
    info.field("name", &Info::name);
    info.field("nodeType", &Info::nodeType);
    info.field("runTimeId", &Info::runTimeId);
}

void bindHierarchy(nb::module_& module)
{
    using kiv::Hierarchy;
    Class<Hierarchy> type(module, "Hierarchy");
    type.function("createItem", &Hierarchy::createItem, "path"_a);
    type.def_static("of", &Hierarchy::hierarchy, "item"_a, contract("Hierarchy::hierarchy"));
    type.property("sceneItem", &Hierarchy::sceneItem);
    type.property("hasChildren", &Hierarchy::hasChildren);
    type.property("children", &Hierarchy::children);
    type.def("__iter__", [](const Hierarchy& self) { return nb::iter(nb::cast(self.children())); });
    type.method("hasFilteredChildren", &Hierarchy::hasFilteredChildren, "filter"_a);
    type.method("filteredChildren", &Hierarchy::filteredChildren, "filter"_a);
    type.property("defaultChildFilter", &Hierarchy::defaultChildFilter);
    type.property("parent", &Hierarchy::parent);
    type.property("defaultParent", &Hierarchy::defaultParent);
    type.method("createChildCmd", &Hierarchy::createChildCmd, "node_type"_a, "name"_a);
    type.method("insertChildCmd", &Hierarchy::insertChildCmd, "child"_a,
                "before"_a.none() = nb::none());
    type.method("createGroupCmd", &Hierarchy::createGroupCmd, "members"_a, "name"_a);
    type.method("reorderCmd", &Hierarchy::reorderCmd, "ordered_list"_a);
    type.method("reorder", &Hierarchy::reorder, "ordered_list"_a);
    type.method("ungroupCmd", &Hierarchy::ungroupCmd);
    type.method("ungroup", &Hierarchy::ungroup);

    using Newer = kiv::Hierarchy_v4_2;
    Class<Newer, Hierarchy> newer(module, "Hierarchy_v4_2");
    newer.def_static("of", &Newer::hierarchy, "item"_a, contract("Hierarchy_v4_2::hierarchy"));
    newer.function("hierarchyOrDefault", &Newer::hierarchyOrDefault, "item"_a);
    newer.property("nbChildren", &Newer::nbChildren);
    newer.def("__len__", &Newer::nbChildren);
    newer.method("child", &Newer::child, "row"_a);
    newer.method("row", &Newer::row, "child"_a);
    newer.method("childRange", &Newer::childRange, "first"_a, "count"_a);
    newer.method("childInfos", &Newer::childInfos, "first"_a, "count"_a);
    newer.method("createChildrenCmd", &Newer::createChildrenCmd, "node_type"_a, "names"_a);

    nb::class_<kiv::HierarchyHandler, PyHierarchyHandler> handler(module, "HierarchyHandler",
                                                                  contract("HierarchyHandler"));
    handler.def(nb::init<>());
    handler.def("hierarchy", &kiv::HierarchyHandler::hierarchy, "item"_a,
                contract("HierarchyHandler::hierarchy"));
    handler.def("create_item", &kiv::HierarchyHandler::createItem, "path"_a,
                contract("HierarchyHandler::createItem"));
    handler.def("root_items", &kiv::HierarchyHandler::rootItems, "gateway"_a = kiv::Path(),
                contract("HierarchyHandler::rootItems"));
}

void bindWalk(nb::module_& module)
{
    using Walk = kiv::SubtreeWalk;
    Class<Walk> type(module, "SubtreeWalk");
    type.def(nb::init<const SceneItem::Ptr&>(), "top"_a);
    type.method("next", &Walk::next);
    type.method("skipSubtree", &Walk::skipSubtree);
    type.property("depth", &Walk::depth);
    type.property("runTimeId", &Walk::runTimeId);
    type.property("name", [](const Walk& self) { return self.name().string(); });
    type.property("nodeType", &Walk::nodeType);
    type.property("path", &Walk::path);
    type.property("item", &Walk::item);
    type.def("__iter__", [](nb::object self) { return self; });
    type.def(
        "__next__",
        [](nb::object self) {
            if (!nb::inst_ptr<Walk>(self)->next()) {
                throw nb::stop_iteration();
            }
            return self;
        },
        "The walk itself, at the next item.");
}

void bindOps(nb::module_& module)
{
    Class<kiv::Duplicate> duplicate(module, "Duplicate");
    duplicate.def(nb::init<>());
    duplicate.def(nb::init<SceneItem::Ptr, kiv::UndoableCommand::Ptr>(), "item"_a,
                  "undoable_command"_a);
    duplicate.field("item", &kiv::Duplicate::item);
    duplicate.field("undoableCommand", &kiv::Duplicate::undoableCommand);
    Class<kiv::Rename> rename(module, "Rename");
    rename.def(nb::init<>());
    rename.def(nb::init<SceneItem::Ptr, kiv::UndoableCommand::Ptr>(), "item"_a,
               "undoable_command"_a);
    rename.field("item", &kiv::Rename::item);
    rename.field("undoableCommand", &kiv::Rename::undoableCommand);

    using kiv::SceneItemOps;
    Class<SceneItemOps> type(module, "SceneItemOps");
    type.def_static("of", &SceneItemOps::sceneItemOps, "item"_a,
                    contract("SceneItemOps::sceneItemOps"));
    type.method("setItem", &SceneItemOps::setItem, "item"_a);
    type.property("sceneItem", &SceneItemOps::sceneItem);
    type.property("path", &SceneItemOps::path);
    type.method("deleteItemCmd", &SceneItemOps::deleteItemCmd);
    type.method("deleteItem", &SceneItemOps::deleteItem);
    type.method("duplicateItemCmd", &SceneItemOps::duplicateItemCmd);
    type.method("duplicateItem", &SceneItemOps::duplicateItem);
    type.method("validName", &SceneItemOps::validName, "name"_a);
    type.method("renameItemCmd", &SceneItemOps::renameItemCmd, "new_name"_a);
    type.method("renameItem", &SceneItemOps::renameItem, "new_name"_a);
    nb::class_<kiv::SceneItemOpsHandler, PyOpsHandler> handler(module, "SceneItemOpsHandler",
                                                               contract("SceneItemOpsHandler"));
    handler.def(nb::init<>());
    handler.def("scene_item_ops", &kiv::SceneItemOpsHandler::sceneItemOps, "item"_a,
                contract("SceneItemOpsHandler::sceneItemOps"));
}

void bindMenus(nb::module_& module)
{
    using kiv::ContextItem;
    Class<ContextItem> entry(module, "ContextItem");
    entry.def(nb::init<std::string, std::string, std::string, bool, bool, bool, bool, bool>(),
              "item"_a, "label"_a, "image"_a = "", "has_children"_a = false, "checkable"_a = false,
              "checked"_a = false, "exclusive"_a = false, "enabled"_a = true);
    entry.def_static(
        "make_separator",
        [](std::string label) {
            return ContextItem(ContextItem::SeparatorTag(), std::move(label));
        },
        "label"_a = "", contract("ContextItem::SeparatorTag"));
    entry.field("item", &ContextItem::item);
    entry.field("label", &ContextItem::label);
    entry.field("image", &ContextItem::image);
    entry.field("hasChildren", &ContextItem::hasChildren);
    entry.field("checkable", &ContextItem::checkable);
    entry.field("checked", &ContextItem::checked);
    entry.field("exclusive", &ContextItem::exclusive);
    entry.field("enabled", &ContextItem::enabled);
    entry.field("separator", &ContextItem::separator);

    using kiv::ContextOps;
    Class<ContextOps> type(module, "ContextOps");
    type.def_static("of", &ContextOps::contextOps, "item"_a, contract("ContextOps::contextOps"));
    type.property("sceneItem", &ContextOps::sceneItem);
    type.method("items", &ContextOps::items, "item_path"_a = ContextOps::ItemPath());
    type.method("doOp", &ContextOps::doOp, "item_path"_a);
    type.method("doOpCmd", &ContextOps::doOpCmd, "item_path"_a);
    nb::class_<kiv::ContextOpsHandler, PyMenuHandler> handler(module, "ContextOpsHandler",
                                                              contract("ContextOpsHandler"));
    handler.def(nb::init<>());
    handler.def("context_ops", &kiv::ContextOpsHandler::contextOps, "item"_a,
                contract("ContextOpsHandler::contextOps"));
}

} // namespace

void bindItems(nb::module_& module)
{
    bindItem(module);
    bindFilter(module);
    bindHierarchy(module);
    bindWalk(module);
    bindOps(module);
    bindMenus(module);
}

void bindItemShortcuts(nb::module_& module)
{
    bindShortcuts(module.attr("SceneItem"));
}

} // namespace bound
