#include <algorithm>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <locale>
#include <stdexcept>
#include <thread>
#include <unistd.h>

#include "kiv/assimp/runTime.h"
#include "kiv/hierarchy_v4_2.h"
#include "kiv/notificationGuard.h"
#include "kiv/pathString.h"
#include "kiv/scene.h"
#include "kiv/sceneItemOps.h"
#include "kiv/sceneNotification.h"
#include "kiv/subtreeWalk.h"
#include "kiv/transform3d.h"

#include "callback.h"
#include "importerLeaks.h"
#include "items.h"
#include "memoryScene.h"

using namespace Kiv_v4;
using test::allUnder;
using test::expectReachable;
using test::namesOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

namespace {

/// A node of a glTF file: its name as JSON writes it, its children, and what hangs at it.
struct GltfNode
{
    std::string name;
    std::vector<std::size_t> children = {};
    std::string rest = {};
};

/// A glTF file of the nodes, the first being the root, with one triangle, camera and light to use.
std::string gltf(const std::vector<GltfNode>& nodes)
{
    std::string text = R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[)";
    for (const auto& node : nodes) {
        text += (&node == nodes.data() ? "" : ",") + (R"({"name":")" + node.name + '"') + node.rest;
        for (const auto child : node.children) {
            text +=
                (child == node.children.front() ? R"(,"children":[)" : ",") + std::to_string(child);
        }
        text += node.children.empty() ? "}" : "]}";
    }
    return text + R"(],"meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],
        "cameras":[{"type":"perspective","perspective":{"yfov":1,"znear":1}}],
        "extensionsUsed":["KHR_lights_punctual"],
        "extensions":{"KHR_lights_punctual":{"lights":[{"type":"point"}]}},
        "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],
        "bufferViews":[{"buffer":0,"byteLength":36}],"buffers":[{"byteLength":36,
        "uri":"data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}]})";
}

const std::string kMesh = R"(,"mesh":0)";

struct AssimpScene : test::MemoryScene
{
    AssimpScene() { model.setGateway(gateway->path(), files.id()); }
    ~AssimpScene() override
    {
        PathString::setPathSegmentSeparator(",");
        fs::remove_all(folder);
    }

    std::string write(const std::string& name, const std::string& text) const
    {
        fs::create_directory(folder);
        std::ofstream(folder / name, std::ios::binary) << text;
        return (folder / name).string();
    }

    SceneItem::Ptr mount(const std::vector<GltfNode>& nodes)
    {
        return files.mount(assimp::read(write("scene.gltf", gltf(nodes))), gateway->path());
    }

    static std::string refusal(const std::string& file, const assimp::Progress& progress = {})
    {
        try {
            (void)assimp::read(file, progress);
        } catch (const assimp::ImportError& error) {
            EXPECT_EQ(error.file(), file);
            EXPECT_EQ(error.what(), file + ": " + error.reason());
            EXPECT_THAT(error.what(), Not(HasSubstr("\n")));
            return error.reason();
        }
        return "it was read";
    }

    fs::path folder = fs::temp_directory_path() / ("kiv_assimp_test_" + std::to_string(getpid()));
    assimp::RunTime files;
    SceneItem::Ptr gateway = model.make(model.root(), "gateway", "in");
};

} // namespace

TEST_F(AssimpScene, IsBrowsedUnderItsGateway)
{
    const auto root = mount({{"Scene", {1, 2, 3, 4}},
                             {"Cube", {5}, kMesh},
                             {"Eye", {}, R"(,"camera":0)"},
                             {"Lamp", {}, R"(,"extensions":{"KHR_lights_punctual":{"light":0}})"},
                             {"Empty", {}},
                             {"Inner", {}, kMesh}});

    EXPECT_EQ(PathString::string(root->path()), "/world/in,:Scene");
    EXPECT_THAT(namesOf(Hierarchy::hierarchy(gateway)->children()), ElementsAre("Scene"));
    EXPECT_EQ(*Hierarchy::hierarchy(root)->parent(), *gateway);
    const auto items = allUnder(root);
    EXPECT_EQ(files.nbItems(gateway->path()), items.size());
    std::vector<std::string> seen;
    for (const auto& item : items) {
        seen.push_back(item->nodeName() + " " + item->nodeType());
    }
    EXPECT_THAT(seen, ElementsAre("Scene transform", "Cube mesh", "Eye camera", "Lamp light",
                                  "Empty transform", "Inner mesh"));
    EXPECT_EQ(*Hierarchy::hierarchy(items.back())->parent(), *items[1]);
    expectReachable(items);

    const auto hierarchy = Hierarchy::hierarchy(root);
    EXPECT_FALSE(hierarchy->defaultParent());
    EXPECT_FALSE(hierarchy->createChildCmd("mesh", std::string("new")));
    EXPECT_FALSE(hierarchy->reorder(hierarchy->children()));
    for (const auto* nothing :
         {":Cube", "/world,:Scene", "/world/in,:Cube", "/world/in,:Scene:no"}) {
        EXPECT_FALSE(Hierarchy::createItem(PathString::path(nothing))) << nothing;
        EXPECT_THROW((void)files.originalName(PathString::path(nothing)), std::invalid_argument);
    }
    const auto slashes = gateway->path() + PathSegment("/Scene", files.id(), '/');
    EXPECT_FALSE(Hierarchy::createItem(slashes));

    files.unmount(gateway->path());
    EXPECT_FALSE(hierarchy->hasChildren()) << "of an item that is gone";
    EXPECT_THAT(Hierarchy::hierarchy(root)->children(), testing::IsEmpty());
    EXPECT_FALSE(hierarchy->parent());
}

TEST_F(AssimpScene, IsWalkedAndListedByRows)
{
    std::vector<GltfNode> nodes{{"Scene", {1, 2, 3}},
                                {"a", {4, 5}, kMesh},
                                {"b", {}, kMesh},
                                {"c", {6}},
                                {"d", {}},
                                {"e", {}}};
    nodes.push_back({"f", {7}});
    for (std::size_t i = 7; i < 600; ++i) { // deeper than paths are kept
        nodes.push_back({"n", {i + 1}});
    }
    nodes.push_back({"last", {}});
    const auto root = mount(nodes);

    std::vector<std::string> walked;
    for (SubtreeWalk walk(gateway); walk.next();) {
        const auto item = Hierarchy::createItem(walk.path());
        ASSERT_TRUE(item);
        EXPECT_EQ(*walk.item(), *item);
        EXPECT_EQ(walk.depth(), item->path().size() - gateway->path().size());
        EXPECT_EQ(walk.name(), item->path().back());
        EXPECT_EQ(walk.nodeType(), item->nodeType());
        EXPECT_EQ(walk.runTimeId(), item->runTimeId());
        walked.push_back(PathString::string(item->path()));
        if (walk.name().string() == "a") {
            walk.skipSubtree();
        }
    }
    EXPECT_EQ(walked.size(), nodes.size() - 1) << "the gateway, and not d and e";
    EXPECT_EQ(walked[3], "/world/in,:Scene:b");

    for (const auto& item : {root, Hierarchy::createItem(root->path() + "a"), gateway}) {
        const auto rows = Hierarchy_v4_2::hierarchyOrDefault(item);
        const auto children = rows->children();
        EXPECT_EQ(rows->nbChildren(), children.size());
        std::size_t row = 0;
        for (const auto& child : children) {
            EXPECT_EQ(rows->row(child->path()), row);
            EXPECT_EQ(*rows->child(row), *child);
            const auto infos = rows->childInfos(row, 9);
            EXPECT_EQ(infos.size(), std::min<std::size_t>(9, children.size() - row));
            EXPECT_EQ(infos.front().name, child->path().back());
            EXPECT_EQ(infos.front().nodeType, child->nodeType());
            EXPECT_EQ(infos.front().runTimeId, child->runTimeId());
            ++row;
        }
        EXPECT_THAT(rows->childRange(row, 2), testing::IsEmpty());
        EXPECT_FALSE(rows->row(root->path() + "no"));
        EXPECT_FALSE(rows->row({}));
    }

    SubtreeWalk walk(root);
    EXPECT_TRUE(walk.next());
    files.unmount(gateway->path());
    EXPECT_THROW(walk.next(), std::logic_error);
}

TEST_F(AssimpScene, GivesEveryNameASafeAndUniqueComponent)
{
    const std::vector<std::pair<std::string, std::string>> names{
        {"a:b", "a_b1"},
        {"a,b", "a_b2"},
        {"a_b", "a_b"}, // fit already, so it keeps its name
        {"x", "x"},
        {"x", "x2"},
        {"x1", "x1"},
        {",", "_"},
        {"a/b \x7F", "a/b _"},
        {"\xC2\x85", "_1"}, // a C1 control character
        {"\xFF\xC0\xAF\xE7\xAB", "_____"},
        {"\xED\xA0\x80", "___"}, // half of a surrogate pair
        {"Würfel 立方 🎲", "Würfel 立方 🎲"}};
    std::vector<GltfNode> nodes{{"r:oot,"}};
    for (const auto& name : names) {
        nodes.front().children.push_back(nodes.size());
        nodes.push_back({name.first, {}, kMesh});
    }
    const auto items = allUnder(mount(nodes));
    ASSERT_EQ(items.size(), nodes.size());
    EXPECT_EQ(items.front()->nodeName(), "r_oot_");
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(items[i + 1]->nodeName(), names[i].second);
        EXPECT_EQ(files.originalName(items[i + 1]->path()), names[i].first);
    }
    expectReachable(items);
    files.unmount(gateway->path());

