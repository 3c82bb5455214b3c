#include <algorithm>

#include "kiv/conformance/conformance.h"
#include "kiv/scene.h"

#include "childProcess.h"
#include "probes.h"

namespace Kiv_v4::conformance {

namespace {

bool isWanted(const std::string& contract, const Options& options)
{
    return options.only.empty() ||
           std::any_of(options.only.begin(), options.only.end(), [&](const std::string& begin) {
               return contract.compare(0, begin.size(), begin) == 0;
           });
}

bool isWanted(const Probe& probe, const Options& options)
{
    return std::any_of(probe.contracts.begin(), probe.contracts.end(),
                       [&](const char* contract) { return isWanted(contract, options); });
}

void enter(Report& report, Finding finding)
{
    const auto outcome =
        std::find_if(report.outcomes.begin(), report.outcomes.end(),
                     [&](const Outcome& one) { return one.contract.id == finding.contract; });
    if (outcome != report.outcomes.end()) {
        finding.seed = report.seed;
        outcome->status = Outcome::Broken;
        outcome->findings.push_back(std::move(finding));
    }
}

void skip(Report& report, const std::string& contract, const std::string& reason)
{
    for (auto& outcome : report.outcomes) {
        if (outcome.contract.id == contract && outcome.status == Outcome::Held) {
            outcome.status = Outcome::Skipped;
            outcome.reason = reason;
        }
    }
}

/// If the process ends before the probe has finished, that is a finding about the operation in
/// progress.
void enterEnd(Report& report, const Progress& last, const std::string& seen)
{
    enter(report, {last.contract.empty() ? "create" : last.contract, last.item, last.doing,
                   "an answer, null or an exception that is expected there", seen, report.seed});
}

void enter(Report& report, const Ending& ending)
{
    for (const auto& record : ending.records) {
        if (record.size() == 6 && record[0] == "found") {
            enter(report, {record[1], record[2], record[3], record[4], record[5], report.seed});
        } else if (record.size() == 3 && record[0] == "skipped") {
            skip(report, record[1], record[2]);
        } else if (record.size() == 2 && record[0] == "escaped") {
            enterEnd(report, ending.last, "an exception: " + record[1]);
        }
    }
    if (!ending.death.empty()) {
        enterEnd(report, ending.last, ending.death);
    }
}

void runProbe(const Probe& probe, const Candidate& candidate, const Options& options,
              ToParent& parent)
{
    Scene::initializeInstance(std::make_shared<Scene>());
    Checking checking(candidate, options, parent);
    checking.at(probe.contracts.front(), "beginning");
    probe.run(checking);
}

} // namespace

const std::vector<Probe>& probes()
{
    static const std::vector<Probe> all = {
        {{"create", "paths.agree", "paths.text", "paths.unknown"}, checkPaths},
        {{"names.fit"}, checkNames},
        {{"hierarchy.children", "hierarchy.rows", "hierarchy.parents"}, checkHierarchy},
        {{"hierarchy.order"}, checkOrder},
        {{"attributes.types", "attributes.values", "attributes.texts"}, checkAttributes},
        {{"transforms.matrices", "transforms.values"}, checkTransforms},
        {{"commands.making"}, checkMaking},
        {{"commands.failing", "commands.undo", "commands.redo", "notifications.complete",
          "notifications.time", "notifications.paths"},
         checkEdits},
        {{"stale.paths", "stale.items"}, checkStale},
        {{"scene.none"}, checkWithoutScene},
        {{"observers.throwing"}, checkThrowingObservers},
        {{"memory.failing"}, checkFailingAllocations},
        {{"registration.ends", "registration.again"}, checkRegistration},
        {{"plugin.unloads"}, checkUnloading},
    };
    return all;
}

Report check(const Candidate& candidate, const Options& options)
{
    Report report{candidate.name, options.seed, {}};
    for (const auto& contract : contracts()) {
        if (isWanted(contract.id, options)) {
            report.outcomes.push_back({contract, Outcome::Held, {}, {}});
        }
    }
    for (const auto& probe : probes()) {
        if (isWanted(probe, options)) {
            enter(report, runInChild(options, [&](ToParent& parent) {
                      runProbe(probe, candidate, options, parent);
                  }));
        }
    }
    return report;
}

bool Report::passed() const
{
    return std::none_of(outcomes.begin(), outcomes.end(),
                        [](const Outcome& outcome) { return outcome.status == Outcome::Broken; });
}

std::vector<Finding> Report::findings() const
{
    std::vector<Finding> all;
    for (const auto& outcome : outcomes) {
        all.insert(all.end(), outcome.findings.begin(), outcome.findings.end());
    }
    return all;
}

} // namespace Kiv_v4::conformance
