#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "program.h"

namespace {

using test::contentOf;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

class Shell : public test::Program
{
protected:
    Shell() { fs::create_symlink(KIV_EXAMPLES, folder / "examples"); }

    /// `kiv shell` in the folder of the test, in which `examples` can be named.
    test::Result run(const std::string& arguments) const
    {
        return shell("cd '" + folder.string() + "' && kiv shell " + arguments);
    }

    void write(const std::string& name, const std::string& content) const
    {
        std::ofstream(folder / name, std::ios::binary) << content;
    }
};

// To record it anew, when a change is meant: the command below, from the root of the sources.
TEST_F(Shell, RecordedSessionOverThreeFilesGoesAsBefore)
{
    const std::string models = "/usr/share/assimp/models";
    if (!fs::exists(models)) {
        GTEST_SKIP() << "There is no " << models;
    }
    const auto session = run("--echo --keep-going <'" KIV_SESSIONS "/dayAtWork.kiv' 2>&1");
    EXPECT_EQ(session.out, contentOf(KIV_SESSIONS "/dayAtWork.txt"));
    EXPECT_EQ(session.status, 1); // the session has errors too
}

TEST_F(Shell, TheTourGoesTwiceAlike)
{
    fs::create_directory(folder / "build");
    EXPECT_EQ(run("<examples/tour.kiv >said").err, "");
    EXPECT_THAT(contentOf(folder / "said"), HasSubstr("\n2 differences\n"));
    EXPECT_EQ(shell("cd '" + folder.string() + "' && kiv replay build/tour.jsonl | tail -n 1").out,
              "no differences\n");
}

TEST_F(Shell, ScriptStopsAtItsFirstErrorUnlessToldOtherwise)
{
    write("outer.kiv", "make group a\n# then\nrun inner.kiv\nmake group c\n");
    write("inner.kiv", "make group b; move b 1 x 3\nmake group never\n");
    const auto stopped = run("<outer.kiv");
    EXPECT_EQ(stopped.out, "/world/a\n/world/b\n");
    EXPECT_EQ(stopped.err, "kiv: line 3: inner.kiv: line 1: not a number: 'x'\n");
    EXPECT_EQ(stopped.status, 1);

    const auto gone = run("--keep-going <outer.kiv");
    EXPECT_EQ(gone.out, "/world/a\n/world/b\n/world/c\n");
    EXPECT_EQ(gone.status, 1);

    write("endless.kiv", "\nrun ./endless.kiv\n");
    EXPECT_EQ(run("-c 'run endless.kiv'").err,
              "kiv: line 1: endless.kiv: line 2: ./endless.kiv: is running already\n");
    write("foreign.kiv", "\xEF\xBB\xBFmake group a\r\n \r\nquit\r\n");
    EXPECT_EQ(run("--echo <foreign.kiv").out, "> make group a\n/world/a\n> quit\n");
    EXPECT_EQ(run("-c 'make group a; exit; frob'").status, 0);
    EXPECT_EQ(run("examples/missing.gltf -c 'make group never'").out, "");
}

struct Fault
{
    std::string line;
    std::string error; ///< What the complaint ends with.
};

TEST_F(Shell, FaultyCommandsSayWhyAndLeaveTheSceneAsItWas)
{
    write("broken.json", "{\"format\": \"kiv scene\",\n \"version\": 1, \"items\": [}");
    write("newer.json", R"({"format": "kiv scene", "version": 2, "items": []})");
    write("gone.json", R"({"format": "kiv scene", "version": 1, "connections": [], "items": [
        {"depth": 0, "name": "world", "type": "root"},
        {"depth": 1, "name": "x", "type": "gateway", "mount": {"file": "gone.gltf"}}]})");
    const std::vector<Fault> faults{
        {"frob a b", "unknown command 'frob' (help lists them)"},
        {"move group 1 2", "too few arguments; usage: move ITEM X Y Z [--by]"},
        {"pwd now", "too many arguments; usage: pwd "},
        {"tree --deep=1", "unknown option '--deep'; usage: tree"},
        {"tree --depth=-1", "--depth: -1 is less than 0"},
        {"move group 1 2 1e999", "'1e999' is out of range"},
        {"move group 1 2 nan", "run-time memory refuses"},
        {"light workshop/Workshop/View intensity 1", "is no light"},
        {"light workshop/Workshop/Lamp/Bulb normalize yes", "Bulb: is no area light"},
        {"camera workshop/Workshop/View fStop much", "not a number: 'much'"},
        {"camera workshop/Workshop/View focal", "has no property 'focal' (projection, focalL"},
        {"save saved.gltf", "saved.gltf: the name of a scene file, not of a document (save"},
        {"mak group x", "unknown command 'mak'; did you mean 'make'?"},
        {"cd workshop/workshop", "no such item 'workshop/workshop'; did you mean 'Workshop'?"},
        {"rename group/nothing x", "no such item 'group/nothing'"},
        {"rename workshop/Workshop/View x", "its run-time offers no operations on items"},
        {"mv group/child workshop/Workshop", "refuses"},
        {"mv group group/child", "refuses"},
        {"rm group/child /world", "refuses"}, // the first one comes back
        {"group g group/child workshop", "/world/workshop: is no sibling of /world/group/child"},
        {"order group before group/child", "/world/group/child: is no sibling of /world/group"},
        {"order group before group", "/world/group: has no place beside itself"},
        {"order group first workshop", "a place is one of: first, last, before ITEM, after ITEM"},
        {"order workshop before workshop/Workshop", "Workshop: belongs to another run-time than"},
        {"order workshop/Workshop first", "Workshop: belongs to another run-time than"},
        {"set group size 2", "/world/group: has no attribute 'size'"},
        {"add group Float size big", "not a number: 'big'"},
        {"add group Fload size", "Matrix4d, Generic); did you mean 'Float'?"},
        {"select @lamps", "no selection is named 'lamps'"},
        {"rm @", "no such item '@': nothing is selected"},
        {"find --type=x; group g @found", "no such item '@found': the selection is empty"},
        {"selection list lamps", "'selection list' takes no name"},
        {"end", "there is no step to end"},
        {"redo", "nothing is left to redo"},
        {"undo 0", "'0' is less than 1"},
        {"undo 9", "only 3 steps are left to undo"},
        {"make 'group b", "the quote ' is not closed"},
        {"mount missing.gltf", "missing.gltf: no such file"},
        {"unmount group", "/world/group: no file is mounted here"},
        {"open missing.json", "missing.json"},
        {"open broken.json", "line 2"},
        {"open newer.json", "version 2"},
        {"open gone.json", "gone.gltf"},
        {"save missing/scene.json", "missing"},
        {"save faults.kiv", "faults.kiv: not a scene document (save --force does it all the same)"},
        {"run missing.kiv", "missing.kiv: cannot be read"},
    };
    std::string script = "mount examples/workshop.gltf; make group group; make mesh child group\n"
                         "save before.json\n";
    for (const auto& fault : faults) {
        script += fault.line + "\n";
    }
    write("faults.kiv", script + "save after.json\n");
    auto errors = test::linesOf(run("--keep-going <faults.kiv").err);
    std::erase_if(errors, [](const auto& line) { return line.starts_with("kiv: no item is of"); });
    ASSERT_EQ(errors.size(), faults.size());
    for (std::size_t i = 0; i < faults.size(); ++i) {
        const auto start = "kiv: line " + std::to_string(i + 3) + ": ";
        EXPECT_THAT(errors[i], testing::StartsWith(start)) << faults[i].line;
        EXPECT_THAT(errors[i], HasSubstr(faults[i].error)) << faults[i].line;
    }
    EXPECT_EQ(contentOf(folder / "after.json"), contentOf(folder / "before.json"));
}

