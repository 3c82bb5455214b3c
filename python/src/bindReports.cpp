#include <sstream>

#include "kiv/host/comparison.h"
#include "kiv/host/inspection.h"
#include "kiv/host/itemCondition.h"
#include "kiv/host/itemPattern.h"
#include "kiv/host/recorder.h"
#include "kiv/host/sceneWatch.h"
#include "kiv/host/undoHistory.h"

#include "lifetimes.h"
#include "observers.h"
#include "values.h"

// What differs between scenes, which items match, and what happens in a host.

namespace bound {

namespace {

namespace host = kiv::host;
using kiv::SceneItem;

void bindComparison(nb::module_& module)
{
    module.attr("ATTRIBUTE") = host::kAttribute;
    module.attr("MATERIAL") = host::kMaterial;
    using host::Difference;
    Class<Difference> type(module, "Difference", "host::Difference");
    using Kind = Difference::Kind;
    enumeration<Kind>(type, "Kind", "host::Difference::Kind",
                      {{"Added", Kind::Added},
                       {"Removed", Kind::Removed},
                       {"Moved", Kind::Moved},
                       {"Renamed", Kind::Renamed},
                       {"Reordered", Kind::Reordered},
                       {"Changed", Kind::Changed}});
    type.field("kind", &Difference::kind);
    type.field("before", &Difference::before).field("after", &Difference::after);
    type.field("group", &Difference::group).field("name", &Difference::name);
    type.property("was", [](const Difference& self) { return pythonValue(self.was); });
    type.def_prop_ro(
        "is_", [](const Difference& self) { return pythonValue(self.is); },
        contract("host::Difference::is"));
    function(
        module, "host::", "compare",
        [](const SceneItem::Ptr& before, const SceneItem::Ptr& after, double tolerance, bool values,
           std::function<bool(const std::string&, const std::string&)> counts,
           host::OnVisit onVisit) {
            return host::compare(before, after,
                                 {tolerance, values, std::move(counts), std::move(onVisit)});
        },
        "before"_a, "after"_a, nb::kw_only(), "tolerance"_a = 0.0, "values"_a = true,
        "counts"_a.none() = nb::none(), "on_visit"_a.none() = nb::none());
    function(
        module, "host::", "isSame",
        [](const std::string& type_, nb::handle one, nb::handle other, double tolerance) {
            return host::isSame(cppValue(one, type_), cppValue(other, type_), tolerance);
        },
        "type"_a, "one"_a, "other"_a, "tolerance"_a);
    function(
        module, "host::", "textOf", [](Kind kind) { return host::textOf(kind); }, "kind"_a);
}

void bindPatterns(nb::module_& module)
{
    using host::ItemCondition;
    Class<ItemCondition> type(module, "ItemCondition", "host::ItemCondition");
    type.def(nb::init<const std::string&, bool>(), "text"_a, "ignores_case"_a = false);
    type.property("name", &ItemCondition::name);
    type.method("holds", &ItemCondition::holds, "item"_a);
    type.method("holdsForMetadata", &ItemCondition::holdsForMetadata, "item"_a);
    type.method(
        "holdsFor",
        [](const ItemCondition& self, const std::string& valueType, nb::handle value) {
            return self.holdsFor(cppValue(value, valueType));
        },
        "type"_a, "value"_a.none());
    function(module, "host::", "isLike", &host::isLike, "text"_a, "pattern"_a,
             "ignores_case"_a = false);
    function(module, "host::", "isPattern", &host::isPattern, "text"_a);
    function(module, "host::", "itemsLike", &host::itemsLike, "root"_a, "current"_a, "pattern"_a,
             "on_visit"_a.none() = nb::none());
}

void bindInspection(nb::module_& module)
{
    using host::Inspection;
    Class<Inspection> type(module, "Inspection", "host::Inspection");
    using RunTime = Inspection::RunTime;
    Class<RunTime> runTime(type, "RunTime", "host::Inspection::RunTime");
    runTime.field("id", &RunTime::id).field("name", &RunTime::name);
    runTime.field("handlers", &RunTime::handlers).field("gateways", &RunTime::gateways);
    using Observed = Inspection::Observed;
    Class<Observed> observed(type, "Observed", "host::Inspection::Observed");
    observed.field("subject", &Observed::subject).field("nbObservers", &Observed::nbObservers);
    type.field("runTimes", &Inspection::runTimes).field("subjects", &Inspection::subjects);
    type.field("observedItems", &Inspection::observedItems);
    type.field("leftovers", &Inspection::leftovers).field("nbNames", &Inspection::nbNames);
    type.field("nbItems", &Inspection::nbItems);
    type.field("residentBytes", &Inspection::residentBytes);
    function(module, "host::", "inspect", &host::inspect, "root"_a.none());
}

/// Watches a scene, for a function.
class Watching : public Calling
{
public:
    using Tell = std::function<void(nb::object)>;

