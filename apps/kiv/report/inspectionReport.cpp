#include "report/inspectionReport.h"

#include "kiv/host/inspection.h"
#include "kiv/pathString.h"
#include "kiv/versionInfo.h"

#include "report/reportSection.h"

namespace app {

using namespace Kiv_v4;

namespace {

Fact runTimeFact(const host::Inspection::RunTime& runTime)
{
    Json gateways = Json::array();
    for (const auto& path : runTime.gateways) {
        gateways.push_back(PathString::string(path));
    }
    Json record{{"id", runTime.id},
                {"name", runTime.name},
                {"handlers", runTime.handlers},
                {"gateways", gateways}};
    std::vector<std::string> lines{"id " + std::to_string(runTime.id) + ", " +
                                   std::to_string(runTime.handlers.size()) +
                                   " handlers: " + textOf(record["handlers"])};
    for (const auto& gateway : gateways) {
        lines.push_back("under " + textOf(gateway));
    }
    return {"", runTime.name.empty() ? "(gone)" : runTime.name, std::move(record), "",
            std::move(lines)};
}

Section observers(const host::Inspection& found)
{
    Section section{"observers", "observers", {}, Section::Form::List};
    for (const auto& [subject, count] : found.subjects) {
        section.facts.push_back({"",
                                 subject,
                                 {{"subject", subject}, {"observers", count}},
                                 "",
                                 {std::to_string(count)}});
    }
    for (const auto& item : found.observedItems) {
        const auto path = PathString::string(item.path);
        section.facts.push_back(
            {"",
             item.interfaceName,
             {{"subject", item.interfaceName}, {"item", path}, {"observers", item.nbObservers}},
             "",
             {std::to_string(item.nbObservers) + " of " + path}});
    }
    return section;
}

Section mounts(const document::Workspace& scene)
{
    Section section{"mounts", "mounts", {}, Section::Form::List};
    for (const auto& mount : scene.mounts()) {
        const auto path = PathString::string(mount.gateway);
        section.facts.push_back(
            {"", path, {{"gateway", path}, {"file", mount.file}}, "", {mount.file}});
    }
    return section;
}

} // namespace

void writeInspection(const document::Workspace& scene, bool asJson, Output& output)
{
    const auto found = host::inspect(scene.root());
    Section totals{"", ""};
    totals.facts = {{"commit", "commit", VersionInfo::getGitCommit()},
                    {"items", "items", found.nbItems},
                    {"names", "names interned", found.nbNames},
                    {"residentBytes", "memory", found.residentBytes, "bytes"}};
    Section runTimes{"runTimes", "run-times", {}, Section::Form::List};
    for (const auto& runTime : found.runTimes) {
        runTimes.facts.push_back(runTimeFact(runTime));
    }
    Section leftovers{"leftovers", "leftovers", {}, Section::Form::List};
    for (const auto& text : found.leftovers) {
        leftovers.facts.push_back({"", text, text, "", {""}});
    }
    const std::vector sections{std::move(totals), std::move(runTimes), mounts(scene),
                               observers(found), std::move(leftovers)};
    asJson ? writeJson(sections, output) : writeText(sections, output);
}

} // namespace app
