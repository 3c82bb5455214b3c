#include <algorithm>
#include <map>
#include <nanobind/stl/bind_map.h>

#include "kiv/kit/announce.h"
#include "kiv/kit/attributeTable.h"
#include "kiv/kit/command.h"
#include "kiv/kit/handlers.h"
#include "kiv/kit/names.h"
#include "kiv/kit/tree.h"

#include "lifetimes.h"
#include "overrides.h"
#include "values.h"

NB_MAKE_OPAQUE(Kiv_v4::kit::AttributeTable::Metadata)

namespace bound {

namespace {

namespace kit = kiv::kit;
using kiv::Path;
using kiv::SceneItem;

/// A Python object as data that are not in the tree.
kit::Tree::Part partOf(nb::object object)
{
    if (object.is_none()) {
        return nullptr;
    }
    return {object.release().ptr(), [](void* held) {
                if (const nb::detail::cleanup_guard alive; alive) {
                    Py_DECREF(static_cast<PyObject*>(held));
                }
            }};
}

nb::object objectOf(const kit::Tree::Part& part)
{
    return part ? nb::borrow(static_cast<PyObject*>(part.get())) : nb::none();
}

class PyTree : public Derivable<kit::Tree>
{
public:
    using Derivable::Derivable;
    using Children = std::vector<Child>;
    using Names = std::vector<std::string>;
    KIV_CONST_METHOD(std::vector<Path>, roots, (const Path& gateway), (gateway))
    KIV_PURE_CONST_METHOD(std::string, nodeType, (const Path& path), (path))
    KIV_PURE_CONST_METHOD(Children, children, (const Path& path), (path))
    KIV_CONST_METHOD(bool, accepts, (const Path& parent, const std::string& nodeType),
                     (parent, nodeType))
    KIV_CONST_METHOD(bool, isEditable, (const Path& path), (path))
    KIV_METHOD(void, rename, (const Path& path, const std::string& name), (path, name))
    KIV_METHOD(void, reorder, (const Path& parent, const Names& names), (parent, names))
    KIV_CONST_METHOD(std::string, freeName,
                     (const Path& parent, const std::string& name, const std::string& own),
                     (parent, name, own))

    [[nodiscard]] Part make(const std::string& nodeType) override
    {
        static const Name name("make");
        return part(name, nodeType, [&] { return Bound::make(nodeType); });
    }
    [[nodiscard]] Part copy(const Path& path) override
    {
        static const Name name("copy");
        return part(name, path, [&] { return Bound::copy(path); });
    }
    [[nodiscard]] Part take(const Path& path) override
    {
        static const Name name("take");
        return part(name, path, [&] { return Bound::take(path); });
    }
    void put(const Path& path, const Part& part, std::size_t row) override
    {
        const nb::gil_scoped_acquire held;
        static const Name name("put");
        if (!_python.overrides(name.get(), nb::type<Bound>())) {
            Bound::put(path, part, row);
            return;
        }
        constexpr std::size_t last = PY_SSIZE_T_MAX;
        _python.self().attr(name.get())(path, objectOf(part), std::min(row, last));
    }

private:
    template <class Argument, class Otherwise>
    Part part(const Name& name, const Argument& argument, Otherwise otherwise)
    {
        const nb::gil_scoped_acquire held;
        return _python.overrides(name.get(), nb::type<Bound>())
                   ? partOf(_python.self().attr(name.get())(argument))
                   : otherwise();
    }
};

void bindTree(nb::module_& module)
{
    using kit::Tree;
    Class<Tree, PyTree> type(module, "Tree", "kit::Tree");
    Class<Tree::Child> child(type, "Child", "kit::Tree::Child");
    child.def(
        "__init__",
        [](Tree::Child* self, std::string name, std::string nodeType) {
            new (self) Tree::Child{std::move(name), std::move(nodeType)};
        },
        "name"_a, "node_type"_a);
    child.def(
        "__init__",
        [](Tree::Child* self, const std::pair<std::string, std::string>& both) {
            new (self) Tree::Child{both.first, both.second};
        },
        "name_and_node_type"_a);
    child.field("name", &Tree::Child::name).field("nodeType", &Tree::Child::nodeType);
    nb::implicitly_convertible<nb::tuple, Tree::Child>();
    type.def(nb::init<Path>(), "root"_a);
    type.property("root", [](const Tree& self) { return self.root(); });
    type.method("covers", &Tree::covers, "path"_a);
    type.method("roots", &Tree::roots, "gateway"_a = Path());
    type.method("nodeType", &Tree::nodeType, "path"_a);
    type.method("children", &Tree::children, "path"_a);
    type.method("accepts", &Tree::accepts, "parent"_a, "node_type"_a);
    type.method("isEditable", &Tree::isEditable, "path"_a);
    type.method(
        "make",
        [](Tree& self, const std::string& nodeType) { return objectOf(self.make(nodeType)); },
        "node_type"_a);
    type.method(
        "copy", [](Tree& self, const Path& path) { return objectOf(self.copy(path)); }, "path"_a);
    type.method(
        "take", [](Tree& self, const Path& path) { return objectOf(self.take(path)); }, "path"_a);
    type.method(
        "put",
        [](Tree& self, const Path& path, nb::object part, std::size_t row) {
            self.put(path, partOf(std::move(part)), row);
        },
        "path"_a, "part"_a.none(), "row"_a);
    type.method("rename", &Tree::rename, "path"_a, "name"_a);
    type.method("reorder", &Tree::reorder, "parent"_a, "names"_a);
    type.method("freeName", &Tree::freeName, "parent"_a, "name"_a, "own"_a = "");
    type.method("item", &Tree::item, "path"_a);
    function(module, "kit::", "registerTree", &kit::registerTree, "run_time_id"_a, "tree"_a);
}

/// A Python function that an attribute table calls. The Python object of the table keeps it, where
/// the collector sees it, and lives as long as the table, which is a part of it.
class Kept
{
public:
    Kept(nb::handle table, nb::handle function) : _function(function)
    {
        if (!nb::hasattr(table, "_functions")) {
            table.attr("_functions") = nb::list();
        }
        nb::borrow<nb::list>(table.attr("_functions")).append(function);
    }

