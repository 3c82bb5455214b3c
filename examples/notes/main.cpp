// Notes under an item in memory, which is renamed, deleted and brought back.
#include <iostream>

#include "kiv/hierarchy.h"
#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"
#include "kiv/sceneItemOps.h"
#include "kiv/subtreeWalk.h"

#include "notesRunTime.h"

namespace {

void print(const char* when, const Kiv::SceneItem::Ptr& top)
{
    std::cout << when << '\n';
    for (Kiv::SubtreeWalk walk(top); walk.next();) {
        std::cout << "  " << Kiv::PathString::string(walk.path()) << '\n';
    }
}

} // namespace

int main()
{
    Kiv::Scene::initializeInstance(std::make_shared<Kiv::Scene>());
    Kiv::memory::RunTime memory;
    auto& model = memory.model();

    const NotesRunTime lists;

    const auto desk = model.make(model.root(), "gateway", "desk");
    model.setGateway(desk->path(), lists.id());
    const auto notes = std::make_shared<Notes>();
    notes->names = {"buy paint", "call Ada"};
    lists.mounts().mount(notes, desk->path());
    print("mounted", model.item(model.root()));

    const auto table = model.rename(desk->path(), "table");
    print("renamed", model.item(model.root()));
    const auto removal = Kiv::SceneItemOps::sceneItemOps(table)->deleteItemCmd();
    removal->execute();
    print("deleted", model.item(model.root()));
    removal->undo();
    print("undone", model.item(model.root()));

    Kiv::Scene::initializeInstance(nullptr);
}
