#include <nanobind/stl/map.h>
#include <nanobind/stl/unique_ptr.h>

#include "kiv/host/childName.h"
#include "kiv/host/errorChannel.h"
#include "kiv/host/hostScene.h"
#include "kiv/host/itemLookup.h"
#include "kiv/host/itemProperties.h"
#include "kiv/host/matrix.h"
#include "kiv/host/outline.h"
#include "kiv/host/pluginLoader.h"
#include "kiv/host/runTimeWatch.h"
#include "kiv/host/transaction.h"
#include "kiv/host/undoHistory.h"

#include "lifetimes.h"
#include "logs.h"
#include "managers.h"
#include "observers.h"
#include "overrides.h"
#include "values.h"

namespace bound {

namespace {

namespace host = kiv::host;
using kiv::SceneItem;
using kiv::UndoableCommand;

class PyHostScene : public Derivable<host::HostScene>
{
public:
    using Derivable::Derivable;
    KIV_METHOD(void, postDelivery, (const kiv::SceneChanged& change), (change))
};

void bindHostScene(nb::module_& module)
{
    using host::HostScene;
    Class<HostScene, kiv::Scene, PyHostScene> type(module, "HostScene", "host::HostScene");
    enumeration<HostScene::Gone>(type, "Gone", "host::HostScene::Gone",
                                 {{"Dropped", HostScene::Gone::Dropped},
                                  {"ComesBack", HostScene::Gone::ComesBack},
                                  {"Kept", HostScene::Gone::Kept}});
    type.def(nb::init<>());
    type.method("follow", &HostScene::follow, "selection"_a, "gone"_a);
    type.method("unfollow", &HostScene::unfollow, "selection"_a);

    using Channel = Closable<host::ErrorChannel>;
    auto channel = bindClosable<host::ErrorChannel>(module, "ErrorChannel", "host::ErrorChannel");
    channel.def(
        "__init__",
        [](Channel* self, nb::callable receive) {
            new (self) Channel(recordReceiver(std::move(receive)));
        },
        "receive"_a, contract("host::ErrorChannel::Receive"));
    using Watch = Closable<host::RunTimeWatch>;
    auto watch = bindClosable<host::RunTimeWatch>(module, "RunTimeWatch", "host::RunTimeWatch");
    watch.def(
        "__init__",
        [](Watch* self, host::RunTimeWatch::Receive receive) {
            new (self) Watch(std::move(receive));
        },
        "receive"_a);
}

void bindTransaction(nb::module_& module)
{
    using Transaction = Closable<host::Transaction>;
    nb::class_<Transaction> type(module, "Transaction", contract("host::Transaction"));
    const auto of = [](const char* name) {
        return contract(std::string("host::Transaction::") + name);
    };
    type.def(nb::init<std::string>(), "name"_a, of("Transaction"));
    type.def(
        "run",
        [](Transaction& self, const UndoableCommand::Ptr& command) {
            self->run(command);
            return command;
        },
        "command"_a.none(), of("run"));
    type.def(
        "commit",
        [](Transaction& self) {
            requireManager();
            self->commit();
        },
        of("commit"));
    type.def(
        "roll_back", [](Transaction& self) { self->rollBack(); }, of("rollBack"));
    type.def_prop_ro(
        "is_open", [](const Transaction& self) { return self.isOpen() && self->isOpen(); },
        of("isOpen"));
    type.def_prop_ro(
        "empty", [](const Transaction& self) { return self->empty(); }, of("empty"));
    type.def("__enter__", [](nb::object self) { return self; });
    type.def(
        "__exit__",
        [](Transaction& self, nb::handle raised, nb::handle, nb::handle) {
            if (self.isOpen() && self->isOpen()) {
                if (raised.is_none()) {
                    requireManager();
                    self->commit();
                } else {
                    self->rollBack();
                }
            }
            self.close();
        },
        "type"_a.none(), "value"_a.none(), "traceback"_a.none(),
        "Commits, or rolls back when the block raises, unless the block has done either.");
}

void bindHistory(nb::module_& module)
{
    using host::UndoHistory;
    Class<UndoHistory, kiv::UndoableCommandMgr> type(module, "UndoHistory", "host::UndoHistory");
    type.constant("kDefaultLimit", UndoHistory::kDefaultLimit);
    type.def(
        "__init__", [](UndoHistory* self, std::size_t limit) { makeEmptied(self, limit); },
        "limit"_a = std::size_t{UndoHistory::kDefaultLimit});
    bindSubjectMembers<UndoHistory>(type);
    type.property("canUndo", &UndoHistory::canUndo);
    type.property("canRedo", &UndoHistory::canRedo);
    type.property("undoText", &UndoHistory::undoText);
    type.property("redoText", &UndoHistory::redoText);
    type.method("undo", &UndoHistory::undo);
    type.method("redo", &UndoHistory::redo);
    type.method("skipUndo", &UndoHistory::skipUndo);
    type.method("skipRedo", &UndoHistory::skipRedo);
    type.property("entries", &UndoHistory::entries);
    type.property("nbDone", &UndoHistory::nbDone);
    type.property("isClean", &UndoHistory::isClean);
    type.method("setClean", &UndoHistory::setClean);
    type.method(
        "drop",
        [](UndoHistory& self, const std::function<bool(nb::object)>& concerns) {
            return self.drop([&](const UndoableCommand& command) {
                return concerns(nb::cast(&command, nb::rv_policy::reference));
            });
        },
        "concerns"_a);
    type.method("dropRunTime", &UndoHistory::dropRunTime, "run_time_id"_a);
    type.method("clear", &UndoHistory::clear);
    type.settable("limit", &UndoHistory::limit, &UndoHistory::setLimit);

    using Merging = Closable<UndoHistory::Merging>;
    type.def(
        "merging", [](UndoHistory& self) { return std::make_unique<Merging>(self); },
        contract("host::UndoHistory::Merging"));
    nb::class_<Merging> merging(type, "Merging", contract("host::UndoHistory::Merging"));
    merging.def("__enter__", [](nb::object self) { return self; });
    merging.def("__exit__", [](Merging& self, nb::args) { self.close(); });

    using Changed = host::UndoHistoryChanged;
    Class<Changed, kiv::Notification> changed(module, "UndoHistoryChanged",
                                              "host::UndoHistoryChanged");
    enumeration<Changed::Change>(changed, "Change", "host::UndoHistoryChanged::Change",
                                 {{"Entered", Changed::Entered},
                                  {"Merged", Changed::Merged},
                                  {"Undone", Changed::Undone},
                                  {"Redone", Changed::Redone},
                                  {"Dropped", Changed::Dropped},
                                  {"Cleaned", Changed::Cleaned}});
    changed.def(nb::init<Changed::Change>(), "change"_a);
    changed.property("change", &Changed::change);
}

void bindProperties(nb::module_& module)
{
    using host::Property;
    Class<Property> property(module, "Property", "host::Property");
    property.field("group", &Property::group).field("name", &Property::name);
    property.field("label", &Property::label).field("type", &Property::type);
    property.field("unit", &Property::unit).field("choices", &Property::choices);
    property.field("isSettable", &Property::isSettable).field("owner", &Property::owner);
    function(module, "host::", "propertyTable", [] { return host::propertyTable(); });
    function(module, "host::", "findProperty", &host::findProperty, nb::rv_policy::reference,
             "group"_a, "name"_a);
    for (const auto& [name, value] : {std::pair("kTransform", host::kTransform),
                                      {"kCamera", host::kCamera},
                                      {"kLight", host::kLight},
                                      {"kObject", host::kObject},
                                      {"kGraphNode", host::kGraphNode},
                                      {"kMillimetres", host::kMillimetres},
                                      {"kSceneUnits", host::kSceneUnits},
                                      {"kDegrees", host::kDegrees}}) {
        module.attr(constantCase(name).c_str()) = value;
    }
    using Properties = host::ItemProperties;
    Class<Properties> type(module, "ItemProperties", "host::ItemProperties");
    type.def(nb::init<const SceneItem::Ptr&>(), "item"_a);
    type.method("of", &Properties::of, nb::rv_policy::reference, "group"_a);
    type.method(
        "value",
        [](const Properties& self, const Property& row) {
            return pythonValue(self.value(row).value_or(kiv::AttributeVariant()));
        },
        "property"_a);
    type.method(
        "setCmd",
        [](const Properties& self, const Property& row, nb::handle value) {
            return self.setCmd(row, cppValue(value, row.type));
        },
        "property"_a, "value"_a);
}

void bindLookUp(nb::module_& module)
{
    function(module, "host::", "freeName", &host::freeName, "parent"_a, "name"_a);
    function(
        module, "host::", "moveUnder",
        [](Closable<host::Transaction>& edits, const SceneItem::Ptr& item,
           const SceneItem::Ptr& parent,
           const SceneItem::Ptr& before) { return host::moveUnder(*edits, item, parent, before); },
        "edits"_a, "item"_a, "parent"_a, "before"_a.none() = nb::none());
    function(module, "host::", "topItems", &host::topItems);
    function(module, "host::", "pathOf", &host::pathOf, "text"_a);
    function(module, "host::", "isSeparator", &host::isSeparator, "character"_a);
    function(module, "host::", "lookUp", &host::lookUp, "root"_a, "current"_a.none(), "text"_a);
    function(module, "host::", "requireItem", &host::requireItem, "root"_a, "current"_a.none(),
             "text"_a);
    function(module, "host::", "nearestName", &host::nearestName, "word"_a, "names"_a);
    function(module, "host::", "suggestion", &host::suggestion, "word"_a, "names"_a);
    function(module, "host::", "inverse", &host::inverse, "matrix"_a);
    function(module, "host::", "gatewayWithoutTransform", &host::gatewayWithoutTransform, "path"_a);
    function(module, "host::", "worldMatrix", &host::worldMatrix, "item"_a);
    function(module, "host::", "ownMatrix", &host::ownMatrix, "item"_a, "world"_a);

    using Filter = host::OutlineFilter;
    Class<Filter> filter(module, "OutlineFilter", "host::OutlineFilter");
    filter.def(
        "__init__",
        [](Filter* self, std::size_t depth, std::string nodeType) {
            new (self) Filter{depth, std::move(nodeType)};
        },
        "depth"_a = std::numeric_limits<std::size_t>::max(), "node_type"_a = "");
    filter.field("depth", &Filter::depth).field("nodeType", &Filter::nodeType);
    filter.method("matches", &Filter::matches, "type"_a);
    using Row = host::OutlineRow;
    Class<Row> row(module, "OutlineRow", "host::OutlineRow");
    row.property("name", [](const Row& self) { return self.name.string(); });
    row.field("nodeType", &Row::nodeType).field("runTimeId", &Row::runTimeId);
    row.field("depth", &Row::depth).field("matches", &Row::matches).field("isLast", &Row::isLast);
    function(module, "host::", "outline", &host::outline, "root"_a, "filter"_a = Filter(),
             "on_visit"_a.none() = nb::none());
    using Counts = host::OutlineCounts;
    Class<Counts> counts(module, "OutlineCounts", "host::OutlineCounts");
    counts.field("items", &Counts::items).field("nodeTypes", &Counts::nodeTypes);
    counts.field("runTimes", &Counts::runTimes);
    counts.field("depth", &Counts::depth).field("breadth", &Counts::breadth);
    function(module, "host::", "countsOf", &host::countsOf, "rows"_a);
    function(module, "host::", "worldBox", &host::worldBox, "item"_a);
    function(module, "host::", "walk", &host::walk, "root"_a, "depth"_a, "visit"_a);
}

void bindPlugins(nb::module_& module)
{
    using host::Plugin;
    Class<Plugin> plugin(module, "Plugin", "host::Plugin");
    plugin.field("name", &Plugin::name).field("file", &Plugin::file);
    plugin.field("interfaceMajor", &Plugin::interfaceMajor)
        .field("interfaceMinor", &Plugin::interfaceMinor);
    plugin.field("runTimes", &Plugin::runTimes);
    nb::exception<host::PluginError>(module, "PluginError",
                                     nb::module_::import_("kiv._kiv").attr("Error"));

    using Loader = host::PluginLoader;
    Class<Loader> type(module, "PluginLoader", "host::PluginLoader");
    type.constant("kPathVariable", Loader::kPathVariable);
    type.def(nb::init<>());
    type.function("filesIn", &Loader::filesIn, "folder"_a);
    type.function("filesOnPath", &Loader::filesOnPath);
    type.method("load", nb::overload_cast<const std::string&>(&Loader::load), "file"_a);
    type.method(
        "load",
        [](Loader& self, const std::vector<std::string>& files) {
            std::vector<std::string> messages;
            for (const auto& error : self.load(files)) {
                messages.emplace_back(error.what());
            }
            return messages;
        },
        "files"_a);
    type.property("plugins", &Loader::plugins);
    type.method("onUnload", &Loader::onUnload, "release"_a);
    type.method("unload", &Loader::unload, "name"_a);
}

} // namespace

void bindHost(nb::module_& module)
{
    bindHostScene(module);
    bindTransaction(module);
    bindHistory(module);
    bindProperties(module);
    bindLookUp(module);
    bindPlugins(module);
}

} // namespace bound