    Watching(Tell tell, const SceneItem::Ptr& root)
        : _tell(std::move(tell)), _watch([this](const auto& change) { call(change); }, root)
    {}

    void end() { _tell = nullptr; }

private:
    void call(const kiv::Notification& change)
    {
        if (_tell && nb::is_alive()) {
            const nb::gil_scoped_acquire held;
            const Call calling(*this);
            const auto tell = _tell; // may end the watch
            tell(told(change));
        }
    }

    Tell _tell;
    const host::SceneWatch _watch;
};

void bindWatch(nb::module_& module)
{
    using Watch = Closable<Watching>;
    auto type = bindClosable<Watching>(module, "SceneWatch", "host::SceneWatch");
    type.def(
        "__init__",
        [](Watch* self, Watching::Tell tell, const SceneItem::Ptr& root) {
            new (self) Watch(std::move(tell), root);
        },
        "tell"_a, "root"_a, contract("host::SceneWatch::SceneWatch"),
        nb::sig("def __init__(self, tell: collections.abc.Callable[[kiv.Notification], None], "
                "root: kiv.SceneItem) -> None"));
    function(
        module, "host::", "textOf",
        [](const kiv::Notification& notification) { return host::textOf(notification); },
        "notification"_a);
}

using Inputs = std::vector<std::shared_ptr<host::Recorder::Input>>;

/// A recorder with its inputs, which end before it.
class Recording
{
public:
    Recording(host::Recorder::Write write, const SceneItem::Ptr& root,
              const std::shared_ptr<host::UndoHistory>& history)
        : _recorder(std::move(write), root, history)
    {}
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording()
    {
        while (!_inputs.empty()) {
            _inputs.pop_back();
        }
    }

    std::weak_ptr<host::Recorder::Input> begin(const std::string& text)
    {
        return _inputs.emplace_back(std::make_shared<host::Recorder::Input>(_recorder, text));
    }

