#include "sceneOperations.h"

#include <optional>
#include <string>
#include <utility>

#include "kiv/attributes.h"
#include "kiv/hierarchy_v4_2.h"
#include "kiv/host/hostScene.h"
#include "kiv/host/sceneTree.h"
#include "kiv/host/undoHistory.h"
#include "kiv/memory/runTime.h"
#include "kiv/object3d.h"
#include "kiv/observableSelection.h"
#include "kiv/pathSubject.h"
#include "kiv/scene.h"
#include "kiv/sceneItemOps.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"
#include "kiv/transform3d.h"
#include "kiv/trie.h"

namespace kivBench {

namespace {

using namespace Kiv_v4;

constexpr std::size_t kThousand = 1'000;
constexpr std::size_t kMillion = 1'000'000;
constexpr std::size_t kSiblings = 100;

/// An installed scene with a run-time in memory.
struct MemoryScene
{
    MemoryScene() { Scene::initializeInstance(std::make_shared<Scene>()); }
    ~MemoryScene() { Scene::initializeInstance(nullptr); }

    [[nodiscard]] SceneItem::Ptr root() const { return model.item(model.root()); }

    memory::RunTime runTime;
    memory::DataModel& model = runTime.model();
};

/// Makes `count` items in groups of a hundred; returns the paths of the groups.
std::vector<Path> fill(memory::DataModel& model, std::size_t count)
{
    std::vector<Path> groups;
    for (std::size_t made = 0; made < count; ++made) {
        if (made % kSiblings == 0) {
            groups.push_back(
                model.make(model.root(), "group", "group" + std::to_string(groups.size()))->path());
        } else {
            model.make(groups.back(), "mesh", "part" + std::to_string(made % kSiblings));
        }
    }
    return groups;
}

/// Makes `count` children of one parent, which is returned.
Path fillFlat(memory::DataModel& model, std::size_t count)
{
    auto parent = model.make(model.root(), "group", "all")->path();
    for (std::size_t made = 0; made < count; ++made) {
        model.make(parent, "mesh", "part" + std::to_string(made));
    }
    return parent;
}

/// All items of the scene, parents before their children.
std::vector<SceneItem::Ptr> allItems(const SceneItem::Ptr& root)
{
    std::vector<SceneItem::Ptr> items{root};
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto children = Hierarchy::hierarchy(items[i])->children();
        items.insert(items.end(), children.begin(), children.end());
    }
    return items;
}

/// Work on a `State`, by a function.
template <class State>
class WorkOn : public SceneWork
{
public:
    WorkOn(std::unique_ptr<State> state, void (*work)(State&))
        : _state(std::move(state)), _work(work)
    {}

    void run() override { _work(*_state); }

private:
    std::unique_ptr<State> _state;
    void (*_work)(State&);
};

/// A function that makes a `State` with that number of items and then works on it.
template <class State>
auto on(void (*work)(State&))
{
    return [work](std::size_t count) -> std::unique_ptr<SceneWork> {
        return std::make_unique<WorkOn<State>>(std::make_unique<State>(count), work);
    };
}

struct EmptyScene : MemoryScene
{
    explicit EmptyScene(std::size_t itemCount) : count(itemCount) {}

    std::size_t count;
};

struct GroupedScene : MemoryScene
{
    explicit GroupedScene(std::size_t count) : groups(fill(model, count)) {}

    std::vector<Path> groups;
};

struct KnownItems : GroupedScene
{
    explicit KnownItems(std::size_t count) : GroupedScene(count), items(allItems(root())) {}

    std::vector<SceneItem::Ptr> items;
};

struct FlatScene : MemoryScene
{
    explicit FlatScene(std::size_t count) : parent(fillFlat(model, count)) {}

    [[nodiscard]] Hierarchy::Ptr hierarchy() const
    {
        return Hierarchy::hierarchy(model.item(parent));
    }