    const std::string mesh = "Frame { Mesh { 3; 0;0;0;, 1;0;0;, 0;1;0;; 1; 3;0,1,2;; } } ";
    const auto unnamed = write("a.x", "xof 0303txt 0032\nFrame Root { " + mesh + mesh + "}");
    const auto root = files.mount(assimp::read(unnamed), gateway->path());
    const auto children = Hierarchy::hierarchy(root)->children();
    EXPECT_THAT(namesOf(children), ElementsAre("mesh", "mesh1"));
    EXPECT_EQ(files.originalName(children.front()->path()), "");
}

TEST_F(AssimpScene, KeepsComponentsFreeOfAnySegmentSeparator)
{
    const std::vector<GltfNode> nodes{
        {"a, b->_", {1, 2, 3}}, {"→ 1", {}, kMesh}, {"€_->", {}, kMesh}, {"€_->", {}, kMesh}};
    for (const auto* separator : {"->", "_", "→", "1", ", ", "_-", "\x86"}) {
        PathString::setPathSegmentSeparator(separator);
        const auto items = allUnder(mount(nodes));
        EXPECT_EQ(items.size(), 4U);
        expectReachable(items);
        files.unmount(gateway->path());
    }
}

TEST_F(AssimpScene, LeavesOutHelperNodesOnDemand)
{
    const auto root = mount({{"root", {1, 2, 6}},
                             {"before", {}, kMesh},
                             {"arm_$AssimpFbx$_Translation", {3}},
                             {"arm_$AssimpFbx$_Rotation", {4, 5}},
                             {"arm", {}, kMesh},
                             {"hand", {}, kMesh},
                             {"after_$AssimpFbx$_Scaling", {}}});
    const auto hierarchy = Hierarchy::hierarchy(root);
    auto filter = hierarchy->defaultChildFilter();
    ASSERT_EQ(filter.size(), 1U);
    EXPECT_EQ(namesOf(hierarchy->filteredChildren(filter)), namesOf(hierarchy->children()));

    filter.front().value = false;
    const auto authored = hierarchy->filteredChildren(filter);
    EXPECT_THAT(namesOf(authored), ElementsAre("before", "arm", "hand"));
    expectReachable({authored.begin(), authored.end()});
    EXPECT_TRUE(hierarchy->hasFilteredChildren(filter));
    const auto last = Hierarchy::hierarchy(hierarchy->children().back());
    EXPECT_FALSE(last->hasFilteredChildren(filter));
}