    template <class... Arguments>
    nb::object operator()(const Arguments&... arguments) const
    {
        return _function(arguments...);
    }

private:
    nb::handle _function;
};

using kit::AttributeTable;
using Notify = std::function<void(const Path&)>;

Notify notifier(nb::handle table, nb::handle function)
{
    return [kept = Kept(table, function)](const Path& path) {
        const nb::gil_scoped_acquire held;
        kept(path);
    };
}

/// The row of a name and a type; its functions take and give plain Python.
AttributeTable::Row rowOf(nb::handle table, const std::string& name, const std::string& type,
                          nb::handle get, nb::handle set)
{
    AttributeTable::Row row;
    row.name = name;
    row.type = type;
    if (!get.is_none()) {
        row.get = [kept = Kept(table, get), type](const Path& path) {
            const nb::gil_scoped_acquire held;
            return cppValue(kept(path), type);
        };
    }
    if (!set.is_none()) {
        row.set = [kept = Kept(table, set)](const Path& path, const kiv::AttributeVariant& value) {
            const nb::gil_scoped_acquire held;
            kept(path, pythonValue(value));
        };
    }
    return row;
}

/// The attributes that `get(path)` returns as a mapping of names to plain Python.
AttributeTable::ItemValues itemValuesOf(nb::handle table, nb::handle get, nb::handle set)
{
    AttributeTable::ItemValues values;
    values.get = [kept = Kept(table, get)](const Path& path) {
        const nb::gil_scoped_acquire held;
        std::vector<std::pair<std::string, kiv::AttributeVariant>> all;
        for (const auto& [name, value] : nb::cast<nb::dict>(kept(path))) {
            all.emplace_back(nb::cast<std::string>(name), ownValue(value));
        }
        return all;
    };
    if (!set.is_none()) {
        values.set = [kept = Kept(table, set)](const Path& path, const std::string& name,
                                               const kiv::AttributeVariant& value) {
            const nb::gil_scoped_acquire held;
            kept(path, name, pythonValue(value));
        };
    }
    return values;
}

nb::object addRow(nb::object self, const std::string& name, const std::string& valueType,
                  nb::object get, nb::object set, std::string displayName, nb::object defaultValue,
                  std::vector<std::string> enumValues, std::string nativeType,
                  AttributeTable::Metadata metadata, const nb::list& alsoNotified)
{
    auto row = rowOf(self, name, valueType, get, set);
    row.displayName = std::move(displayName);
    row.defaultValue = cppValue(defaultValue, valueType);
    row.enumValues = std::move(enumValues);
    row.nativeType = std::move(nativeType);
    row.metadata = std::move(metadata);
    for (const auto function : alsoNotified) {
        row.alsoNotified.push_back(notifier(self, function));
    }
    nb::cast<AttributeTable&>(self).add(std::move(row));
    return self;
}

void bindTable(nb::module_& module)
{
    using Row = AttributeTable::Row;
    using Ptr = AttributeTable::Ptr; // by which the Python object is kept
    nb::bind_map<AttributeTable::Metadata>(module, "Metadata",
                                           contract("kit::AttributeTable::Metadata"));
    Class<AttributeTable> type(module, "AttributeTable", "kit::AttributeTable", nb::dynamic_attr());
    type.def(nb::init<>());
    type.def("add", &addRow, "name"_a, "type"_a, "get"_a.none() = nb::none(),
             "set"_a.none() = nb::none(), nb::kw_only(), "display_name"_a = "",
             "default_value"_a.none() = nb::none(), "enum_values"_a = std::vector<std::string>(),
             "native_type"_a = "", "metadata"_a = AttributeTable::Metadata(),
             "also_notified"_a = nb::list(),
             (std::string(contract("kit::AttributeTable::add")) +
              "\n\n`get(path)` gives the value as plain Python, `set(path, value)` writes it.")
                 .c_str());
    type.def(
        "add_item_values",
        [](nb::object self, nb::callable get, nb::object set) {
            nb::cast<AttributeTable&>(self).addItemValues(itemValuesOf(self, get, set));
            return self;
        },
        "get"_a, "set"_a.none() = nb::none(),
        (std::string(contract("kit::AttributeTable::addItemValues")) +
         "\n\n`get(path)` returns a dictionary of names and plain Python values, `set(path, name, "
         "value)` writes one of them.")
            .c_str());
    type.def(
        "also_notify",
        [](nb::object self, const std::string& name, nb::callable notify) {
            nb::cast<AttributeTable&>(self).alsoNotify(name, notifier(self, notify));
            return self;
        },
        "name"_a, "notify"_a, contract("kit::AttributeTable::alsoNotify"));
    type.def(
        "keep_metadata",
        [](nb::object self, nb::callable of) {
            nb::cast<AttributeTable&>(self).keepMetadata(
                [kept = Kept(self, of)](const Path& path,
                                        const std::string& name) -> AttributeTable::Metadata* {
                    const nb::gil_scoped_acquire held;
                    const auto metadata = kept(path, name);
                    return metadata.is_none() ? nullptr
                                              : nb::cast<AttributeTable::Metadata*>(metadata);
                });
            return self;
        },
        "metadata_of"_a, contract("kit::AttributeTable::keepMetadata"));
    type.method(
        "attributes",
        [](const Ptr& self, const SceneItem::Ptr& item) { return self->attributes(item); },
        "item"_a);
    type.def_prop_ro(
        "names",
        [](const AttributeTable& self) {
            std::vector<std::string> names;
            for (const Row& row : self.rows()) {
                names.push_back(row.name);
            }
            return names;
        },
        contract("kit::AttributeTable::rows"));
    type.method(
        "value",
        [](const Ptr& self, const Path& path, const std::string& name) {
            return pythonValue(self->value(path, name));
        },
        "path"_a, "name"_a);
    type.method(
        "setValue",
        [](const Ptr& self, const Path& path, const std::string& name, nb::handle value) {
            const auto* const row = self->row(name);
            self->setValue(path, name, row ? cppValue(value, row->type) : ownValue(value));
        },
        "path"_a, "name"_a, "value"_a);
}

void bindHandlers(nb::module_& module)
{
    function(module, "kit::", "sceneItemOpsHandler", &kit::sceneItemOpsHandler, "make"_a);
    function(module, "kit::", "attributesHandler",
             nb::overload_cast<kit::Maker<kiv::Attributes>>(&kit::attributesHandler), "make"_a);
    function(module, "kit::", "attributesHandler",
             nb::overload_cast<AttributeTable::Ptr>(&kit::attributesHandler), "table"_a);
    function(module, "kit::", "transform3dHandler", &kit::transform3dHandler, "make"_a);
    function(module, "kit::", "object3dHandler", &kit::object3dHandler, "make"_a);
    function(module, "kit::", "lightHandler",
             nb::overload_cast<kit::Maker<kiv::Light>>(&kit::lightHandler), "make"_a);
    function(module, "kit::", "materialHandler", &kit::materialHandler, "make"_a);
    function(module, "kit::", "contextOpsHandler", &kit::contextOpsHandler, "make"_a);
    function(module, "kit::", "uiNodeGraphNodeHandler", &kit::uiNodeGraphNodeHandler, "make"_a);
    function(module, "kit::", "cameraHandler",
             nb::overload_cast<kit::Maker<kiv::Camera>>(&kit::cameraHandler), "make"_a);
    function(module, "kit::", "hierarchyHandler", &kit::hierarchyHandler, "make"_a, "item"_a,
             "roots"_a);
    function(module, "kit::", "command", &kit::command, "run_time_id"_a, "text"_a, "redo"_a,
             "undo"_a, "announce"_a.none() = nb::none());
    function(module, "kit::", "itemCommand", &kit::itemCommand, "run_time_id"_a, "text"_a, "redo"_a,
             "undo"_a, "item"_a, "announce"_a.none() = nb::none());
    function(module, "kit::", "announce", &kit::announce, "change"_a);
    function(module, "kit::", "fitName", &kit::fitName, "name"_a, "unfit"_a);
    using kit::NameIndex;
    Class<NameIndex> names(module, "NameIndex", "kit::NameIndex");
    names.def(nb::init<>());
    names.method("insert", &NameIndex::insert, "name"_a);
    names.method("erase", &NameIndex::erase, "name"_a);
    names.method("uniqueName", &NameIndex::uniqueName, "name"_a);
    names.def("__contains__", &NameIndex::contains);
    names.def("__len__", &NameIndex::size);
}

} // namespace

void bindKit(nb::module_& module)
{
    bindTree(module);
    bindTable(module);
    bindHandlers(module);
}

} // namespace bound
