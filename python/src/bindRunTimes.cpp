#include "kiv/conformance/conformance.h"
#include "kiv/memory/dataModel.h"
#include "kiv/memory/runTime.h"

#include "lifetimes.h"
#include "running.h"

namespace bound {

namespace {

namespace conformance = kiv::conformance;

void bindModel(nb::module_& module)
{
    using Model = kiv::memory::DataModel;
    Class<Model> type(module, "DataModel", "memory::DataModel");
    type.constant("kSeparator", std::string(1, Model::kSeparator));
    type.property("root", [](const Model& self) { return self.root(); });
    type.method("item", &Model::item, "path"_a);
    type.def("__len__", &Model::size, contract("memory::DataModel::size"));
    type.method("make", &Model::make, "parent"_a, "node_type"_a, "name"_a);
    type.method("makeAll", &Model::makeAll, "parent"_a, "node_type"_a, "names"_a);
    type.method("rename", &Model::rename, "item"_a, "name"_a);
    type.method("move", &Model::move, "item"_a, "parent"_a);
    type.method("remove", &Model::remove, "item"_a);
    type.method("uniqueName", &Model::uniqueName, "parent"_a, "name"_a);
    type.method("setEnumValues", &Model::setEnumValues, "item"_a, "attribute"_a, "values"_a);
    type.method("setNativeType", &Model::setNativeType, "item"_a, "attribute"_a, "type"_a);
    type.method("metadataKeys", &Model::metadataKeys, "item"_a, "attribute"_a);
    type.method("setGateway", &Model::setGateway, "item"_a, "nested_run_time_id"_a);
    type.method("gateway", &Model::gateway, "item"_a);
    type.method("setBoundingBox", &Model::setBoundingBox, "item"_a, "box"_a);
    type.method("setBoundingBoxCmd", &Model::setBoundingBoxCmd, "item"_a, "box"_a);
    type.method("boundingBox", &Model::boundingBox, "item"_a);
    type.method("setMaterials", &Model::setMaterials, "item"_a, "materials"_a);
    type.method("setMaterialsCmd", &Model::setMaterialsCmd, "item"_a, "materials"_a);
}

void bindCandidate(nb::module_& module)
{
    using conformance::Candidate;
    Class<Candidate> type(module, "Candidate", "conformance::Candidate");
    type.def(
        "__init__",
        [](Candidate* self, std::string name, std::function<MadeInPython()> make) {
            new (self) Candidate{std::move(name), [make = std::move(make)] {
                                     const nb::gil_scoped_acquire held;
                                     return running(make());
                                 }};
        },
        "name"_a, "make"_a,
        "A run-time by a function that makes it: it returns an object, which is closed by its "
        "`close()`, or by "
        "its end when it has none, and the paths of its roots.");
    type.field("name", &Candidate::name);
    function(module, "conformance::", "pluginCandidate", &conformance::pluginCandidate, "file"_a);
}

void bindFindings(nb::module_& module)
{
    using conformance::Contract;
    Class<Contract> contractType(module, "Contract", "conformance::Contract");
    contractType.field("id", &Contract::id).field("statement", &Contract::statement);
    contractType.field("advice", &Contract::advice);
    using conformance::Finding;
    Class<Finding> finding(module, "Finding", "conformance::Finding");
    finding.field("contract", &Finding::contract)
        .field("item", &Finding::item)
        .field("doing", &Finding::doing);
    finding.field("expected", &Finding::expected)
        .field("seen", &Finding::seen)
        .field("seed", &Finding::seed);
    using conformance::Outcome;
    Class<Outcome> outcome(module, "Outcome", "conformance::Outcome");
    enumeration<Outcome::Status>(
        outcome, "Status", "conformance::Outcome::Status",
        {{"Held", Outcome::Held}, {"Broken", Outcome::Broken}, {"Skipped", Outcome::Skipped}});
    outcome.field("contract", &Outcome::contract).field("status", &Outcome::status);
    outcome.field("findings", &Outcome::findings).field("reason", &Outcome::reason);
    using conformance::Report;
    Class<Report> report(module, "Report", "conformance::Report");
    report.field("candidate", &Report::candidate).field("seed", &Report::seed);
    report.field("outcomes", &Report::outcomes);
    report.property("passed", &Report::passed);
    report.property("findings", &Report::findings);
    report.def(
        "text", [](const Report& self) { return conformance::text(self); },
        contract("conformance::text"));
    report.def(
        "json", [](const Report& self) { return conformance::json(self); },
        contract("conformance::json"));
    report.def(
        "junit", [](const Report& self) { return conformance::junit(self); },
        contract("conformance::junit"));
}

} // namespace

void bindMemory(nb::module_& module)
{
    bindModel(module);
    using RunTime = Closable<kiv::memory::RunTime>;
    auto type = bindClosable<kiv::memory::RunTime>(module, "RunTime", "memory::RunTime");
    type.def(nb::init<std::string, std::string>(), "name"_a = "memory", "root_name"_a = "world",
             contract("memory::RunTime::RunTime"));
    type.def_prop_ro(
        "id", [](const RunTime& self) { return self->id(); }, contract("memory::RunTime::id"));
    type.def_prop_ro(
        "model", [](const RunTime& self) -> kiv::memory::DataModel& { return self->model(); },
        nb::rv_policy::reference_internal, contract("memory::RunTime::model"));
}

void bindConformance(nb::module_& module)
{
    bindCandidate(module);
    bindFindings(module);
    using conformance::Options;
    Class<Options> options(module, "Options", "conformance::Options");
    options.def(nb::init<>());
    options.field("seed", &Options::seed).field("nbSteps", &Options::nbSteps);
    options.field("maxItems", &Options::maxItems).field("timeLimit", &Options::timeLimit);
    options.field("only", &Options::only).field("showDiagnostics", &Options::showDiagnostics);
    function(module, "conformance::", "contracts", [] { return conformance::contracts(); });
    function(module, "conformance::", "check", &conformance::check, "candidate"_a,
             "options"_a = Options());
}

} // namespace bound