TEST_F(AssimpScene, FollowsItsGatewayByHandWithoutASceneAndIsTakenAway)
{
    Scene::initializeInstance(nullptr);
    const auto file = assimp::read(write("a.gltf", gltf({{"Scene", {}, kMesh}})));
    const auto root = files.mount(file, gateway->path());
    EXPECT_THROW(files.mount(file, gateway->path()), std::invalid_argument);
    EXPECT_THROW(files.mount(file, {}), std::invalid_argument);
    EXPECT_THROW(files.mount(nullptr, model.root()), std::invalid_argument);
    files.mount(file, model.root());
    EXPECT_THROW(files.moveMount(gateway->path(), model.root()), std::invalid_argument);

    const auto renamed = model.rename(gateway->path(), "there");
    EXPECT_FALSE(Hierarchy::createItem(root->path()));
    EXPECT_TRUE(Hierarchy::createItem(PathString::path("/world/there,:Scene"))) << "it was told";
    EXPECT_TRUE(files.moveMount(renamed->path(), gateway->path()));
    EXPECT_TRUE(Hierarchy::createItem(root->path()));
    EXPECT_TRUE(files.moveMount(gateway->path(), renamed->path()));
    EXPECT_FALSE(files.moveMount(gateway->path(), renamed->path()));
    EXPECT_TRUE(files.unmount(renamed->path()));
    EXPECT_FALSE(files.unmount(renamed->path()));
    EXPECT_EQ(files.nbItems(renamed->path()), 0U);
    EXPECT_THAT(Hierarchy::hierarchy(renamed)->children(), testing::IsEmpty());
    EXPECT_EQ(root->nodeType(), "mesh") << "an item keeps its file";
}

