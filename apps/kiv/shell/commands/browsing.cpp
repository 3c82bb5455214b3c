#include <stdexcept>
#include <string>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "report/itemReport.h"
#include "report/itemSearch.h"
#include "report/treeReport.h"
#include "shell/commands/numbers.h"
#include "shell/engine/commandTable.h"
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
    const auto item = itemOrCurrent(session, arguments, 0);
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
    if (!criteria.any()) {
        throw std::runtime_error("--cameras, --lights, --type or --name is required");
    }
    Selection found;
    find(session.scene(), {itemOrCurrent(session, arguments, 0)}, criteria,
         formOf(arguments, FindForm::Table), session.output(),
         [&found](const SceneItem::Ptr& item) { found.append(item); });
    session.namedSelection("found").replaceWith(found);
}

constexpr Command kCommands[] = {
    {"ls", "[ITEM]", "List the children of an item.", ls},
    {"tree", "[ITEM] [--depth=N] [--type=TYPE] [--paths] [--json]", "Draw what is under an item.",
     tree},
    {"cd", "[ITEM]", "Make an item the current one; the root without ITEM.", cd},
    {"pwd", "", "Print the path of the current item.", pwd},
    {"show", "[ITEM] [--json]", "Print all that an item offers.", showItem},
    {"find", "[ITEM] [--cameras] [--lights] [--type=TYPE] [--name=GLOB] [--paths] [--json]",
     "Print the items that meet all criteria, and keep them as the selection @found.", findItems},
};

} // namespace

CommandKind browsing()
{
    return {"Browsing", kCommands};
}

} // namespace app::shell
