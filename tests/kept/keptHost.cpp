// A host as an engineer of this release wrote it. Both it and plugIn.cpp are kept as they are:
// compiled with the headers of the release, they must run with every later library of the same
// major version. The host loads the plug-in named on its command line, edits its items, and prints
// the first thing that is not as it was.
#include <cstdio>
#include <cstdlib>
#include <map>

#include "kiv/host/hostScene.h"
#include "kiv/host/pluginLoader.h"
#include "kiv/host/sceneTree.h"
#include "kiv/host/transaction.h"
#include "kiv/host/undoHistory.h"
#include "kiv/kiv.h"

namespace {

#define REQUIRE(condition)                                                                         \
    ((condition) ? void() : (std::printf("line %d: %s\n", __LINE__, #condition), std::exit(1)))

class Counter : public Kiv::Observer
{
public:
    void operator()(const Kiv::Notification& news) override
    {
        if (const auto* change = dynamic_cast<const Kiv::SceneChanged*>(&news)) {
            ++_counts[change->opType()];
        } else if (dynamic_cast<const Kiv::AttributeChanged*>(&news)) {
            ++_values;
        }
    }

    std::size_t count(Kiv::SceneChanged::OpType type) const
    {
        const auto found = _counts.find(type);
        return found == _counts.end() ? 0 : found->second;
    }
    std::size_t values() const { return _values; }

private:
    std::map<Kiv::SceneChanged::OpType, std::size_t> _counts;
    std::size_t _values = 0;
};

Kiv::SceneItem::Ptr item(const std::string& path)
{
    return Kiv::Hierarchy::createItem(Kiv::PathString::path(path));
}

void editTree(const Kiv::SceneItem::Ptr& top, Kiv::host::UndoHistory& history)
{
    Kiv::host::SceneTree tree;
    const auto& node = *tree.reveal(top->path());
    tree.fetch(*tree.find(top->path()));
    REQUIRE(node.nbRows() == 2 && node.child(1).name() == "hats");
    history.executeCmd(
        Kiv::Hierarchy::hierarchy(top)->createChildCmd("drawer", Kiv::PathComponent("hats")));
    REQUIRE(node.nbRows() == 3 && node.child(2).name() == "hats1");
    history.executeCmd(Kiv::SceneItemOps::sceneItemOps(item("/wardrobe/socks"))->deleteItemCmd());
    REQUIRE(node.nbRows() == 2 && history.undoText() == "Delete socks");
    REQUIRE(history.undo() && node.child(0).name() == "socks");
}

void editItem(Kiv::host::UndoHistory& history)
{
    const auto hats = item("/wardrobe/hats");
    const auto attribute = Kiv::Attributes::attributes(hats)->attribute("width");
    const auto width = std::dynamic_pointer_cast<Kiv::AttributeFloat>(attribute);
    const auto transform = Kiv::Transform3d::transform3d(hats);
    Kiv::host::Transaction edit("Widen");
    edit.run(width->setCmd(0.75F));
    edit.run(transform->translateCmd(1, 2, 3));
    edit.commit();
    REQUIRE(width->get() == 0.75F && transform->translation() == Kiv::Vector3d({1, 2, 3}));
    REQUIRE(history.undo() && width->get() == 0.5F && transform->translation() == Kiv::Vector3d());
    REQUIRE(Kiv::Camera::camera(hats)->focalLength() == 50);
    REQUIRE(Kiv::Object3d::object3d(hats)->boundingBox().max == Kiv::Vector3d({1, 2, 3}));
    const auto look = Kiv::RunTimeMgr::instance().uiInfoHandler(hats->runTimeId());
    REQUIRE(look->treeViewTooltip(hats) == "the drawer hats");
}

void select()
{
    const auto& selection = Kiv::GlobalSelection::get();
    selection->append(item("/wardrobe/hats"));
    selection->append(item("/wardrobe/socks"));
    REQUIRE(selection->size() == 2 && selection->containsDescendant(item("/wardrobe")->path()));
    Kiv::SceneItemOps::sceneItemOps(item("/wardrobe/hats"))->renameItem(Kiv::PathComponent("caps"));
    REQUIRE(selection->front()->nodeName() == "caps");
    selection->clear();
}

} // namespace

int main(int, char** argv)
{
    const auto scene = std::make_shared<Kiv::host::HostScene>();
    Kiv::Scene::initializeInstance(scene);
    Kiv::GlobalSelection::initializeInstance(std::make_shared<Kiv::ObservableSelection>());
    scene->follow(Kiv::GlobalSelection::get(), Kiv::host::HostScene::Gone::Dropped);
    const auto counter = std::make_shared<Counter>();
    Kiv::Scene::instance().addObserver(counter);
    Kiv::Attributes::addObserver(counter);
    {
        const auto shared = std::make_shared<Kiv::host::UndoHistory>();
        auto& history = *shared;
        Kiv::UndoableCommandMgr::initializeInstance(shared);
        Kiv::host::PluginLoader loader;
        const auto plugin = loader.load(argv[1]);
        REQUIRE(plugin.name == "furniture" && plugin.runTimes.size() == 1);
        editTree(item("/wardrobe"), history);
        editItem(history);
        select();
        REQUIRE(counter->count(Kiv::SceneChanged::Added) == 2 && counter->values() == 2);
        REQUIRE(counter->count(Kiv::SceneChanged::Deleted) == 1);
        REQUIRE(Kiv::Value(2.5F).get<float>() == 2.5F);
        Kiv::UndoableCommandMgr::initializeInstance(nullptr);
        history.clear();
        REQUIRE(loader.unload("furniture").empty());
    }
    Kiv::GlobalSelection::initializeInstance(nullptr);
    Kiv::Scene::initializeInstance(nullptr);
    std::puts("as it was");
}