TEST_F(AssimpScene, FollowsAndAnnouncesItsGatewayThroughTheScene)
{
    std::vector<std::string> invalidated;
    std::vector<std::string> found;
    const auto observer = test::Callback::make([&](const Notification& notification) {
        if (const auto* change = dynamic_cast<const SubtreeInvalidate*>(&notification)) {
            invalidated.push_back(PathString::string(change->root()->path()));
        }
        forEachOp(notification, [&](const auto& op) {
            if (op.opType == SceneChanged::PathChanged && op.item->nodeName() == "in") {
                found.push_back(files.file(op.item->path()));
            }
        });
    });
    Scene::instance().addObserver(observer);
    mount({{"Scene", {}, kMesh}});
    EXPECT_THAT(invalidated, ElementsAre("/world/in"));

    const auto group = Hierarchy::hierarchy(model.item(model.root()))
                           ->createGroupCmd({gateway}, std::string("group"));
    group->execute();
    EXPECT_TRUE(Hierarchy::createItem(PathString::path("/world/group/in,:Scene")));
    model.rename(group->sceneItem()->path(), "g");
    EXPECT_TRUE(Hierarchy::createItem(PathString::path("/world/g/in,:Scene")));
    model.rename(PathString::path("/world/g"), "group");
    invalidated.clear();
    group->undo();
    EXPECT_TRUE(Hierarchy::createItem(PathString::path("/world/in,:Scene")));
    EXPECT_THAT(found, testing::AllOf(testing::SizeIs(2), testing::Each(Not(""))))
        << "whoever was told of the moves";

    invalidated.clear();
    files.unmount(gateway->path());
    EXPECT_THAT(invalidated, ElementsAre("/world/in"));
}