    Path parent;
};

struct Chain : MemoryScene
{
    explicit Chain(std::size_t count)
    {
        auto path = model.root();
        for (; count > 0; --count) {
            path = model.make(path, "group", "link")->path();
        }
    }
};

struct Silent : Observer
{
    void operator()(const Notification&) override {}
};

/// A path subject, with an observer, on each of the parts of one parent.
struct FollowedItems : FlatScene
{
    explicit FollowedItems(std::size_t count) : FlatScene(count)
    {
        const auto observer = std::make_shared<Silent>();
        observers.push_back(observer);
        for (const auto& child : hierarchy()->children()) {
            subjects.push_back(std::make_unique<PathSubject>(
                child->path(), &Transform3d::addObserver,
                static_cast<bool (*)(const Path&, const Observer::Ptr&)>(
                    &Transform3d::removeObserver)));
            static_cast<Subject&>(*subjects.back()).addObserver(observer);
        }
    }

    std::vector<Observer::Ptr> observers;
    std::vector<std::unique_ptr<PathSubject>> subjects;
};

/// Many observers of one item.
struct ObservedItem : MemoryScene
{
    explicit ObservedItem(std::size_t count)
    {
        item = model.make(model.root(), "mesh", "part");
        for (; count > 0; --count) {
            observers.push_back(std::make_shared<Silent>());
            Transform3d::addObserver(item, observers.back());
        }
    }

    SceneItem::Ptr item;
    std::vector<Observer::Ptr> observers;
};

/// As many value edits as items, in an undo history.
struct EditedScene : FlatScene
{
    explicit EditedScene(std::size_t count)
        : FlatScene(count), history(std::make_shared<host::UndoHistory>(count + 1))
    {
        for (const auto& child : hierarchy()->children()) {
            history->executeCmd(Transform3d::transform3d(child)->translateCmd(1, 2, 3));
        }
    }

    std::shared_ptr<host::UndoHistory> history;
};

/// A tree as in an outliner, with all siblings among its rows.
struct ShownScene : FlatScene
{
    explicit ShownScene(std::size_t count) : FlatScene(count)
    {
        Scene::initializeInstance(nullptr);
        Scene::initializeInstance(std::make_shared<host::HostScene>());
        tree = std::make_unique<host::SceneTree>();
        tree->fetch(*tree->reveal(parent));
    }

    std::unique_ptr<host::SceneTree> tree;
};

/// A selection of everything, which follows the scene.
struct FollowedSelection : MemoryScene
{
    explicit FollowedSelection(std::size_t count)
    {
        Scene::initializeInstance(nullptr);
        const auto scene = std::make_shared<host::HostScene>();
        Scene::initializeInstance(scene);
        groups = fill(model, count);
        for (const auto& item : allItems(root())) {
            selection->append(item);
        }
        scene->follow(selection, host::HostScene::Gone::ComesBack);
    }

    std::shared_ptr<ObservableSelection> selection = std::make_shared<ObservableSelection>();
    std::vector<Path> groups;
};

struct SelectedScene : GroupedScene
{
    explicit SelectedScene(std::size_t count) : GroupedScene(count)
    {
        for (const auto& item : allItems(root())) {
            selection.append(item);
        }
    }

