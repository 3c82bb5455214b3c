// Scenes as documents: what was saved comes back, and nothing else.

#include <cmath>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "kiv/document/losslessJson.h"
#include "kiv/document/sceneDocument.h"
#include "kiv/hierarchy.h"
#include "kiv/host/itemProperties.h"
#include "kiv/host/undoHistory.h"
#include "kiv/pathString.h"
#include "kiv/scene.h"

#include "notes/notesRunTime.h"
#include "random.h"

using namespace Kiv_v4;

namespace {

namespace fs = std::filesystem;
using document::Json;

struct SceneDocument : testing::Test
{
    SceneDocument()
    {
        fs::create_directories(folder / "links");
        fs::copy_file(KIV_SOURCES "/examples/workshop.gltf", folder / "workshop.gltf");
        fs::copy_file(KIV_SOURCES "/tests/sceneDocument.json", folder / "scene.json");
        Scene::initializeInstance(std::make_shared<Scene>());
        UndoableCommandMgr::initializeInstance(history);
        scene.mount((folder / "workshop.gltf").string());
        fs::current_path(folder);
    }
    ~SceneDocument() override
    {
        UndoableCommandMgr::initializeInstance(nullptr);
        Scene::initializeInstance(nullptr);
        fs::current_path(folder.parent_path());
        fs::remove_all(folder);
    }