struct Outcome
{
    std::string script;
    std::string end; ///< What it prints last.
};

TEST_F(Shell, CommandsDoUndoAndPrintWhatTheySay)
{
    const std::vector<Outcome> outcomes{
        {"make mesh a; make mesh b; undo; begin; begin; end; end; redo; ls", "a  mesh\nb  mesh\n"},
        {"make mesh a; undo; begin; begin; select /world; end; end; history", "1  edits\n"},
        {"make mesh a; make mesh b; select a b; deselect a; undo; selection",
         "/world/b\n/world/a\n/world/b\n"},
        {"make group g; make mesh a g; select g g/a; ungroup g; selection; undo; selection",
         "/world/g/a\n/world/a\n/world/g\n/world/g/a\n"},
        {"make mesh a; select a; selection store s; rm a; selection list; undo; rename a b; "
         "selection show s",
         "@s  0 items\n/world/b\n/world/b\n"},
        {"mount examples/workshop.gltf w; make mesh a w; make mesh b w; order w/b first; ls w",
         "b  mesh\na  mesh\nWorkshop  transform  [assimp]\n"},
        {"make group g; make mesh a g; move g 1 2 3; scale g 1 4 2; rotate g 0 0 90; "
         "matrix g/a 1 0 0 0 0 2 0 0 0 0 1 0 5 6 7 1 --world; matrix g/a --world",
         "1  0  0  0\n0  2  0  0\n0  0  1  0\n5  6  7  1\n"},
        {"make group g; make mesh a g; scale g 1 1 1e-30; matrix g/a 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 "
         "1 --world; matrix g/a",
         "    0      0  1e+30      0\n    0      0      0      1\n"},
        {"mount examples/workshop.gltf w; mount examples/workshop.gltf w/x; move w/x/Workshop 7 8 "
         "9; "
         "cp w; rename w1 v; move w/x/Workshop 0 0 0; undo 3; redo 3; matrix v/x/Workshop",
         "1  0  0  0\n0  1  0  0\n0  0  1  0\n7  8  9  1\n"},
        {"make group chair; make mesh chair chair; ungroup chair; make mesh lamp; group lamp lamp; "
         "ls; ls lamp",
         "chair  mesh\nlamp  group\nlamp  mesh\n"},
        {"make camera c; camera c focalLength 70; camera c focalLength", "70\n"},
        {"make mesh a; add a Float f; metadata a f Locked on; metadata a f Locked", "yes\n"},
        {"make group g; select g; mount examples/workshop.gltf @", "/world/g/workshop\n"},
        {"make mesh a; select @; deselect @; selection", "/world/a\n"},
    };
    for (const auto& [script, end] : outcomes) {
        const auto result = run("-c '" + script + "'");
        EXPECT_THAT(result.out, testing::EndsWith(end)) << script;
        EXPECT_EQ(result.err, "") << script;
    }
    EXPECT_THAT(run("-c 'make group g; make mesh a g; scale g 0 1 1; rotate g 10 20 30; matrix g/a "
                    "1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1 --world'")
                    .err,
                HasSubstr("/world/g/a: cannot be placed in world space"));
}

