#include "showCommand.h"

#include <algorithm>
#include <exception>
#include <nlohmann/json.hpp>
#include <unistd.h>
#include <vector>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "diagnostics.h"
#include "jsonText.h"
#include "mounting.h"
#include "terminal.h"

namespace app {

using namespace Kiv_v4;

namespace {

using Json = nlohmann::ordered_json;

/// One thing known of an item: a string, a list of strings, a number, a yes or no, or null.
struct Fact
{
    const char* key;   ///< In JSON.
    const char* label; ///< For people.
    Json value;
};

using Facts = std::vector<Fact>;

struct Subject
{
    const Mounting& scene;
    const SceneItem::Ptr item;
};

Json pathOf(const SceneItem::Ptr& item)
{
    return item ? Json(PathString::string(item->path())) : Json();
}

Facts identity(const Subject& subject)
{
    const auto& item = *subject.item;
    const auto originalName = subject.scene.originalName(item);
    return {
        {"path", "path", pathOf(subject.item)},
        {"name", "name", item.nodeName()},
        {"originalName", "original name", originalName ? Json(*originalName) : Json()},
        {"type", "node type", item.nodeType()},
        {"ancestorTypes", "ancestor types", item.ancestorNodeTypes()},
        {"runTime", "run-time", RunTimeMgr::instance().getName(item.runTimeId())},
        {"runTimeId", "run-time id", item.runTimeId()},
    };
}

Facts place(const Subject& subject)
{
    const auto hierarchy = Hierarchy::hierarchy(subject.item);
    if (!hierarchy) {
        return {};
    }
    return {
        {"parent", "parent", pathOf(hierarchy->parent())},
        {"defaultParent", "default parent", pathOf(hierarchy->defaultParent())},
        {"children", "children", hierarchy->children().size()},
        {"gateway", "gateway", subject.scene.isGateway(*subject.item)},
    };
}

/// What there is to know of an item, in the order in which it is shown.
using Section = Facts (*)(const Subject&);
constexpr Section kSections[] = {identity, place};

std::string textOf(const Json& value)
{
    if (value.is_null()) {
        return "none";
    }
    if (value.is_boolean()) {
        return value.get<bool>() ? "yes" : "no";
    }
    if (value.is_string()) {
        return printable(value.get_ref<const std::string&>());
    }
    if (!value.is_array()) {
        return value.dump();
    }
    std::string text;
    for (const auto& element : value) {
        text += (text.empty() ? "" : ", ") + textOf(element);
    }
    return text;
}

void writeText(const Facts& facts, Output& output)
{
    std::size_t width = 0;
    for (const auto& fact : facts) {
        width = std::max(width, std::string_view(fact.label).size());
    }
    const Paint paint(wantsColour(STDOUT_FILENO));
    for (const auto& fact : facts) {
        auto label = std::string(fact.label);
        label.resize(width, ' ');
        output.line(paint.label(label) + "  " + textOf(fact.value));
    }
}

void writeJson(const Facts& facts, Output& output)
{
    Json record;
    for (const auto& fact : facts) {
        record[fact.key] = fact.value;
    }
    output.line(jsonText(record, output, 2));
}

} // namespace

int showCommand(const ShowOptions& options, Output& output)
{
    Mounting scene;
    Path gateway;
    try {
        gateway = scene.mount(options.file);
    } catch (const std::exception& error) {
        complain(options.file, error.what());
        return kFailure;
    }
    const Subject subject{scene, scene.item(options.path, gateway)};
    if (!subject.item) {
        complain(options.path, "no such item");
        return kFailure;
    }
    Facts facts;
    for (const auto section : kSections) {
        std::ranges::move(section(subject), std::back_inserter(facts));
    }
    options.json ? writeJson(facts, output) : writeText(facts, output);
    return kSuccess;
}

} // namespace app
