#include "report/differenceReport.h"

#include "kiv/pathString.h"

#include "report/reportSection.h"
#include "report/table.h"
#include "terminal/jsonText.h"

namespace app {

using namespace Kiv_v4;

namespace {

using host::Difference;

/// The path from the item at `top` on; `.` for that item, empty for no path.
std::string placeUnder(const Path& top, const Path& path)
{
    if (path == top) {
        return ".";
    }
    const auto text = PathString::string(path);
    return path.isAtOrBelow(top) ? text.substr(PathString::string(top).size() + 1) : text;
}

std::string placeText(const Difference& difference, const Path& before, const Path& after)
{
    const auto was = placeUnder(before, difference.before);
    const auto is = placeUnder(after, difference.after);
    if (difference.kind == Difference::Kind::Added) {
        return is;
    }
    return difference.kind == Difference::Kind::Removed || was == is ? was : was + " -> " + is;
}

Json record(const Difference& difference, const Path& before, const Path& after)
{
    Json result{{"kind", textOf(difference.kind)}};
    if (!difference.before.empty()) {
        result["before"] = placeUnder(before, difference.before);
    }
    if (!difference.after.empty()) {
        result["after"] = placeUnder(after, difference.after);
    }
    if (difference.kind == Difference::Kind::Changed) {
        result["group"] = difference.group;
        result["name"] = difference.name;
        result["was"] = json(difference.was);
        result["is"] = json(difference.is);
    }
    return result;
}

} // namespace

void writeDifferences(const std::vector<Difference>& differences, const Path& before,
                      const Path& after, bool asJson, Output& output)
{
    if (asJson) {
        auto list = Json::array();
        for (const auto& difference : differences) {
            list.push_back(record(difference, before, after));
        }
        return output.line(jsonText(list, output, 2));
    }
    Table table({{"", false, &Paint::label}, {}, {"", false, &Paint::nodeType}, {}});
    for (const auto& difference : differences) {
        const auto isChange = difference.kind == Difference::Kind::Changed;
        table.add(
            {textOf(difference.kind), placeText(difference, before, after), difference.name,
             isChange ? textOf(json(difference.was)) + " -> " + textOf(json(difference.is)) : ""});
    }
    table.write(output);
    output.line(differences.empty()
                    ? "no differences"
                    : std::to_string(differences.size()) +
                          (differences.size() == 1 ? " difference" : " differences"));
}

} // namespace app