TEST_F(Shell, OwnItemsUnderAGatewayGetNamesApartFromThoseOfTheFile)
{
    const auto session = run("-c 'mount examples/workshop.gltf shop; cd shop; make group Workshop; "
                             "make group a; rename a Workshop; make mesh Workshop /world; "
                             "mv /world/Workshop /world/shop; group Workshop Workshop1; ls; "
                             "undo 2; ls /world'");
    EXPECT_EQ(session.err, "");
    EXPECT_EQ(session.out,
              "/world/shop\n/world/shop/Workshop1\n/world/shop/a\n/world/shop/Workshop2\n"
              "/world/Workshop\n/world/shop/Workshop3\n/world/shop/Workshop4\n"
              "Workshop4  group\nWorkshop2  group\nWorkshop3  mesh\n"
              "Workshop  transform  [assimp]\nshop  gateway\nWorkshop  mesh\n");
    write("clash.json", R"({"format": "kiv scene", "version": 1, "items": [
        {"depth": 0, "name": "world", "type": "root"},
        {"depth": 1, "name": "w", "type": "gateway", "mount": {"file": "examples/workshop.gltf"}},
        {"depth": 2, "name": "Workshop", "type": "group"}]})");
    EXPECT_EQ(run("-c 'open clash.json; select /world/w,:Workshop:Lamp; rename /world/w/Workshop "
                  "Other; selection; rm w/Other; selection'")
                  .out,
              "/world/w/Other\n/world/w,:Workshop:Lamp\n/world/w,:Workshop:Lamp\n");
}

TEST_F(Shell, OptionsTakeTheirValuesEitherWay)
{
    const auto script = [this](const std::string& option) {
        return run("-c 'make mesh a; make group b; tree " + option + " --paths'").out;
    };
    EXPECT_EQ(script("--type mesh"), script("--type=mesh"));
    EXPECT_THAT(script("--type mesh"), testing::EndsWith("\n/world/a\n"));
    EXPECT_THAT(run("-c 'tree --depth'").err, HasSubstr("--depth wants a value"));
    EXPECT_EQ(run("-c 'make mesh a; find --type mehs'").err,
              "kiv: no item is of type 'mehs' (mesh, root); did you mean 'mesh'?\n");
}

TEST_F(Shell, SavesAndOpensAgainstTheOddsWhenToldSo)
{
    write("notes.txt", "notes");
    write("gone.json", R"({"format": "kiv scene", "version": 1, "items": [
        {"depth": 0, "name": "world", "type": "root"},
        {"depth": 1, "name": "x", "type": "gateway", "mount": {"file": "gone.gltf"}}]})");
    const auto told = run("-c 'open gone.json --keep-going; pwd; save notes.txt --force'");
    EXPECT_EQ(told.out, "/world\n");
    EXPECT_EQ(told.err, "kiv: gone.json: /items/1/mount/file: gone.gltf: no such file\n");
    EXPECT_EQ(told.status, 0);
    EXPECT_THAT(contentOf(folder / "notes.txt"), HasSubstr("\"x\""));
}