    Selection selection;
};

void build(EmptyScene& scene)
{
    fill(scene.model, scene.count);
}

void buildChain(EmptyScene& scene)
{
    auto path = scene.model.root();
    for (auto left = scene.count; left > 0; --left) {
        path = scene.model.make(path, "group", "link")->path();
    }
}

void walk(GroupedScene& scene)
{
    std::vector<SceneItem::Ptr> open{scene.root()};
    while (!open.empty()) {
        const auto item = std::move(open.back());
        open.pop_back();
        for (const auto& child : Hierarchy::hierarchy(item)->children()) {
            open.push_back(child);
        }
    }
}

void walkWithoutItems(GroupedScene& scene)
{
    for (SubtreeWalk all(scene.root()); all.next();) {
        (void)all.nodeType();
    }
}

void walkChain(Chain& scene)
{
    for (auto item = scene.root(); item;) {
        const auto children = Hierarchy::hierarchy(item)->children();
        item = children.empty() ? nullptr : children.front();
    }
}

void parents(KnownItems& scene)
{
    for (const auto& item : scene.items) {
        (void)Hierarchy::hierarchy(item)->parent();
    }
}

void matrices(KnownItems& scene)
{
    for (const auto& item : scene.items) {
        (void)Transform3d::transform3d(item)->inclusiveMatrix();
    }
}

void attributes(KnownItems& scene)
{
    for (const auto& item : scene.items) {
        (void)Attributes::attributes(item)->attributeNames();
    }
}

void removeSubtrees(GroupedScene& scene)
{
    for (const auto& group : scene.groups) {
        scene.model.remove(group);
    }
}

void addManyAtOnce(EmptyScene& scene)
{
    const std::vector<PathComponent> names(scene.count, PathComponent("part"));
    Hierarchy_v4_2::hierarchy(scene.root())->createChildrenCmd("mesh", names)->execute();
}

void addTakenNames(EmptyScene& scene)
{
    const auto top = Hierarchy::hierarchy(scene.root());
    for (auto left = scene.count; left > 0; --left) {
        top->createChildCmd("mesh", PathComponent("part"))->execute();
    }
}

void groupAndUngroup(FlatScene& scene)
{
    const auto hierarchy = scene.hierarchy();
    const auto group = hierarchy->createGroupCmd(hierarchy->children(), PathComponent("group"));
    group->execute();
    Hierarchy::hierarchy(group->sceneItem())->ungroup();
}

void renameAbove(FollowedItems& scene)
{
    scene.parent = scene.model.rename(scene.parent, "renamed")->path();
}

void deleteAbove(FollowedItems& scene)
{
    scene.model.remove(scene.parent);
}

void dropSubjects(FollowedItems& scene)
{
    scene.subjects.clear();
}

void removeObservers(ObservedItem& scene)
{
    for (const auto& observer : scene.observers) {
        Transform3d::removeObserver(scene.item, observer);
    }
}

void addToShown(ShownScene& scene)
{
    for (auto left = scene.tree->find(scene.parent)->nbRows(); left > 0; --left) {
        scene.model.make(scene.parent, "mesh", "new" + std::to_string(left));
    }
}

void removeSelected(FollowedSelection& scene)
{
    for (const auto& group : scene.groups) {
        scene.model.remove(group);
    }
}

void undoAndRedo(EditedScene& scene)
{
    while (scene.history->undo()) {
    }
    while (scene.history->redo()) {
    }
}

void findGateways(GroupedScene& scene)
{
    (void)SceneSegmentHandler::findGatewayItems(scene.model.root());
}

void shrinkAndAsk(SelectedScene& scene)
{
    while (scene.selection.size() > 1) {
        scene.selection.remove(scene.selection.back());
    }
    for (int asked = 0; asked < 100; ++asked) {
        (void)scene.selection.trie().closestCommonAncestor();
    }
}

} // namespace

const std::vector<SceneOperation>& sceneOperations()
{
    static const std::vector<SceneOperation> operations{
        {"build", kMillion, true, on(build)},
        {"walk by children()", kMillion, true, on(walk)},
        {"walk without items", kMillion, true, on(walkWithoutItems)},
        {"parent() of all", kMillion, true, on(parents)},
        {"world matrices of all", kMillion, true, on(matrices)},
        {"attribute names of all", kMillion, true, on(attributes)},
        {"remove subtrees", kMillion, true, on(removeSubtrees)},
        {"add children with a taken name", 100 * kThousand, true, on(addTakenNames)},
        {"add children by one command", kMillion, true, on(addManyAtOnce)},
        {"group and ungroup siblings", 100 * kThousand, true, on(groupAndUngroup)},
        {"rename above path subjects", 100 * kThousand, true, on(renameAbove)},
        {"delete above path subjects", 100 * kThousand, true, on(deleteAbove)},
        {"drop path subjects", 100 * kThousand, true, on(dropSubjects)},
        {"remove observers of one item", 100 * kThousand, true, on(removeObservers)},
        {"add siblings to a shown tree", 100 * kThousand, true, on(addToShown)},
        {"remove subtrees, all selected", 100 * kThousand, true, on(removeSelected)},
        {"undo and redo edits one by one", 100 * kThousand, true, on(undoAndRedo)},
        {"find the gateways, there are none", kMillion, false, on(findGateways)},
        {"shrink a selection, common ancestor", kMillion, true, on(shrinkAndAsk)},
        {"build a chain", 10 * kThousand, false, on(buildChain)},
        {"walk a chain", 10 * kThousand, false, on(walkChain)},
    };
    return operations;
}

} // namespace kivBench