TEST_F(AssimpScene, LeavesAndComesBackWithItsGatewayAndItsEdits)
{
    const auto in = gateway->path();
    const auto root = mount({{"first", {}, kMesh}});
    const auto edit = Transform3d::transform3d(root)->translateCmd(1, 2, 3);
    edit->execute();
    const auto group = Hierarchy::hierarchy(world)->createGroupCmd({}, std::string("group"));
    group->execute();
    const auto inGroup = model.move(in, group->sceneItem()->path())->path();
    const auto edited = files.editedItems(inGroup);
    ASSERT_EQ(edited.size(), 1U);
    EXPECT_EQ(edited.front().path, inGroup + root->path().getSegments().back());
    EXPECT_TRUE(edited.front().transform && !edited.front().visibility);

    const auto copied = files.copyMountCmd(inGroup, in);
    copied->execute();
    edit->undo();
    EXPECT_EQ(files.editedItems(in).size(), 1U) << "edits of its own";
    edit->redo();
    copied->undo();
    EXPECT_EQ(files.file(in), "");
    EXPECT_THROW((void)files.copyMountCmd(in, inGroup), std::invalid_argument);
    const auto removal = SceneItemOps::sceneItemOps(group->sceneItem())->deleteItemCmd();
    for (const auto inOne : {false, true}) { // of all changes
        removal->execute();
        EXPECT_FALSE(Hierarchy::createItem(edited.front().path));
        EXPECT_THROW(edit->undo(), std::runtime_error);
        model.make(model.make(model.root(), "group", "group")->path(), "group", "in");
        EXPECT_EQ(files.file(inGroup), "") << "not for an ordinary item";
        std::optional<NotificationGuard> guard;
        if (inOne) {
            guard.emplace(Scene::instance());
        }
        model.remove(inGroup.pop());
        removal->undo();
        guard.reset();
        EXPECT_EQ(files.file(inGroup), (folder / "scene.gltf").string());
        edit->undo();
        edit->redo();
    }
    EXPECT_EQ(model.move(inGroup, model.root())->path(), in);

    model.remove(in);
    model.setGateway(model.make(model.root(), "gateway", "in")->path(), files.id());
    mount({{"second", {}, kMesh}}); // which the parked one does not hinder
    const auto second = SceneItemOps::sceneItemOps(gateway)->deleteItemCmd();
    second->execute();
    second->undo();
    EXPECT_THAT(namesOf(Hierarchy::hierarchy(gateway)->children()), ElementsAre("second"));
    EXPECT_TRUE(files.unmount(in));
    EXPECT_TRUE(files.unmount(in)) << "drops the parked one";
    EXPECT_FALSE(files.unmount(in));

    mount({{"third", {}, kMesh}});
    second->execute();
    Scene::instance().notify(ObjectDestroyed(in));
    second->undo();
    EXPECT_EQ(files.file(in), "");
}

TEST_F(AssimpScene, ComesBackToItsPlaceThoughAnotherIsParkedThere)
{
    const auto mountInGroup = [&](const std::string& name) {
        const auto group = model.make(model.root(), "group", "group");
        const auto in = model.make(group->path(), "gateway", "in")->path();
        model.setGateway(in, files.id());
        return files.mount(assimp::read(write(name, gltf({{name, {}, kMesh}}))), in);
    };
    model.remove(mountInGroup("first.gltf")->path().popSegment().pop());
    const auto root = mountInGroup("second.gltf");
    const auto edit = Transform3d::transform3d(root)->translateCmd(1, 2, 3);
    edit->execute();
    const auto group = Hierarchy::createItem(root->path().popSegment().pop());
    const auto ungroup = Hierarchy::hierarchy(group)->ungroupCmd();
    ungroup->execute();
    ungroup->undo(); // the group is added, with its child in it already
    EXPECT_TRUE(Hierarchy::createItem(root->path()));
    EXPECT_NO_THROW(edit->undo());
}

TEST_F(AssimpScene, ComesBackWhenARenameAndADeletionAreUndoneInOne)
{
    const auto group = model.make(model.root(), "group", "group");
    const auto in = model.make(group->path(), "gateway", "in");
    model.setGateway(in->path(), files.id());
    files.mount(assimp::read(write("a.gltf", gltf({{"a", {}, kMesh}}))), in->path());
    const auto renaming = SceneItemOps::sceneItemOps(in)->renameItemCmd(std::string("there"));
    renaming->execute();
    const auto removal = SceneItemOps::sceneItemOps(group)->deleteItemCmd();
    removal->execute();
    {
        const NotificationGuard guard(Scene::instance());
        removal->undo();
        renaming->undo();
    }
    EXPECT_NE(files.file(in->path()), "");
}

