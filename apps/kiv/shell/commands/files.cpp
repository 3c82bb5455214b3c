#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>

#include "kiv/document/sceneDocument.h"
#include "kiv/hierarchy.h"
#include "kiv/host/errorPrefix.h"
#include "kiv/host/itemLookup.h"
#include "kiv/sceneItemOps.h"
#include "kiv/selectionCommands.h"

#include "shell/commands/editing.h"
#include "shell/engine/commandTable.h"
#include "shell/engine/script.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

/// Where a new item goes.
struct NewPlace
{
    SceneItem::Ptr parent;
    std::string name; ///< Empty when the user leaves it open.
};

/// The item that `word` names, or a new one of that path, whose parent must be there.
NewPlace newPlaceOf(const Session& session, const std::string& word)
{
    if (namesSelection(word)) {
        return {session.item(word), ""};
    }
    if (const auto item = host::lookUp(session.scene().root(), session.current(), word)) {
        return {item, ""};
    }
    const auto name = std::find_if(word.rbegin(), word.rend(), host::isSeparator).base();
    const std::string parent(word.begin(), name);
    return {parent.empty() ? session.current() : session.item(parent), {name, word.end()}};
}

SceneItemResultUndoableCommand::Ptr mountCmd(const Session& session, const Arguments& arguments,
                                             const NewPlace& place)
{
    const auto& file = arguments[0];
    const auto* runTime = arguments.value("--with");
    return host::prefixed(file, [&] {
        return session.scene().mountCmd(file, place.parent, place.name, runTime ? *runTime : "");
    });
}

void mount(Session& session, const Arguments& arguments)
{
    const auto place =
        arguments.size() > 1 ? newPlaceOf(session, arguments[1]) : NewPlace{session.current(), ""};
    const auto command = mountCmd(session, arguments, place);
    edit("mount " + arguments[0], place.parent, command);
    print(session, command->sceneItem());
}

void unmount(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    if (session.scene().mountedFile(item->path()).empty()) {
        fail(item, "no file is mounted here");
    }
    const auto operations = required(SceneItemOps::sceneItemOps(item), item, "cannot be deleted");
    host::Transaction edits("unmount " + item->nodeName());
    deselectUnder(session, edits, {item});
    run(edits, item, operations->deleteItemCmd());
    edits.commit();
}

void saveScene(Session& session, const Arguments& arguments)
{
    const auto isForced = arguments.has("--force");
    try {
        document::save(session.scene(), arguments[0],
                       isForced ? document::Replacing::Anything : document::Replacing::Documents);
    } catch (const document::NotReplaceable& error) {
        throw std::runtime_error(std::string(error.what()) +
                                 " (save --force does it all the same)");
    }
    session.noteSaved();
}

void openScene(Session& session, const Arguments& arguments)
{
    host::Transaction edits("open " + arguments[0]);
    if (!session.selection()->empty()) {
        edits.run(std::make_shared<SelectionClear>(session.selection()));
    }
    const auto goOn = [&session](const std::string& complaint) { report(session, complaint); };
    document::open(session.scene(), arguments[0], edits,
                   arguments.has("--keep-going") ? document::OnMissing(goOn) : nullptr);
    edits.commit();
    session.noteSaved();
}

constexpr Command kFiles[] = {
    {"mount", "FILE [ITEM] [--with=RUNTIME]",
     "Show a scene file under the current item, or at ITEM, which may be a new one. The suffix "
     "tells which run-time reads the file, unless --with names it.",
     "mount workshop.gltf props/shop", mount},
    {"unmount", "ITEM", "Take a scene file away again.", "unmount workshop", unmount},
    {"save", "FILE [--force]",
     "Write the scene, with its mounts and edits, as a JSON document. Only with --force it takes "
     "the place of a file that is no such document, or the name of a scene file.",
     "save tour.json --force", saveScene},
    {"open", "FILE [--keep-going]",
     "Replace the scene by that of a document. With --keep-going without the scene files, and the "
     "edits of their items, that cannot be found: saved again, these are lost.",
     "open tour.json", openScene},
};

} // namespace

CommandKind files()
{
    return {"Files", kFiles};
}

} // namespace app::shell
