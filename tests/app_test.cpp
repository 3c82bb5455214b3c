#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "program.h"

namespace {

using test::contentOf;
using test::linesOf;
using test::Result;
using testing::AllOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
namespace fs = std::filesystem;

class Kiv : public test::Program
{
protected:
    /// What `kiv show` tells as JSON.
    nlohmann::json shown(const std::string& arguments, const std::string& path) const
    {
        return nlohmann::json::parse(kiv("show --json " + arguments + " " + path).out);
    }

    /// The workshop with the siblings Top and Vice renamed; the names are given as JSON text.
    std::string workshopWith(const std::string& top, const std::string& vice) const
    {
        auto text = contentOf(KIV_EXAMPLES "/workshop.gltf");
        text.replace(text.find(R"("Top")"), 5, top);
        text.replace(text.find(R"("Vice")"), 6, vice);
        const auto file = folder / "renamed.gltf";
        std::ofstream(file, std::ios::binary) << text;
        return "'" + file.string() + "'";
    }
};

TEST_F(Kiv, TreeCrossesRunTimesAndCounts)
{
    const auto tree =
        kiv("tree --make group:/world/props --make mesh:/world/props/crate " + workshop);
    EXPECT_EQ(tree.status, 0);
    EXPECT_EQ(tree.err, "");
    EXPECT_EQ(tree.out, R"(world  root  [memory]
├── props  group
│   └── crate  mesh
└── workshop  gateway
    └── Workshop  transform  [assimp]
        ├── Floor  mesh
        ├── Bench  transform
        │   ├── Top  mesh
        │   ├── Leg front left  mesh
        │   ├── Leg front right  mesh
        │   ├── Leg back left  mesh
        │   ├── Leg back right  mesh
        │   └── Vice  mesh
        ├── Tools  transform
        │   ├── Hammer  transform
        │   │   ├── Handle  mesh
        │   │   └── Head  mesh
        │   └── Toolbox  mesh
        ├── Lamp  transform
        │   └── Bulb  light
        └── View  camera

21 items
run-times: 4 memory, 17 assimp
node types: 1 camera, 1 gateway, 1 group, 1 light, 11 mesh, 1 root, 5 transform
)");
}

TEST_F(Kiv, DepthAndTypeNarrowTheTreeInEveryForm)
{
    EXPECT_EQ(kiv("tree --type light " + workshop).out, R"(world  root  [memory]
└── workshop  gateway
    └── Workshop  transform  [assimp]
        └── Lamp  transform
            └── Bulb  light

1 item
run-times: 1 assimp
node types: 1 light
)");
    EXPECT_EQ(kiv("tree --type light --depth 3 " + workshop).out, "0 items\n");
    EXPECT_THAT(linesOf(kiv("tree --paths --type transform --depth 3 " + workshop).out),
                ElementsAre("/world/workshop,:Workshop", "/world/workshop,:Workshop:Bench",
                            "/world/workshop,:Workshop:Tools", "/world/workshop,:Workshop:Lamp"));
}

TEST_F(Kiv, EveryPathOfATreeLeadsToItsItemAndItsOriginalName)
{
    const auto file = workshopWith(R"("a:b,c/d")", R"("a:b,c/d")");
    const auto paths = linesOf(kiv("tree --paths " + file).out);
    ASSERT_EQ(paths.size(), 19u);
    for (const auto& path : paths) {
        const auto item = kiv("show --json " + file + " '" + path + "'");
        ASSERT_EQ(item.status, 0) << path;
        const auto told = nlohmann::json::parse(item.out);
        EXPECT_EQ(told["path"], path);
        EXPECT_EQ(told["originalName"] == "a:b,c/d", path.find("a_b") != path.npos);
    }
}

TEST_F(Kiv, TheTreeAsJsonIsTheTreeAsPaths)
{
    const auto items = nlohmann::json::parse(kiv("tree --json " + workshop).out);
    std::string paths;
    std::vector<std::string> seen;
    for (const auto& item : items) {
        const auto& parent = item["parent"];
        EXPECT_TRUE(item["depth"] == 0 ? parent.is_null()
                                       : std::find(seen.begin(), seen.end(), parent) != seen.end());
        seen.push_back(item["path"]);
        paths += seen.back() + "\n";
    }
    EXPECT_EQ(paths, kiv("tree --paths " + workshop).out);
    EXPECT_EQ(items.back(), (nlohmann::json{{"path", "/world/workshop,:Workshop:View"},
                                            {"parent", "/world/workshop,:Workshop"},
                                            {"name", "View"},
                                            {"type", "camera"},
                                            {"runTime", "assimp"},
                                            {"file", KIV_EXAMPLES "/workshop.gltf"},
                                            {"depth", 3}}));
}

TEST_F(Kiv, ShowFindsAnItemByFullPathAndByItsPartInTheFile)
{
    const auto expected = kiv("show " + workshop + " /world/workshop,:Workshop:Lamp");
    EXPECT_EQ(expected.status, 0);
    EXPECT_THAT(expected.out, ContainsRegex("node type +transform\n"));
    EXPECT_THAT(expected.out, ContainsRegex("parent +/world/workshop,:Workshop\n"));
    EXPECT_THAT(expected.out, ContainsRegex("children +1\n"));
    EXPECT_EQ(kiv("show " + workshop + " :Workshop:Lamp").out, expected.out);
    EXPECT_EQ(kiv("show " + workshop + " Workshop:Lamp").out, expected.out);
    EXPECT_THAT(kiv("show " + workshop + " /world/workshop").out, ContainsRegex("gateway +yes\n"));
}

TEST_F(Kiv, AnUnknownItemIsOneLineAndAFailure)
{
    for (const std::string path : {"nope", ":", ",", "/", "/world,", "/nope", "/world/workshop,/x",
                                   "Workshop,:Workshop", ";x", ""}) {
        const auto item = kiv("show " + workshop + " '" + path + "'");
        EXPECT_EQ(item.status, 1) << path;
        EXPECT_EQ(item.out, "");
        EXPECT_EQ(item.err, "kiv: no such item '" + path + "'\n");
    }
}

TEST_F(Kiv, ShowPlacesAnItemInTheWorld)
{
    const auto bulb = shown(workshop, "Workshop:Lamp:Bulb").at("transform");
    EXPECT_EQ(bulb["matrix"][3][1], bulb["translation"][1]);
    EXPECT_NEAR(bulb["worldMatrix"][3][1].get<double>(), 2.2, 1e-6);
    const auto text = kiv("show " + workshop + " Workshop:Lamp:Bulb").out;
    EXPECT_THAT(text, ContainsRegex("translation +0, -0\\.2, 0 scene units\n"));
    EXPECT_THAT(text, ContainsRegex("world matrix +1 +0 +0 +0\n( +0.*\n)+ +0 +2\\.2 +0 +1\n"));
}

TEST_F(Kiv, ShowTellsTheUnitsOfACamera)
{
    EXPECT_EQ(shown(workshop, "Workshop:View").at("camera")["nearClipPlane"], 0.1);
    const auto text = kiv("show " + workshop + " Workshop:View").out;
    EXPECT_THAT(text, ContainsRegex("near clip plane +0\\.1 scene units\n"));
    EXPECT_THAT(text, ContainsRegex("focal length +[0-9.]+ mm\n"));
}

TEST_F(Kiv, ShowTellsTheAttributesOfAnItemByType)
{
    const auto file = workshopWith(
        R"("Top", "extras": {"maker": "Ada", "weight": 2.5, "fixed": true})", R"("Vice")");
    EXPECT_THAT(kiv("show " + file + " Workshop:Bench:Top").out,
                ContainsRegex("  maker +Ada  \\(String"));
}

TEST_F(Kiv, FindsCamerasAndLightsAcrossRunTimes)
{
    const auto two = "--make camera:/world/eye --make group:/world/rig "
                     "--make spotLight:/world/rig/spot " +
                     workshop + " " + workshop;
    const std::string column = "  " KIV_EXAMPLES "/workshop.gltf  ";
    const std::string noFile(column.size(), ' ');
    EXPECT_EQ(kiv("find --cameras " + two).out,
              "camera  memory" + noFile + "/world/eye\n" + "camera  assimp" + column +
                  "/world/workshop,:Workshop:View\n" + "camera  assimp" + column +
                  "/world/workshop1,:Workshop:View\n");
    EXPECT_EQ(kiv("find --lights " + two).out,
              "spotLight  memory" + noFile + "/world/rig/spot\n" + "light      assimp" + column +
                  "/world/workshop,:Workshop:Lamp:Bulb\n" + "light      assimp" + column +
                  "/world/workshop1,:Workshop:Lamp:Bulb\n");
    EXPECT_EQ(kiv("find --paths --cameras --name 'e*' " + two).out, "/world/eye\n");
    EXPECT_EQ(kiv("find --cameras --lights " + two).status, 1);
}

TEST_F(Kiv, FindsTheItemsThatMeetEveryCriterion)
{
    EXPECT_THAT(linesOf(kiv("find --paths --name 'L*' --type transform " + workshop).out),
                ElementsAre("/world/workshop,:Workshop:Lamp"));
    EXPECT_THAT(linesOf(kiv("find --paths --name '?[ea]*d' " + workshop).out),
                ElementsAre("/world/workshop,:Workshop:Tools:Hammer:Head"));
    EXPECT_EQ(kiv("find --json --type transform " + workshop).out,
              kiv("tree --json --type transform " + workshop).out);
}

TEST_F(Kiv, PatternsTakeCharactersNotBytes)
{
    const auto file = workshopWith(R"("\u00e9t\u00e9")", R"("b")");
    EXPECT_EQ(linesOf(kiv("find --name '?t?' " + file).out).size(), 1u);
}

TEST_F(Kiv, FindingNothingIsSilentAndAFailure)
{
    const auto nothing = kiv("find --name nowhere " + workshop);
    EXPECT_EQ(nothing.status, 1);
    EXPECT_EQ(nothing.out + nothing.err, "");
    EXPECT_EQ(kiv("find --json --name nowhere " + workshop).out, "[]\n");
    const auto partial = kiv("find --paths --name workshop missing.gltf " + workshop);
    EXPECT_EQ(partial.status, 1);
    EXPECT_EQ(partial.out, "/world/workshop\n");
    EXPECT_THAT(linesOf(partial.err), ElementsAre(StartsWith("kiv: missing.gltf: ")));
}

TEST_F(Kiv, AFileThatCannotBeReadLeavesTheOthersShown)
{
    const auto tree = kiv("tree --paths --depth 1 missing.gltf " + workshop + " / " + workshop);
    EXPECT_EQ(tree.status, 1);
    EXPECT_THAT(linesOf(tree.out), ElementsAre("/world", "/world/workshop", "/world/workshop1"));
    EXPECT_THAT(linesOf(tree.err),
                ElementsAre(StartsWith("kiv: missing.gltf: "), StartsWith("kiv: /: ")));

    const auto nothing = kiv("tree missing.gltf");
    EXPECT_EQ(nothing.status, 1);
    EXPECT_EQ(nothing.out, "");
}

TEST_F(Kiv, AnItemThatCannotBeMadeIsOneLineAndAFailure)
{
    for (const std::string item : {"mesh", "mesh:", ":/world/a", "mesh:/world", "mesh:world/a",
                                   "mesh:/nowhere/a", "mesh:/world/props"}) {
        const auto tree = kiv("tree --paths --make group:/world/props --make '" + item + "'");
        EXPECT_EQ(tree.status, 1);
        EXPECT_EQ(tree.out, "/world\n/world/props\n");
        EXPECT_THAT(linesOf(tree.err), ElementsAre(StartsWith("kiv: " + item + ": ")));
    }
}

TEST_F(Kiv, FileOfEachItemIsToldWhenThereAreSeveral)
{
    fs::copy_file(KIV_EXAMPLES "/workshop.gltf", folder / "copy.gltf");
    const auto copy = (folder / "copy.gltf").string();
    const auto hits = linesOf(kiv("find --lights " + workshop + " " + copy).out);
    ASSERT_EQ(hits.size() % 2, 0u);
    EXPECT_THAT(hits.front(), testing::HasSubstr("  " KIV_EXAMPLES "/workshop.gltf "));
    EXPECT_THAT(hits.back(), testing::HasSubstr("  " + copy));
    const auto items = nlohmann::json::parse(kiv("tree --json " + workshop + " " + copy).out);
    EXPECT_TRUE(items.front()["file"].is_null());
    EXPECT_EQ(items.back()["file"], copy);
    EXPECT_THAT(linesOf(kiv("find --lights " + workshop).out).front(),
                testing::Not(testing::HasSubstr("gltf")));
}

TEST_F(Kiv, SaysWhatWasMeant)
{
    const std::pair<std::string, std::string> cases[] = {
        {"tre a.gltf", "unknown command 'tre'; did you mean 'tree'?"},
        {"a.gltf", "'a.gltf' is a file, not a command; did you mean 'kiv tree a.gltf'?"},
        {"grow", "unknown command 'grow'"},
        {"tree --detph 3 a", "unknown option '--detph'; did you mean '--depth'?"},
        {"--plugni=x tree a", "unknown option '--plugni'; did you mean '--plugin'?"},
        {"plugins a", "unexpected argument 'a'"},
        {"check --only comands a.so",
         "--only: no such contract 'comands'; did you mean 'commands'?"},
        {"tree --depth", "--depth wants a value"},
        {"tree --depth x a", "--depth: not a number: 'x'"},
        {"diff --tolerance -1 a b", "--tolerance: '-1' is less than 0"},
        {"find --min-size x a", "--min-size: not a number: 'x'"}};
    for (const auto& [arguments, message] : cases) {
        const auto result = kiv(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "kiv: " + message + " (kiv --help tells more)\n");
    }
    EXPECT_EQ(kiv("show " + workshop + " Workshop:Veiw").err,
              "kiv: no such item 'Workshop:Veiw'; did you mean 'View'?\n");
    EXPECT_EQ(
        kiv("shell -c 'mount a.gltf --with asimp'").err,
        "kiv: line 1: a.gltf: no run-time 'asimp' reads scene files; did you mean 'assimp'?\n");
    for (const auto* command : {"tree", "find"}) {
        EXPECT_EQ(kiv(command + std::string(" --type Light ") + workshop).err,
                  "kiv: no item is of type 'Light' (camera, gateway, light, mesh, root, transform);"
                  " did you mean 'light'?\n");
    }
    const std::pair<std::string, std::string> missing[] = {
        {"--name Lanp", "no such item 'Lanp'; did you mean 'Lamp'?"},
        {"--material steal", "no such material 'steal'; did you mean 'Steel'?"},
        {"--attribute 'focalLenght>50'",
         "unknown property 'focalLenght'; did you mean 'focalLength'?"},
        {"--name Bench --attribute roughnes",
         "unknown property 'roughnes'; did you mean 'roughness'?"}};
    for (const auto& [criteria, message] : missing) {
        const auto result = kiv("find " + criteria + " " + workshop);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, "kiv: " + message + "\n");
    }
    EXPECT_EQ(kiv("window --sise 3x4").err,
              "kiv: unknown option '--sise'; did you mean '--size'? (kiv --help tells more)\n");
}