    /// Ends the input, and those inside it.
    void end(const std::shared_ptr<host::Recorder::Input>& input)
    {
        while (std::find(_inputs.begin(), _inputs.end(), input) != _inputs.end()) {
            _inputs.pop_back();
        }
    }

private:
    host::Recorder _recorder;
    Inputs _inputs; ///< The outer ones first.
};

using Recorder = Closable<Recording>;

/// An input as a block of Python.
struct InputBlock
{
    Recorder* recorder; ///< The block keeps it.
    std::string text;
    std::weak_ptr<host::Recorder::Input> input{};
};

/// What writes a record: its exceptions must not reach the recorder.
host::Recorder::Write writer(std::function<void(const host::Record&)> write)
{
    return [write = std::move(write)](const host::Record& record) {
        try {
            write(record);
        } catch (nb::python_error& error) {
            const nb::gil_scoped_acquire held;
            error.discard_as_unraisable("kiv.host.Recorder");
        }
    };
}

void bindRecords(nb::module_& module)
{
    using host::Record;
    Class<Record> record(module, "Record", "host::Record");
    record.def(
        "__init__",
        [](Record* self, std::uint64_t id, std::uint64_t cause, double time, std::string kind,
           std::string text) {
            new (self) Record{id, cause, time, std::move(kind), std::move(text)};
        },
        "id"_a = 0, "cause"_a = 0, "time"_a = 0.0, "kind"_a = "", "text"_a = "");
    record.field("id", &Record::id).field("cause", &Record::cause).field("time", &Record::time);
    record.field("kind", &Record::kind).field("text", &Record::text);
    record.def("__repr__", [](const Record& self) {
        return nb::str("<Record {} {!r} {!r}>").format(self.id, self.kind, self.text);
    });
    function(module, "host::", "jsonLine", &host::jsonLine, "record"_a);
    function(
        module, "host::", "readRecords",
        [](const std::string& lines) {
            std::istringstream stream(lines);
            return host::readRecords(stream);
        },
        "lines"_a);
}

void bindRecorder(nb::module_& module)
{
    auto type = bindClosable<Recording>(module, "Recorder", "host::Recorder");
    type.def(
        "__init__",
        [](Recorder* self, std::function<void(const host::Record&)> write,
           const SceneItem::Ptr& root, const std::shared_ptr<host::UndoHistory>& history) {
            new (self) Recorder(writer(std::move(write)), root, history);
        },
        "write"_a, "root"_a, "history"_a.none() = nb::none(), contract("host::Recorder::Recorder"));
    Class<InputBlock> block(type, "Input", "host::Recorder::Input");
    type.def(
        "input",
        [](Recorder& self, std::string text) {
            return InputBlock{&self, std::move(text)};
        },
        "text"_a, nb::keep_alive<0, 1>(), contract("host::Recorder::Input"));
    block.method(
        "failed",
        [](InputBlock& self, const std::string& reason) {
            if (const auto input = self.input.lock()) {
                input->failed(reason);
            }
        },
        "reason"_a);
    block.def(
        "__enter__",
        [](InputBlock& self) -> InputBlock& {
            self.input = (*self.recorder)->begin(self.text);
            return self;
        },
        nb::rv_policy::reference);
    block.def(
        "__exit__",
        [](InputBlock& self, nb::handle, nb::handle raised, nb::handle) {
            if (const auto input = self.input.lock()) {
                if (!raised.is_none()) {
                    input->failed(nb::cast<std::string>(nb::str(raised)));
                }
                (*self.recorder)->end(input);
            }
        },
        "type"_a.none(), "value"_a.none(), "traceback"_a.none(),
        "Ends the input. What the block raises is recorded as the reason why it failed.");
}

void bindReplay(nb::module_& module)
{
    using host::Divergence;
    Class<Divergence> type(module, "Divergence", "host::Divergence");
    type.field("input", &Divergence::input);
    type.field("recorded", &Divergence::recorded).field("now", &Divergence::now);
    function(
        module, "host::", "replay",
        [](const std::vector<host::Record>& records, std::function<void(const std::string&)> run,
           const SceneItem::Ptr& root, const std::shared_ptr<host::UndoHistory>& history) {
            const auto recorded = [&](const std::string& input) {
                try {
                    run(input);
                } catch (nb::python_error& error) {
                    throw std::runtime_error(nb::str(error.value()).c_str()); // not its traceback
                }
            };
            return host::replay(records, recorded, root, history);
        },
        "records"_a, "run"_a, "root"_a, "history"_a.none() = nb::none());
}

} // namespace

void bindObservedItems(nb::module_& module)
{
    using kiv::ObservedItem;
    Class<ObservedItem> type(module, "ObservedItem");
    type.property("interfaceName", [](const ObservedItem& self) { return self.interfaceName; });
    type.field("path", &ObservedItem::path).field("nbObservers", &ObservedItem::nbObservers);
    function(module, "", "observedItems", &kiv::observedItems);
}

void bindReports(nb::module_& module)
{
    bindComparison(module);
    bindPatterns(module);
    bindInspection(module);
    bindWatch(module);
    bindRecords(module);
    bindRecorder(module);
    bindReplay(module);
}

} // namespace bound
