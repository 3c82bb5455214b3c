#include "shell/commands/editing.h"

#include <algorithm>
#include <stdexcept>

#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/selectionCommands.h"

#include "terminal/interrupts.h"
#include "terminal/terminal.h"

namespace app::shell {

using namespace Kiv_v4;

void edit(const std::string& name, const SceneItem::Ptr& item, const UndoableCommand::Ptr& command)
{
    host::Transaction edits(name);
    run(edits, item, command);
    edits.commit();
}

void run(host::Transaction& edits, const SceneItem::Ptr& item, const UndoableCommand::Ptr& command)
{
    endIfInterrupted(); // between the items of a step, all of which is then undone
    if (!command) {
        fail(item, "run-time " + RunTimeMgr::instance().getName(item->runTimeId()) + " refuses");
    }
    edits.run(command);
}

void print(const Session& session, const SceneItem::Ptr& item)
{
    session.output().line(printable(textOf(item)));
}

void deselectIf(const Session& session, host::Transaction& edits,
                const std::function<bool(const SceneItem::Ptr&)>& goes)
{
    const auto& selection = *session.selection();
    Selection kept;
    for (const auto& item : selection) {
        if (!goes(item)) {
            kept.append(item);
        }
    }
    if (kept.size() < selection.size()) {
        edits.run(std::make_shared<SelectionReplaceWith>(session.selection(), kept));
    }
}

void deselectUnder(const Session& session, host::Transaction& edits,
                   const std::vector<SceneItem::Ptr>& items)
{
    Selection going;
    for (const auto& top : items) {
        for (const auto& item : session.selection()->itemsUnder(top->path())) {
            if (item->path().isAtOrBelow(top->path())) {
                going.append(item);
            }
        }
    }
    if (!going.empty()) {
        deselectIf(session, edits,
                   [&going](const auto& item) { return going.contains(item->path()); });
    }
}

std::string textOf(const SceneItem::Ptr& item)
{
    return PathString::string(item->path());
}

void fail(const SceneItem::Ptr& item, const std::string& reason)
{
    throw std::runtime_error(textOf(item) + ": " + reason);
}

} // namespace app::shell