TEST_F(Kiv, WrongUsageIsOneLineAndStatus2)
{
    for (const auto* arguments :
         {"", "tree", "grow", "tree --depth", "tree --depth x a", "tree --depth -1 a",
          "tree --paths --json a", "tree --bogus a", "show a", "find --cameras", "find a",
          "find --paths --json --lights a"}) {
        const auto result = kiv(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(linesOf(result.err), ElementsAre(StartsWith("kiv: "))) << arguments;
    }
}

TEST_F(Kiv, HelpAndVersionGoToTheStandardOutput)
{
    EXPECT_THAT(kiv("--version").out, StartsWith("kiv 4.2.0 ("));
    EXPECT_EQ(linesOf(kiv("--version").out).size(), 1u);
    for (const auto* arguments : {"--help", "tree --help", "show --help", "find --help"}) {
        const auto help = kiv(arguments);
        EXPECT_EQ(help.status, 0);
        EXPECT_THAT(help.out, HasSubstr("Usage: kiv"));
        EXPECT_EQ(help.err, "");
    }
}

TEST_F(Kiv, NamesCannotSteerTheTerminal)
{
    const auto file = workshopWith(R"("\u001b[2J\u0007\r\nred")", R"("\u009b2J\u202egnp")");
    for (const auto* form : {"", "--paths ", "--json "}) {
        const auto tree = onTerminal("NO_COLOR=1", std::string("tree ") + form + file).out;
        EXPECT_THAT(tree, HasSubstr("red"));
        EXPECT_THAT(tree, Not(ContainsRegex("[\x1b\x07]")));
        EXPECT_THAT(tree, Not(HasSubstr("\u009b")));
        EXPECT_THAT(tree, Not(HasSubstr("\u202e")));
    }
    EXPECT_EQ(linesOf(kiv("tree --paths " + file).out).size(), 19u);
    EXPECT_EQ(nlohmann::json::parse(kiv("tree --json " + file).out).size(), 19u);
    EXPECT_THAT(kiv("tree \"$(printf 'a\\033[2J\\nb')\"").err,
                StartsWith("kiv: a\\x1b[2J\\x0ab: "));
}

TEST_F(Kiv, ColourIsForTerminalsAndForThoseWhoWantIt)
{
    EXPECT_THAT(onTerminal("-u NO_COLOR", "tree " + workshop).out, HasSubstr("\x1b["));
    EXPECT_THAT(onTerminal("NO_COLOR=1", "tree " + workshop).out, Not(HasSubstr("\x1b[")));
    EXPECT_THAT(shell("env -u NO_COLOR TERM=xterm '" KIV_PROGRAM "' tree " + workshop).out,
                Not(HasSubstr("\x1b[")));
}

TEST_F(Kiv, AReaderWhoGoesAwayIsNoError)
{
    const auto cut = shell("{ kiv tree " + workshop + "; echo status $? >&2; } | true");
    EXPECT_EQ(cut.err, "status 0\n");
}

TEST_F(Kiv, LoadsPluginsAndHoldsThemAgainstTheContracts)
{
    const std::string plugin = "--plugin '" KIV_PROPS "' ";
    const std::string items = "/props\n/props/shelf\n/props/shelf/lamp\n/props/shelf/vase\n";
    EXPECT_EQ(kiv(plugin + "tree --paths").out, "/world\n" + items);
    EXPECT_THAT(kiv("tree --paths " + plugin + workshop).out, testing::EndsWith(items));
    EXPECT_THAT(kiv(plugin + "show /props/shelf/lamp").out, HasSubstr("/props/shelf/lamp"));
    EXPECT_EQ(kiv(plugin + "find --name 'v*' --paths").out, "/props/shelf/vase\n");
    EXPECT_EQ(shell("KIV_PLUGIN_PATH='" KIV_PROPS "' kiv plugins").out,
              "props\t4.2\tprops\t" KIV_PROPS "\n");
    const auto edited =
        kiv(plugin + "shell -c 'rename /props/shelf/lamp torch; undo; cd /props/shelf/lamp; pwd'");
    EXPECT_EQ(edited.err, "");
    EXPECT_THAT(edited.out, testing::EndsWith("/props/shelf/lamp\n"));

    const auto refused = kiv("--plugin nowhere.so tree " + workshop);
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr("cannot load the plug-in 'nowhere.so': "));
    EXPECT_THAT(refused.out, StartsWith("world"));

    const auto check = kiv("check --steps 20 '" KIV_PROPS "'");
    EXPECT_EQ(check.status, 0) << check.out;
    EXPECT_THAT(check.out, testing::EndsWith("skipped (seed 1)\n"));
    EXPECT_EQ(kiv("check --only paths --junit assimp " + workshop).status, 0);
    EXPECT_EQ(kiv("check assimp").status, 2);
    EXPECT_EQ(kiv("check nowhere.so").status, 1);

    // Run-times in Python are shown by Python, which runs the program; here, what it is asked for.
    const auto python = folder / "python3";
    std::ofstream(python) << "#!/bin/sh\necho \"$@\"\n";
    fs::permissions(python, fs::perms::owner_all);
    const auto asked = [this](const std::string& words) {
        return shell("PATH='" + folder.string() + "' kiv " + words).out;
    };
    for (const auto& words : {"check --only paths,notifications --python stage:scene --json",
                              "--python stage:scene tree --depth 2 x.gltf"}) {
        EXPECT_EQ(asked(words), "-m kiv " + std::string(words) + "\n");
    }
    EXPECT_EQ(kiv("--python stage:scene --nope tree").status, 2);
    EXPECT_THAT(shell("PATH=/nowhere kiv check --python stage:scene").err,
                HasSubstr("its package kiv"));
}

TEST_F(Kiv, OpensDocumentsWhereItTakesSceneFiles)
{
    const auto saved = " '" + (folder / "saved.json").string() + "' ";
    ASSERT_EQ(kiv("shell " + workshop + " -c 'rename workshop shop; save" + saved + "'").err, "");
    EXPECT_THAT(kiv("tree --depth 1" + saved).out, HasSubstr("shop  gateway"));
    EXPECT_THAT(kiv("show" + saved + "/world/shop").out, HasSubstr("/world/shop"));
    EXPECT_EQ(kiv("shell" + saved + "-c undo").status, 1) << "opening is no edit";
}

TEST_F(Kiv, OutputThatCannotBeWrittenIsAFailure)
{
    const auto full = kiv("tree " + workshop + " >/dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_THAT(linesOf(full.err), ElementsAre(StartsWith("kiv: standard output: ")));
}

TEST_F(Kiv, FindsByMaterialAttributeSizeAndCase)
{
    const auto found = [this](const std::string& criteria) {
        std::vector<std::string> names;
        for (const auto& path : linesOf(kiv("find --paths " + criteria + " " + workshop).out)) {
            names.push_back(path.substr(path.find_last_of(":") + 1));
        }
        return names;
    };
    EXPECT_THAT(found("--name 'vICE' -i"), ElementsAre("Vice"));
    EXPECT_THAT(found("--attribute 'focalLength>1'"), ElementsAre("View"));
    EXPECT_THAT(found("--attribute 'focalLength>1000'"), IsEmpty());
    EXPECT_THAT(found("--type light --attribute 'intensity>0'"), ElementsAre("Bulb"));
    EXPECT_THAT(found("--min-size 3.9 --type mesh"), ElementsAre("Floor"));
    EXPECT_EQ(found("--type material").size(), 2u) << "materials lie under no item of the scene";
    EXPECT_THAT(found("--material '*' --name 'Leg*left'"),
                ElementsAre("Leg front left", "Leg back left"));
    EXPECT_THAT(found("--metadata Locked --type transform"), ElementsAre("Workshop"));
    EXPECT_THAT(found("--hidden"), IsEmpty());
    EXPECT_EQ(kiv("find --attribute 'x>y' " + workshop).err,
              "kiv: not a number: 'y' (kiv --help tells more)\n");
}

TEST_F(Kiv, ShowsSeveralItemsAsATable)
{
    const auto table =
        linesOf(kiv("show --columns visible,focalLength " + workshop + " '**/V*'").out);
    ASSERT_EQ(table.size(), 3u);
    EXPECT_THAT(table[0], ContainsRegex("item +node type +visible +focalLength"));
    EXPECT_THAT(table[1], ContainsRegex("View +camera +yes +[0-9.]+$"));
    EXPECT_THAT(table[2], ContainsRegex("Vice +mesh +yes$"));
    EXPECT_THAT(kiv("show --columns focalLenght " + workshop + " '**/V*'").err,
                HasSubstr("unknown property 'focalLenght'; did you mean 'focalLength'?"));
}

TEST_F(Kiv, RecordsAShellAndDoesItAgain)
{
    const auto recording = "'" + (folder / "session.json").string() + "'";
    const auto commands = " -c \"watch --record=" + recording +
                          "; move workshop/Workshop/Lamp 0 1 0; undo; watch off; pwd\"";
    EXPECT_EQ(kiv("shell " + workshop + commands).status, 0);
    const auto lines = linesOf(contentOf(folder / "session.json"));
    EXPECT_THAT(lines.back(), HasSubstr("watch off"));
    for (const auto& line : lines) {
        EXPECT_GT(nlohmann::json::parse(line)["id"], 0) << line;
    }
    const auto same = kiv("replay " + recording + " " + workshop);
    EXPECT_EQ(same.status, 0) << same.err;
    EXPECT_EQ(same.out, "no differences\n");
    const auto other = kiv("replay " + recording);
    EXPECT_EQ(other.status, 1);
    EXPECT_THAT(other.out, HasSubstr("now       error: no such item 'workshop/Workshop/Lamp'"));
}

TEST_F(Kiv, InspectTellsRunTimesAndMounts)
{
    const auto told = nlohmann::json::parse(kiv("inspect --json " + workshop).out);
    EXPECT_EQ(told["items"], 19);
    ASSERT_EQ(told["runTimes"].size(), 2u);
    EXPECT_EQ(told["runTimes"][1]["gateways"][0], "/world/workshop");
    EXPECT_EQ(told["mounts"][0]["gateway"], "/world/workshop");
    EXPECT_FALSE(told.contains("leftovers"));
}

TEST_F(Kiv, InfoTellsWhatIsInAFile)
{
    const auto info = kiv("info " + workshop);
    EXPECT_EQ(info.status, 0);
    for (const auto* line : {"format   glTF2", "unit     1 m", "items       17", "10 mesh",
                             "vertices    52", "size        4, 1.08, 4 scene units"}) {
        EXPECT_THAT(info.out, HasSubstr(line));
    }
    const auto two = linesOf(kiv("info " + workshop + " " + workshop).out);
    ASSERT_EQ(two.size(), 4u);
    EXPECT_THAT(two.front(), HasSubstr("vertices"));
    EXPECT_THAT(two.back(), AllOf(StartsWith("total"), HasSubstr("104")));
    const auto csv = linesOf(kiv("info --csv " + workshop + " nowhere.obj").out);
    ASSERT_EQ(csv.size(), 3u) << "what cannot be read is complained of and left out";
    EXPECT_THAT(csv[1], HasSubstr(",1.0,1.0,y,17,3,6,3,52,26,"));
}

TEST_F(Kiv, InfoMarksTexturesThatAreMissing)
{
    std::ofstream(folder / "there is.png") << "picture";
    std::ofstream(folder / "a.obj")
        << "mtllib a.mtl\nusemtl m\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
    std::ofstream(folder / "a.mtl")
        << "newmtl m\nmap_Kd C:\\stuff\\there is.png\nmap_Ks gone.png\n";
    const auto file = "'" + (folder / "a.obj").string() + "'";
    const auto told = nlohmann::json::parse(kiv("info --json " + file).out)["files"][0];
    EXPECT_EQ(told["textures"], 2);
    EXPECT_EQ(told["missingTextures"], 1);
    EXPECT_THAT(kiv("info " + file).out, HasSubstr("gone.png  MISSING"));
}

TEST_F(Kiv, DiffTellsTheEditsAndNoMore)
{
    EXPECT_EQ(kiv("diff " + workshop + " " + workshop).out, "no differences\n");
    auto document = nlohmann::json::parse(contentOf(KIV_EXAMPLES "/workshop.gltf"));
    for (auto& node : document["nodes"]) {
        if (node["name"] == "Vice") {
            node["name"] = "Clamp";
        } else if (node["name"] == "Hammer") {
            node["translation"] = {0, 3, 0};
        }
    }
    document["materials"][0]["doubleSided"] = true;
    const auto file = folder / "edited.gltf";
    std::ofstream(file) << document;
    const auto diff = kiv("diff " + workshop + " '" + file.string() + "'");
    EXPECT_EQ(diff.status, 1);
    const auto lines = linesOf(diff.out);
    ASSERT_EQ(lines.size(), 4u) << diff.out;
    EXPECT_THAT(lines[0], AllOf(StartsWith("renamed"), HasSubstr("Vice -> "), HasSubstr("Clamp")));
    EXPECT_THAT(lines[1],
                AllOf(StartsWith("changed"), HasSubstr("translation"), HasSubstr("-> 0, 3, 0")));
    EXPECT_THAT(lines[2], AllOf(HasSubstr("materials"), ContainsRegex("twoSided +no -> yes")));
    const auto json = nlohmann::json::parse(
        kiv("diff --structure --json " + workshop + " '" + file.string() + "'").out);
    ASSERT_EQ(json.size(), 1u);
    EXPECT_EQ(json[0]["kind"], "renamed");
    EXPECT_EQ(kiv("diff " + workshop + " nowhere.gltf").status, 2);
}

TEST_F(Kiv, InfoAgreesWithTheImportersOwnToolOverAllItsModels)
{
    const fs::path models = "/usr/share/assimp/models";
    if (!fs::exists(models) || shell("assimp version").status != 0) {
        GTEST_SKIP() << "the importer's tool or its test models are not installed";
    }
    const auto all = kiv("info --json $(find " + models.string() + " -type f ! -name '* *')");
    const auto files = nlohmann::json::parse(all.out)["files"];
    EXPECT_GT(files.size(), 140u);
    for (const auto& file : files) {
        const auto name = file["file"].get<std::string>();
        const auto theirs = shell("assimp info '" + name + "' -r").out;
        const auto count = [&](const char* type) { return file["types"].value(type, 0); };
        const std::pair<const char*, int> numbers[] = {
            {"Nodes: +", file["items"]},
            {"Maximum depth +", file["depth"].get<int>() + 1},
            {"Meshes: +", file["meshes"]},
            {"Animations: +", file["animations"]},
            {"Textures .embed..: +", file["embeddedTextures"]},
            {"Materials: +", file["materials"]},
            {"Cameras: +", count("camera")},
            {"Lights: +", count("light")},
            {"Vertices: +", file["vertices"]},
            {"Faces: +", file["faces"]},
            {"Bones: +", file["bones"]},
        };
        for (const auto& [label, number] : numbers) {
            EXPECT_THAT(theirs, ContainsRegex(label + std::to_string(number) + "\n")) << name;
        }
    }
}

} // namespace