TEST_F(AssimpScene, IsRegisteredOnlyWhileItsRunTimeLives)
{
    EXPECT_THROW(assimp::RunTime(), InvalidRunTimeName);
    const auto file = assimp::read(write("a.gltf", gltf({{"Scene", {}, kMesh}})));
    for (auto i = 0; i < 3; ++i) {
        assimp::RunTime other("other");
        const auto root = other.mount(file, gateway->path());
        EXPECT_EQ(PathString::path("/world/in,:Scene"), root->path()) << "asked for by item";
    }
    EXPECT_THAT(PathString::pathComponentSeparatorRunTimeIds(':'), ElementsAre(files.id()));
}

TEST_F(AssimpScene, RefusesWhatItCannotReadWithOneLine)
{
    EXPECT_EQ(refusal("/no/such.obj"), "no such file");
    EXPECT_EQ(refusal(""), "no such file");
    EXPECT_EQ(refusal(fs::temp_directory_path().string()), "is a directory");
    EXPECT_EQ(refusal("/dev/zero"), "is not a regular file");
    EXPECT_EQ(refusal(write("a.txt", "plain words")), "the file format is not known");
    EXPECT_THAT(refusal(write("a.gltf", "{\n\n")), Not(HasSubstr("a.gltf")));
    // Counts that the importer would make room for before it looks for the elements.
    EXPECT_THAT(refusal(write("a.off", "OFF\n#\n353535235358 6 0\n0 0 0\n")),
                HasSubstr("353535235358"));
    EXPECT_THAT(refusal(write("b.OFF", "8 999999999999999999999 0\n")), HasSubstr("counts"));
    EXPECT_THAT(refusal(write("a.ply", "ply\nformat ascii 1.0\ncomment element 99999999\n"
                                       "element vertex 3000000000\nend_header\n")),
                HasSubstr("3000000000"));
}

TEST_F(AssimpScene, ReportsProgressInTheHostsLocaleUntilItIsGivenUp)
{
    const std::locale hosts(std::setlocale(LC_ALL, nullptr));
    std::locale::global(hosts); // with a name, unlike the one before
    std::setlocale(LC_NUMERIC, "C");
    const auto file = write("a.gltf", gltf({{"Scene", {}, kMesh}}));
    std::vector<float> told;
    const auto thread = std::this_thread::get_id();
    EXPECT_TRUE(assimp::read(file, [&](float fraction) {
        EXPECT_EQ(std::this_thread::get_id(), thread);
        EXPECT_TRUE(std::locale() == hosts);
        told.push_back(fraction);
        return true;
    }));
    EXPECT_TRUE(std::locale() == hosts);
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_EQ(told.front(), 0);
    EXPECT_EQ(told.back(), 1);
    for (const auto end : {0.F, 0.5F, 1.F}) {
        EXPECT_EQ(refusal(file, [end](float fraction) { return fraction < end; }), "cancelled");
    }
    EXPECT_THROW((void)assimp::read(file, [](float) -> bool { throw std::domain_error("x"); }),
                 std::domain_error);
}

TEST_F(AssimpScene, HoldsDeepAndWideFiles)
{
    constexpr std::size_t kSize = 50'000;
    std::vector<GltfNode> deep(kSize, {"n", {}});
    for (std::size_t i = 1; i < kSize; ++i) {
        deep[i - 1].children.push_back(i);
    }
    deep.back().rest = kMesh;
    mount(deep);
    EXPECT_EQ(files.nbItems(gateway->path()), kSize);
    const PathSegment::Components way(kSize, std::string("n"));
    const auto leaf = Hierarchy::createItem(gateway->path() + PathSegment(way, files.id(), ':'));
    ASSERT_TRUE(leaf);
    EXPECT_EQ(leaf->nodeType(), "mesh");
    files.unmount(gateway->path());

    std::vector<GltfNode> wide(kSize, {"n", {}, kMesh});
    for (std::size_t i = 1; i < kSize; ++i) {
        wide.front().children.push_back(i);
    }
    const auto items = allUnder(mount(wide));
    EXPECT_EQ(items.back()->nodeName(), "n" + std::to_string(kSize - 2));
    expectReachable(items);
}
