#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>

#include "kiv/hierarchy.h"
#include "kiv/sceneItemOps.h"
#include "kiv/selectionCommands.h"

#include "command.h"
#include "editing.h"
#include "itemLookup.h"
#include "sceneDocument.h"
#include "script.h"

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
    if (const auto item = lookUp(session.scene().root(), session.current(), word)) {
        return {item, ""};
    }
    const auto name = std::find_if(word.rbegin(), word.rend(), isSeparator).base();
    const std::string parent(word.begin(), name);
    return {parent.empty() ? session.current() : session.item(parent), {name, word.end()}};
}

/// `Mounting::mountCmd` with the file in the message of its errors.
SceneItemResultUndoableCommand::Ptr mountCmd(const Session& session, const std::string& file,
                                             const NewPlace& place)
{
    try {
        return session.scene().mountCmd(file, place.parent, place.name);
    } catch (const std::exception& error) {
        throw std::runtime_error(file + ": " + error.what());
    }
}

void mount(Session& session, const Arguments& arguments)
{
    const auto place =
        arguments.size() > 1 ? newPlaceOf(session, arguments[1]) : NewPlace{session.current(), ""};
    const auto command = mountCmd(session, arguments[0], place);
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
    Edits edits("unmount " + item->nodeName());
    deselectUnder(session, edits, {item});
    run(edits, item, operations->deleteItemCmd());
    edits.commit();
}

void saveScene(Session& session, const Arguments& arguments)
{
    save(session.scene(), arguments[0],
         arguments.has("--force") ? Replacing::anything : Replacing::documents);
    session.noteSaved();
}

void openScene(Session& session, const Arguments& arguments)
{
    Edits edits("open " + arguments[0]);
    if (!session.selection()->empty()) {
        edits.run(std::make_shared<SelectionClear>(session.selection()));
    }
    const auto goOn = [&session](const std::string& complaint) { report(session, complaint); };
    open(session.scene(), arguments[0], edits,
         arguments.has("--keep-going") ? OnMissing(goOn) : nullptr);
    edits.commit();
    session.noteSaved();
}

constexpr Command kCommands[] = {
    {"mount", "FILE [ITEM]",
     "Show a scene file under the current item, or at ITEM, which may be a new one.", mount},
    {"unmount", "ITEM", "Take a scene file away again.", unmount},
    {"save", "FILE [--force]",
     "Write the scene, with its mounts and edits, as a JSON document. Only with --force it takes "
     "the place of a file that is no such document.",
     saveScene},
    {"open", "FILE [--keep-going]",
     "Replace the scene by that of a document. With --keep-going without the scene files, and the "
     "edits of their items, that cannot be found: saved again, these are lost.",
     openScene},
};

} // namespace

CommandKind files()
{
    return {"Files", kCommands};
}

} // namespace app::shell