    static std::string contentOf(const std::string& name)
    {
        std::ifstream stream(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static void write(const std::string& name, const std::string& content)
    {
        std::ofstream(name, std::ios::binary) << content;
    }
    std::string saved(const std::string& name = "saved.json") const
    {
        document::save(scene, name);
        return contentOf(name);
    }
    void open(const std::string& name) { document::open(scene, name); }

    /// Gives all numbers that are independent of each other other values.
    void change(Json& json)
    {
        if (json.is_number_float()) {
            const auto bits = static_cast<std::uint32_t>(random.below(0xFF000000));
            float number = 0;
            std::memcpy(&number, &bits, sizeof number);
            json = std::isfinite(number) ? document::losslessJson(number) : json;
        }
        if (json.is_structured()) {
            for (auto& [key, value] : json.items()) {
                key == "mount" || key == "metadata" ? void() : change(value);
            }
        }
    }

    const fs::path folder =
        fs::temp_directory_path() / ("kiv_sceneDocument_test_" + std::to_string(getpid()));
    const std::shared_ptr<host::UndoHistory> history = std::make_shared<host::UndoHistory>();
    document::Workspace scene;
    test::Random random;
};

TEST_F(SceneDocument, ComesBackAsItWasInOneUndoableStep)
{
    for (auto round = 0; round < 20; ++round) {
        const auto before = saved();
        open("scene.json");
        ASSERT_EQ(saved(), contentOf("scene.json"));
        history->undo();
        EXPECT_EQ(saved(), before);
        history->redo();
        EXPECT_EQ(saved(), contentOf("scene.json"));
        auto document = Json::parse(contentOf("scene.json"));
        change(document);
        write("scene.json", document.dump(2) + "\n");
    }
}

TEST_F(SceneDocument, HoldsEveryPropertyThatTheInterfacesTell)
{
    open("scene.json");
    const std::tuple<const char*, const char*, std::size_t> cases[] = {
        {"all", host::kTransform, 11}, // the world matrix among them
        {"view", host::kCamera, 10},
        {"sun", host::kLight, 8},
        {"lamp", host::kLight, 12},
        {"window", host::kLight, 8}};
    for (const auto& [name, group, nbProperties] : cases) {
        auto& model = scene.model();
        const auto item = model.item(model.root() + name);
        const host::ItemProperties other(
            model.make(model.root(), item->nodeType(), std::string("new ") + name));
        const host::ItemProperties properties(item);
        const auto all = properties.of(group);
        EXPECT_EQ(all.size(), nbProperties) << name;
        for (const auto* property : all) {
            EXPECT_EQ(properties.value(*property) == other.value(*property),
                      property->name == "type")
                << property->name;
        }
    }
}

TEST_F(SceneDocument, IsRefusedWithOneLineAndTheSceneAsItWas)
{
    struct Case
    {
        std::string pointer; ///< Of what is replaced in a good document; empty for all of it.
        std::string text;
        std::string message;
    };
    std::string manyFields = "\"a\": 0";
    for (auto i = 0; i < 100; ++i) {
        manyFields += ", \"" + std::to_string(i) + "\": \"[[{:\\\"\"";
    }
    const Case cases[] = {
        {"", "{\n  \"a\" ?}", "line 2, column 7: syntax error.*"},
        {"", std::string(100'000, '['), "is nested deeper than 16 levels"},
        {"", "[]", "not a scene document"},
        {"/version", "2", "unknown version 2, this program reads up to 1"},
        {"", "{" + manyFields + "}", "has an object of more than 100 fields"},
        {"/items/2/mroe~1", "1", "/items/2/mroe~1: unknown field"},
        {"/items/2/name", "7", "/items/2/name: expected a text"},
        {"/items/2/name", R"({"bytes":"6"})", "/items/2/name/bytes: expected hexadecimal digits"},
        {"/items/3/name", R"("a/b")", "/items/3: invalid item name 'a/b'"},
        {"/items/3/name", R"("oak")", "/items/3/name: already the name of another child"},
        {"/items/1/transform/scale/1", R"("inf")", "/items/1/transform/scale: not a finite number"},
        {"/items/2/light", R"({"shadowEnable":true})",
         "/items/2: the item has no property 'shadowEnable'"},
        {"/items/2/camera", R"({"projection":"flat"})", ".*/projection: unknown projection 'flat'"},
        {"/items/1/attributes/1/type", R"("X")", "/items/1/attributes/1/type: unknown .*"},
        {"/items/1/attributes/1/name", R"("bool")", "/items/1/attributes/1/name: already the .*"},
        {"/items/1/attributes/1/value", "2147483648", ".*/1/value: expected an integer of 32 bits"},
        {"/items/1/attributes/12/value/1", "true", ".*/12/value/1: expected a number"},
        {"/connections/0/source/attribute", R"("y")", ".*: no such attribute 'y'"},
        {"/items/0/mount", R"({"edits":[]})", "/items/0/mount: no file can .*"},
        {"/items/10/mount/file", R"("no.obj")", "/items/10/mount/file: no.obj: no such file"},
        {"/items/10/mount/edits/1/item", R"(":x")", ".*/edits/1: no such item in the file: ':x'"},
    };
    const auto before = saved();
    for (const auto& [pointer, text, message] : cases) {
        auto document = Json::parse(contentOf("scene.json"));
        pointer.empty() ? void() : void(document[Json::json_pointer(pointer)] = Json::parse(text));
        write("bad.json", pointer.empty() ? text : document.dump());
        try {
            open("bad.json");
            ADD_FAILURE() << "opened with " << text << " at " << pointer;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), testing::MatchesRegex("bad.json: " + message));
        }
        EXPECT_EQ(saved(), before) << message;
        EXPECT_FALSE(history->canUndo());
    }
}

TEST_F(SceneDocument, IsSavedAsAWholeOrNotAtAll)
{
    fs::create_symlink("../new.json", "links/new.json");
    const auto text = saved("links/new.json");
    EXPECT_THAT(text, testing::HasSubstr(R"("file": "workshop.gltf")"));
    EXPECT_EQ(contentOf("new.json"), text);
    fs::permissions("new.json", fs::perms::owner_all);

    open("scene.json");
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit full{1000, usual.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &full);
    EXPECT_THROW((void)saved("new.json"), std::runtime_error);
    setrlimit(RLIMIT_FSIZE, &usual);
    EXPECT_EQ(contentOf("new.json"), text);
    EXPECT_EQ(saved("new.json"), contentOf("scene.json"));
    EXPECT_EQ(fs::status("new.json").permissions(), fs::perms::owner_all);
    EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 4) << "nothing is left behind";
    EXPECT_THROW((void)saved("links"), std::runtime_error);
}

TEST_F(SceneDocument, KeepsItsFileFromThoseWhoMayNotWriteItAndItsOwnersOtherwise)
{
    constexpr uid_t nobody = 65534;
    const auto isRoot = geteuid() == 0;
    write("scene.json", "");
    fs::permissions("scene.json", fs::perms::owner_read);
    fs::permissions(".", fs::perms::all);
    ASSERT_TRUE(!isRoot || seteuid(nobody) == 0);
    EXPECT_THROW((void)saved("scene.json"), std::runtime_error);
    EXPECT_EQ(seteuid(getuid()), 0);
    if (isRoot) {
        ASSERT_EQ(chown("scene.json", nobody, nobody), 0);
        (void)saved("scene.json");
        struct stat status
        {};
        ASSERT_EQ(stat("scene.json", &status), 0);
        EXPECT_EQ(std::pair(status.st_uid, status.st_gid), std::pair(nobody, nobody));
    }
}

TEST_F(SceneDocument, TakesThePlaceOfNoOtherFileUnasked)
{
    const auto refusal = [&](const std::string& name, document::Replacing replacing) {
        try {
            document::save(scene, name, replacing);
        } catch (const std::runtime_error& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    using enum document::Replacing;
    fs::create_symlink("../workshop.gltf", "links/shop.gltf");
    EXPECT_EQ(refusal("links/shop.gltf", Anything), "links/shop.gltf: is mounted in the scene");
    write("notes.txt", "{\"format\": \"kiv notes\"}");
    EXPECT_THAT(refusal("notes.txt", Documents), testing::HasSubstr("notes.txt: not a scene doc"));
    EXPECT_EQ(refusal("new.GLTF", Documents),
              "new.GLTF: the name of a scene file, not of a document");
    EXPECT_EQ(refusal("new.GLTF", Anything), "");
    EXPECT_EQ(refusal("new.GLTF", Documents), "") << "what is a document stays one";
    EXPECT_EQ(refusal("notes.txt", Anything), "");
    write("compact.json", Json::parse(contentOf("notes.txt")).dump());
    write("empty.json", "");
    for (const auto* name : {"notes.txt", "compact.json", "empty.json", "new.json"}) {
        EXPECT_EQ(refusal(name, Documents), "") << name;
    }
}

TEST_F(SceneDocument, NamesItsFilesAsLinksLeadToThem)
{
    fs::create_directories("real/deep");
    fs::create_directory_symlink("real/deep", "deep");
    fs::create_directory_symlink("real", "door");
    fs::copy_file("workshop.gltf", "real/shop.gltf");
    fs::create_symlink("real/shop.gltf", "link.gltf");
    for (const auto& [mounted, document, file] :
         {std::tuple("deep/../shop.gltf", "new.json", "real/shop.gltf"),
          {"real/shop.gltf", "door/new.json", "shop.gltf"},
          {"link.gltf", "new.json", "link.gltf"},
          {"door/shop.gltf", "new.json", "door/shop.gltf"}}) {
        scene.mount(mounted);
        EXPECT_EQ(Json::parse(saved(document))["items"].back()["mount"]["file"], file);
        EXPECT_NO_THROW(open(document));
    }
}

TEST_F(SceneDocument, OpensWithoutWhatIsMissingWhenToldSo)
{
    auto document = Json::parse(contentOf("scene.json"));
    document["items"][10]["mount"]["edits"][1]["item"] = ":x";
    auto lost = document["items"][10];
    lost["name"] = "lost";
    lost["mount"]["file"] = "no.obj";
    document["items"].push_back(lost);
    write("holed.json", document.dump());
    const auto before = saved();
    std::vector<std::string> complaints;
    host::Transaction edits("open");
    document::open(scene, "holed.json", edits,
                   [&](const auto& line) { complaints.push_back(line); });
    edits.commit();
    EXPECT_THAT(complaints,
                testing::ElementsAre(
                    "holed.json: /items/13/mount/file: no.obj: no such file",
                    "holed.json: /items/10/mount/edits/1: no such item in the file: ':x'"));
    document["items"][13].erase("mount");
    document["items"][10]["mount"]["edits"].erase(1);
    EXPECT_EQ(Json::parse(saved()), document);
    history->undo();
    EXPECT_EQ(saved(), before);
}

TEST_F(SceneDocument, IsNotOpenedOnceReadingIsGivenUpWhateverMayBeMissing)
{
    const auto before = saved();
    std::vector<float> told;
    scene.setProgress([&](const std::string&, float fraction) {
        told.push_back(fraction);
        throw document::Cancelled("given up");
    });
    EXPECT_THROW(document::open(scene, "scene.json", [](const auto&) {}), document::Cancelled);
    EXPECT_EQ(told.size(), 1u);
    scene.setProgress([&](const std::string&, float fraction) { told.push_back(fraction); });
    EXPECT_EQ(saved(), before);
    EXPECT_THROW((void)scene.read("no.obj"), std::runtime_error);
    EXPECT_EQ(told.back(), 1);
}

TEST_F(SceneDocument, MountsFilesOfAnyRunTimeThatReadsThem)
{
    const NotesRunTime lists;
    write("work.Notes", "buy paint\ncall Ada\n");
    const auto desk = scene.mount("work.Notes");
    const auto note = PathString::path(PathString::string(desk) + ",:notes:call Ada");
    ASSERT_TRUE(Hierarchy::createItem(note));
    EXPECT_TRUE(scene.isGateway(*Hierarchy::createItem(desk)));
    EXPECT_EQ(scene.mountAt(desk).runTime, "notes");
    EXPECT_EQ(scene.mounts().size(), 2U);

    const auto before = saved();
    open("saved.json");
    EXPECT_EQ(saved(), before);
    EXPECT_TRUE(Hierarchy::createItem(note));
    history->undo();
    EXPECT_EQ(saved(), before);

    // The name of a run-time outranks the suffix; files of nobody's suffix go to the importer.
    write("work.txt", "sweep\n");
    const auto mounting = scene.mountCmd("work.txt", scene.root(), "shed", "notes");
    mounting->execute();
    EXPECT_EQ(scene.fileOf(*mounting->sceneItem()), "work.txt");
    const auto copy = scene.root()->path() + PathComponent("copy");
    scene.model().make(scene.root()->path(), "group", "copy");
    for (const auto& command : scene.copyMountsCmds(mounting->sceneItem(), copy)) {
        command->execute();
    }
    EXPECT_EQ(scene.mountedFile(copy), "work.txt");
    for (const auto& [file, runTime, reason] : {std::tuple{"work.txt", "", "format is not known"},
                                                std::tuple{"work.txt", "nobody", "'nobody'"},
                                                std::tuple{"gone.notes", "", "cannot be opened"}}) {
        try {
            (void)scene.read(file, runTime);
            ADD_FAILURE() << file << " was read";
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(reason));
        }
    }
}

TEST_F(SceneDocument, MountsBesideOwnItemsUnderNamesOfTheirOwn)
{
    const auto root = scene.root()->path();
    const auto shop = scene.model().item(root + "workshop");
    const auto command = scene.mountCmd("workshop.gltf", shop, "Workshop");
    command->execute();
    EXPECT_EQ(command->sceneItem()->nodeName(), "Workshop1") << "the file's own root has the name";
    EXPECT_EQ(scene.fileOf(*scene.item(":Workshop", command->sceneItem()->path())),
              "workshop.gltf");
}

} // namespace
