#include <stdexcept>
#include <string>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "report/differenceReport.h"
#include "report/itemReport.h"
#include "report/itemSearch.h"
#include "report/treeReport.h"
#include "shell/commands/numbers.h"
#include "shell/engine/commandTable.h"
#include "terminal/progressLine.h"
#include "terminal/terminal.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

/// The item that the argument at `index` names; the current one when there is no such argument.
SceneItem::Ptr itemOrCurrent(const Session& session, const Arguments& arguments, std::size_t index)
{
    return arguments.size() > index ? session.item(arguments[index]) : session.current();
}

/// `--paths` and `--json`, which tree and find share.
template <class Form>
Form formOf(const Arguments& arguments, Form usual)
{
    if (arguments.has("--paths") && arguments.has("--json")) {
        throw std::runtime_error("--paths and --json exclude each other");
    }
    return arguments.has("--paths")  ? Form::Paths
           : arguments.has("--json") ? Form::JsonText
                                     : usual;
}

void ls(Session& session, const Arguments& arguments)
{
    const auto item = itemOrCurrent(session, arguments, 0);
    const auto hierarchy = Hierarchy::hierarchy(item);
    for (const auto& child : hierarchy ? hierarchy->children() : SceneItemList()) {
        auto line = printable(child->nodeName()) + "  " + printable(child->nodeType());
        if (child->runTimeId() != item->runTimeId()) {
            line += "  [" + printable(RunTimeMgr::instance().getName(child->runTimeId())) + "]";
        }
        session.output().line(line);
    }
}

void tree(Session& session, const Arguments& arguments)
{
    host::OutlineFilter filter;
    if (const auto* depth = arguments.value("--depth")) {
        const auto levels = valueOf<int>(*depth);
        if (levels < 0) {
            throw std::runtime_error("--depth: " + *depth + " is less than 0");
        }
        filter.depth = static_cast<std::size_t>(levels);
    }
    if (const auto* type = arguments.value("--type")) {
        filter.nodeType = *type;
    }
    writeTree(session.scene(), {itemOrCurrent(session, arguments, 0)}, filter,
              formOf(arguments, TreeForm::Drawing), session.output());
}

void cd(Session& session, const Arguments& arguments)
{
    session.setCurrent(arguments.size() > 0 ? session.item(arguments[0]) : session.scene().root());
}

void pwd(Session& session, const Arguments&)
{
    session.output().line(printable(PathString::string(session.current()->path())));
}

void showItem(Session& session, const Arguments& arguments)
{
    const auto items =
        arguments.size() > 0 ? session.items(arguments.words()) : std::vector{session.current()};
    const auto* columns = arguments.value("--columns");
    if (items.size() > 1 || columns) {
        return showTable(items, columns ? *columns : "", arguments.has("--json"), session.output());
    }
    const auto item = items.front();
    if (!show(session.scene(), item, PathString::string(item->path()), arguments.has("--json"),
              session.output())) {
        throw std::runtime_error("not all could be shown");
    }
}

void findItems(Session& session, const Arguments& arguments)
{
    Criteria criteria;
    criteria.cameras = arguments.has("--cameras");
    criteria.lights = arguments.has("--lights");
    if (const auto* type = arguments.value("--type")) {
        criteria.nodeType = *type;
    }
    if (const auto* name = arguments.value("--name")) {
        criteria.name = *name;
    }
    if (const auto* material = arguments.value("--material")) {
        criteria.material = *material;
    }
    if (const auto* size = arguments.value("--min-size")) {
        criteria.minSize = valueOf<double>(*size);
    }
    if (const auto* size = arguments.value("--max-size")) {
        criteria.maxSize = valueOf<double>(*size);
    }
    criteria.attributes = arguments.values("--attribute");
    criteria.metadata = arguments.values("--metadata");
    criteria.hidden = arguments.has("--hidden");
    criteria.ignoresCase = arguments.has("-i");
    if (!criteria.any()) {
        throw std::runtime_error(kNoCriterion);
    }
    Selection found;
    find(session.scene(), {itemOrCurrent(session, arguments, 0)}, criteria,
         formOf(arguments, FindForm::Table), session.output(),
         [&found](const SceneItem::Ptr& item) { found.append(item); });
    session.namedSelection("found").replaceWith(found);
}

void diffItems(Session& session, const Arguments& arguments)
{
    const auto before = session.item(arguments[0]);
    const auto after = session.item(arguments[1]);
    host::ComparisonOptions options{1e-6, !arguments.has("--structure")};
    if (const auto* tolerance = arguments.value("--tolerance")) {
        options.tolerance = valueOf<double>(*tolerance);
    }
    ProgressLine progress("comparing items");
    options.onVisit = progress.counter();
    writeDifferences(host::compare(before, after, options), before->path(), after->path(),
                     arguments.has("--json"), session.output());
}

constexpr Command kBrowsing[] = {
    {"ls", "[ITEM]", "List the children of an item.", "ls workshop/Workshop/Bench", ls},
    {"tree", "[ITEM] [--depth=N] [--type=TYPE] [--paths] [--json]", "Draw what is under an item.",
     "tree props --depth=2", tree},
    {"cd", "[ITEM]", "Make an item the current one; the root without ITEM.", "cd workshop/Workshop",
     cd},
    {"pwd", "", "Print the path of the current item.", "pwd", pwd},
    {"show", "[ITEM...] [--columns=NAMES] [--json]",
     "Print all that an item offers; of several, or with --columns, a table of their properties "
     "and attributes.",
     "show stage/* --columns=focalLength,visible", showItem},
    {"find",
     "[ITEM] [--cameras] [--lights] [--type=TYPE] [--name=GLOB] [--material=GLOB] "
     "[--attribute=CONDITION] [--metadata=CONDITION] [--hidden] [--min-size=N] [--max-size=N] [-i] "
     "[--paths] [--json]",
     "Print the items that meet all criteria, and keep them as the selection @found. With -i, "
     "small "
     "and large letters are alike.",
     "find --lights --attribute 'intensity>0.5'", findItems},
    {"diff", "ITEM ITEM [--tolerance=N] [--structure] [--json]",
     "Tell what differs between what is at and under two items.", "diff stage props --structure",
     diffItems},
};

} // namespace

CommandKind browsing()
{
    return {"Browsing", kBrowsing};
}

} // namespace app::shell
