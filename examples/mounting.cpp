// Documents of a run-time, shown under items of another: the program of "Being mounted under other
// scenes".

#include <algorithm>
#include <iostream>

#include "kiv/hierarchy.h"
#include "kiv/kit/mounts.h"
#include "kiv/kit/tree.h"
#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"
#include "kiv/sceneItemOps.h"
#include "kiv/subtreeWalk.h"

namespace {

/// A list of notes, shown under one gateway.
struct Notes : Kiv::kit::Mount
{
    std::vector<std::string> names;
};

/// The lists of all gateways as items: `notes` and, under it, one item for each name.
class NotesTree : public Kiv::kit::Tree
{
public:
    explicit NotesTree(Kiv::Rtid id) : Tree(Kiv::PathSegment("notes", id, ':')), mounts(id, ':') {}

    [[nodiscard]] std::vector<Kiv::Path> roots(const Kiv::Path& gateway) const override
    {
        return mounts.find(gateway) ? std::vector{gateway + root().getSegments().front()}
                                    : std::vector<Kiv::Path>();
    }
    [[nodiscard]] std::string nodeType(const Kiv::Path& path) const override
    {
        const auto notes = mounts.at(path);
        if (!notes || path == roots(notes->gateway()).front()) {
            return notes ? "notes" : "";
        }
        const auto isKnown = path.pop() == roots(notes->gateway()).front() &&
                             std::count(notes->names.begin(), notes->names.end(), path.back());
        return isKnown ? "note" : "";
    }
    [[nodiscard]] std::vector<Child> children(const Kiv::Path& path) const override
    {
        std::vector<Child> children;
        for (const auto& name :
             nodeType(path) == "notes" ? mounts.at(path)->names : std::vector<std::string>()) {
            children.push_back({name, "note"});
        }
        return children;
    }

    Kiv::kit::Mounts<Notes> mounts;
};

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

    const Kiv::RunTimeRegistration registration("notes", ':');
    const auto tree = std::make_shared<NotesTree>(registration.id());
    Kiv::kit::registerTree(registration.id(), tree);

    const auto desk = model.make(model.root(), "gateway", "desk");
    model.setGateway(desk->path(), registration.id());
    const auto notes = std::make_shared<Notes>();
    notes->names = {"buy paint", "call Ada"};
    tree->mounts.mount(notes, desk->path());
    print("mounted", model.item(model.root()));

    const auto table = model.rename(desk->path(), "table");
    print("renamed", model.item(model.root()));
    const auto removal = Kiv::SceneItemOps::sceneItemOps(table)->deleteItemCmd();
    removal->execute();
    print("deleted", model.item(model.root()));
    removal->undo();
    print("undone", model.item(model.root()));

    tree->mounts.close(); // before the run-time is unregistered
    Kiv::Scene::initializeInstance(nullptr);
}