/// A shell on a terminal of its own, in the folder of the test.
class ShellOnTerminal : public Shell
{
protected:
    /// What the terminal shows when the keys come, each group a while behind the one before, once
    /// the prompt is there: before, nothing would complete.
    std::string typed(const std::vector<std::string>& keys, const std::string& arguments = "") const
    {
        std::string typing;
        for (const auto& group : keys) {
            typing += "printf '" + group + "'; sleep 0.5; ";
        }
        return shell(
                   "cd '" + folder.string() + "' && : >typed && { " +
                   "for i in $(seq 500); do grep -q '/world>' typed && break; sleep 0.02; done; " +
                   typing + "printf '\\004'; } | " + // which the end of the keys repeats
                   "XDG_STATE_HOME=. TERM=xterm timeout 60 script -qfec \"set -m; '" KIV_PROGRAM
                   "' shell " +
                   arguments + "\" /dev/null >typed; cat typed")
            .out;
    }
};

TEST_F(ShellOnTerminal, CompletesCommandsAndPathsAndKeepsItsHistory)
{
    const auto session =
        typed({"ren\\t work\\t shop\\ncd shop/Work\\tBench/Leg\\tfr\\tl\\t\\npwd\\nundo\\n"},
              "examples/workshop.gltf");
    EXPECT_THAT(session, HasSubstr("\n/world/shop,:Workshop:Bench:Leg front left\r\n"));
    EXPECT_THAT(session, Not(HasSubstr("kiv: ")));
    EXPECT_THAT(typed({"\\033[A\\033[A\\033[A\\033[A\\n"}, "examples/workshop.gltf"),
                HasSubstr("\n/world/shop\r\n")); // the first line
}

TEST_F(ShellOnTerminal, CompletesWholeCharactersThatCanBeTyped)
{
    write("line\nbreak.kiv", "");
    write("line.kiv", "make group typed\n");
    const auto session =
        typed({"make mesh Übung\\nmake mesh 日é\\nmake mesh 日è\\ncd Üb\\t\\npwd\\n"
               "cd /world\\ncd 日\\té\\npwd\\ncd /world\\nrun li\\t\\n"});
    EXPECT_THAT(session, HasSubstr("pwd\r\n/world/Übung\r\n"));
    EXPECT_THAT(session, HasSubstr("pwd\r\n/world/日é\r\n"));
    EXPECT_THAT(session, HasSubstr("\n/world/typed\r\n"));
}

TEST_F(ShellOnTerminal, InterruptEndsAScriptButNotTheShell)
{
    shell("cd '" + folder.string() + "' && mkfifo slow && timeout 20 sh -c " +
          "'while echo make group never; do sleep 0.1; done >slow' >/dev/null &");
    EXPECT_THAT(
        typed({"run slow\\n", "\\003", "make group after\\n"}),
        testing::ContainsRegex("kiv: slow: line [0-9]+: interrupted\r\n.*\n/world/after\r\n"));
}

TEST_F(ShellOnTerminal, InterruptEndsALongReadAndChangesNothing)
{
    std::string lines;
    for (int i = 1; i < 1000000; ++i) {
        lines += "v 1 2 3\nf 1 1 1\n";
    }
    write("large.obj", lines);
    for (const auto* options : {"", "--isolated"}) {
        const auto session =
            typed({"mount large.obj\\n", "\\003", "make group after\\nls\\nhistory\\n"}, options);
        EXPECT_THAT(session, HasSubstr("kiv: large.obj: interrupted\r\n")) << options;
        EXPECT_THAT(session, HasSubstr("ls\r\nafter  group\r\n")) << options;
        EXPECT_THAT(session, HasSubstr(" %, ")) << "how far, and how fast";
    }
}

TEST_F(ShellOnTerminal, GoesOnWithTheLineAfterAStop)
{
    EXPECT_THAT(typed({"make group a", "\\032", "b\\n"}, "; stty sane; fg"),
                HasSubstr("kiv /world> make group ab\r\n/world/ab\r\n"));
}

TEST_F(ShellOnTerminal, TellsOnceThatTheSceneIsNotSaved)
{
    const auto* unsaved = "kiv: the scene is not saved; quit again to leave\r\n";
    const auto session = typed({"begin\\nmake group a\\n\\004pwd\\nend\\nquit\\npwd\\n"});
    EXPECT_THAT(session, HasSubstr("kiv /world (step)> "));
    EXPECT_THAT(session, HasSubstr(unsaved));
    EXPECT_EQ(session.find(unsaved), session.rfind(unsaved));
    EXPECT_EQ(session.find("\n/world\r\n"), session.rfind("\n/world\r\n"));
    EXPECT_THAT(typed({"make group a\\nsave a.json\\nselect a\\nquit\\n"}),
                Not(HasSubstr("not saved")));
}

TEST_F(ShellOnTerminal, IsNotUsedForOutputThatGoesElsewhere)
{
    EXPECT_THAT(shell("cd '" + folder.string() +
                      "'; printf 'pwd\\n\\004' | script -qec \"'" KIV_PROGRAM
                      "' shell >log\" /dev/null; cat log")
                    .out,
                HasSubstr("pwd\r\n/world\n"));
}

} // namespace
