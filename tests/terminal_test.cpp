#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "program.h"

namespace {

using test::contentOf;
using test::linesOf;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
namespace fs = std::filesystem;

/// The program as people meet it at a terminal.
class AtTerminal : public test::Program
{
protected:
    /// What bash offers for the last word of the line.
    std::vector<std::string> completed(const std::string& line) const
    {
        return linesOf(shell("kiv completion bash >completion; bash -c '"
                             "compopt() { :; }; . ./completion; COMP_WORDS=(\"$@\"); "
                             "COMP_CWORD=$(($# - 1)); _kiv; printf \"%s\\n\" \"${COMPREPLY[@]}\""
                             "' - " +
                             line)
                           .out);
    }

    /// The commands of the program, or those of its shell.
    std::vector<std::string> commands() const { return completed("kiv ''"); }
    std::vector<std::string> shellCommands() const
    {
        return linesOf(shell("kiv shell -c help | grep '^  ' | tr -d , | xargs -n 1").out);
    }

    AtTerminal() { fs::current_path(folder); }
    ~AtTerminal() override { fs::current_path("/"); }
};

bool hasCommand(const std::string& name)
{
    return std::system(("command -v " + name + " >/dev/null").c_str()) == 0;
}

void expectToFitAScreen(const std::string& text, const std::string& call)
{
    const auto lines = linesOf(text);
    EXPECT_LE(lines.size(), 24u) << call;
    for (const auto& line : lines) {
        EXPECT_LE(line.size(), 80u) << call << ": " << line;
    }
}

TEST_F(AtTerminal, HelpOfEveryCommandFitsAScreenAndGivesAnExample)
{
    auto calls = commands();
    ASSERT_GT(calls.size(), 10u);
    calls.insert(calls.end(), {"", "manual"});
    for (const auto& call : calls) {
        const auto help = kiv(call + " --help").out;
        expectToFitAScreen(help, call);
        EXPECT_THAT(help, AllOf(StartsWith("Usage: kiv " + call), HasSubstr("\nExample: ")))
            << call;
    }
    expectToFitAScreen(shell("kiv shell -c help").out, "help");
}

// A scene in which every example can be run, and what some of them need before.
TEST_F(AtTerminal, EveryCommandOfTheShellHasAnExampleThatRuns)
{
    fs::copy_file(KIV_EXAMPLES "/workshop.gltf", "workshop.gltf");
    std::ofstream("scene.kiv")
        << "make group stage; make camera close stage; make spotLight key stage\n"
           "make group props; make mesh crate props; make mesh box props\n"
           "add stage Float exposure 0.5; add stage/key Float gain 1\n"
           "select props/crate; save tour.json --force\n";
    std::ofstream("build.kiv") << "make group built\n";
    const std::map<std::string, std::string> needs{
        {"disconnect", "connect stage exposure stage/key gain"},
        {"end", "begin"},
        {"redo", "undo"}};
    const auto all = shellCommands();
    ASSERT_GT(all.size(), 40u);
    std::string script;
    for (const auto& command : all) {
        script += "help " + command + "; ";
    }
    auto helps = shell("kiv shell -c '" + script + "'").out;
    for (const auto& command : all) {
        const auto begin = helps.find("Example: ") + 9;
        const auto end = helps.find('\n', begin) + 1;
        expectToFitAScreen(helps.substr(0, end), command);
        const auto example = helps.substr(begin, end - begin);
        EXPECT_THAT(helps, StartsWith(command + " "));
        EXPECT_THAT(example, StartsWith(command));
        helps.erase(0, end);
        const auto need = needs.find(command);
        std::ofstream("script.kiv") << "run scene.kiv\n"
                                    << (need == needs.end() ? "" : need->second) << "\n"
                                    << example;
        const auto result = kiv("shell workshop.gltf <script.kiv");
        EXPECT_EQ(result.status, 0) << example << result.err;
    }
}

TEST_F(AtTerminal, BashCompletesCommandsOptionsAndChoices)
{
    EXPECT_EQ(shell("kiv completion bash | bash -n").err, "");
    EXPECT_THAT(commands(),
                AllOf(Contains("info"), Contains("completion"), Not(Contains("manual"))));
    EXPECT_THAT(completed("kiv pl"), ElementsAre("plugins"));
    EXPECT_THAT(completed("kiv find --mi"), ElementsAre("--min-size"));
    EXPECT_THAT(completed("kiv --plugin find tree --pa"), ElementsAre("--paths"));
    EXPECT_THAT(completed("kiv completion ''"), ElementsAre("bash", "zsh", "fish"));
    for (const auto* other :
         {"kiv find --type m", "kiv find --type = m", "kiv tree w", "kiv --plugin p"}) {
        EXPECT_THAT(completed(other), ElementsAre("")) << "files, or nothing, complete " << other;
    }
}

TEST_F(AtTerminal, OtherShellsTakeTheirCompletions)
{
    for (const std::string name : {"zsh", "fish"}) {
        const auto script = kiv("completion " + name).out;
        for (const auto& command : commands()) {
            EXPECT_THAT(script, HasSubstr(command));
        }
        EXPECT_THAT(script, HasSubstr("ignore-case"));
        if (hasCommand(name)) {
            EXPECT_EQ(shell("kiv completion " + name + " >script; " + name + " -n script").err, "");
        }
    }
}

TEST_F(AtTerminal, ManualTellsOfAllCommands)
{
    if (!hasCommand("groff")) {
        GTEST_SKIP() << "There is no groff.";
    }
    const auto page = shell("kiv manual | groff -man -Tascii -ww -P-cbu -rLL=200n");
    EXPECT_EQ(page.err, "");
    std::vector<std::string> told{"'focalLength>50' *.gltf",
                                  "Example: find --lights --attribute 'int"};
    for (const auto& command : commands()) {
        told.push_back("\n   kiv " + command);
    }
    for (const auto& command : shellCommands()) {
        told.push_back("\n       " + command);
    }
    for (const auto& text : told) {
        EXPECT_NE(page.out.find(text), std::string::npos) << text;
    }
}

TEST_F(AtTerminal, IsolatedReadingRefusesWhatTakesTooMuch)
{
    const auto plain = kiv("tree --json " + workshop);
    const auto isolated = kiv("tree --isolated --json " + workshop);
    EXPECT_EQ(isolated.out, plain.out);
    EXPECT_EQ(isolated.err, "");
    EXPECT_EQ(kiv("info --isolated=never a.obj").err,
              "kiv: --isolated: expected SECONDS or SECONDS,MB: 'never' (kiv --help tells more)\n");
    std::ofstream("large.obj") << [] {
        std::string lines;
        for (int i = 1; i < 100000; ++i) {
            lines += "v 1 2 " + std::to_string(i) + "\nf " + std::to_string(i) + " 1 2\n";
        }
        return lines;
    }();
    for (const auto* command : {"info", "tree", "find --lights", "show", "shell -c pwd"}) {
        EXPECT_THAT(kiv(command + std::string(" --isolated=60,16 large.obj x")).err,
                    StartsWith("kiv: large.obj: reading "))
            << command;
    }
    EXPECT_THAT(kiv("diff --isolated=60,16 large.obj large.obj").err,
                StartsWith("kiv: large.obj: reading "));
}

/// Interrupts commands a while after they began.
class Interrupted : public AtTerminal
{
protected:
    Interrupted()
    {
        std::ofstream lines("large.obj");
        for (int i = 1; i < 1000000; ++i) {
            lines << "v 1 2 3\nf 1 1 1\n";
        }
    }

    test::Result interrupted(const std::string& arguments, const std::string& seconds = "0.5") const
    {
        return shell("timeout --foreground --preserve-status -s INT " + seconds +
                     " '" KIV_PROGRAM "' " + arguments);
    }
};

TEST_F(Interrupted, LongWorkEndsWithALineAndAsItDoesInAScript)
{
    for (const auto* arguments : {"info a.obj large.obj", "diff large.obj x.obj",
                                  "find --lights --isolated large.obj", "shell large.obj -c pwd"}) {
        const auto result = interrupted(arguments);
        EXPECT_EQ(result.status, 130) << arguments;
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(linesOf(result.err), Contains("kiv: interrupted")) << arguments;
        EXPECT_LE(linesOf(result.err).size(), 2u) << result.err;
    }
    const auto script = interrupted("shell --keep-going -c 'mount large.obj\npwd\npwd'");
    EXPECT_EQ(script.status, 130);
    EXPECT_EQ(script.err, "kiv: line 1: large.obj: interrupted\n");
}

TEST_F(Interrupted, FilesThatAreWrittenAreWhole)
{
    std::ofstream make("make.kiv");
    std::ofstream save("save.kiv");
    for (int i = 0; i < 500; ++i) {
        make << "make group item\n";
    }
    for (int i = 0; i < 10000; ++i) {
        save << "save scene.json\n";
    }
    make.close();
    save.close();
    ASSERT_EQ(kiv("shell -c 'run make.kiv; save scene.json' >made").err, "");
    const auto result =
        interrupted("shell -c 'watch --record=recording; run make.kiv; run save.kiv' >made", "1");
    EXPECT_EQ(result.status, 130);
    EXPECT_THAT(result.err, HasSubstr("interrupted"));
    EXPECT_EQ(kiv("shell -c 'open scene.json'").err, "");
    const auto recorded = linesOf(contentOf("recording"));
    EXPECT_GT(recorded.size(), 1u);
    for (const auto& line : recorded) {
        EXPECT_TRUE(nlohmann::json::accept(line)) << line;
    }
    for (const auto& entry : fs::directory_iterator(folder)) {
        EXPECT_THAT(entry.path().filename().string(), Not(StartsWith(".")));
    }
}

TEST_F(Interrupted, ASecondInterruptEndsWorkThatDoesNotAsk)
{
    const auto result = shell("mkfifo never; sleep 9 >never & bash -c 'set -m; \"" KIV_PROGRAM
                              "\" shell -c \"run never\" & sleep 0.5; kill -INT $!; sleep 0.2; "
                              "kill -0 $! && kill -INT $!; wait $!; echo $?' 2>said");
    EXPECT_EQ(result.out, "130\n");
}

TEST_F(Interrupted, TheReadingOfSeveralFilesTellsTheirNumber)
{
    EXPECT_THAT(shell("TERM=xterm timeout 20 script -qec \"'" KIV_PROGRAM "' info " + workshop +
                      " large.obj\" /dev/null")
                    .out,
                HasSubstr("\rreading 2 of 2: large.obj "));
}

/// Runs commands on a terminal of ten rows.
class OnTenRows : public AtTerminal
{
protected:
    std::string shown(const std::string& environment, const std::string& arguments) const
    {
        return shell("env " + environment + " TERM=xterm script -qec \"stty rows 10 cols 80; '" +
                     KIV_PROGRAM "' " + arguments + "\" /dev/null")
            .out;
    }
};

TEST_F(OnTenRows, LongOutputGoesThroughThePager)
{
    const std::string pager = "PAGER='sed s/^/paged:/'";
    const auto paged = linesOf(shown(pager, "tree " + workshop));
    EXPECT_GT(paged.size(), 10u);
    EXPECT_THAT(paged, Each(StartsWith("paged:")));
    EXPECT_THAT(shown(pager, "tree --depth 1 " + workshop), StartsWith("world"));
    EXPECT_THAT(shown("PAGER=", "tree " + workshop), StartsWith("world"));
    EXPECT_THAT(shown(pager, "tree --no-pager " + workshop), StartsWith("world"));
    EXPECT_THAT(shell(pager + " '" KIV_PROGRAM "' tree " + workshop).out, StartsWith("world"));
}

TEST_F(OnTenRows, TheShellGoesOnBehindThePager)
{
    std::ofstream("keys") << "tree\ncd workshop\npwd\nquit\nquit\n";
    const auto session =
        shell("{ sleep 1; cat keys; sleep 1; } | XDG_STATE_HOME=. TERM=xterm PAGER='head -n 1' "
              "script -qec \"stty rows 10 cols 80; '" KIV_PROGRAM "' shell " +
              workshop + "\" /dev/null")
            .out;
    EXPECT_THAT(session, HasSubstr("\nworld  "));
    EXPECT_THAT(session, Not(HasSubstr("Toolbox")));
    EXPECT_THAT(session, HasSubstr("\n/world/workshop\r\n"));
}

TEST_F(OnTenRows, ColourIsAskedForOrRefused)
{
    const auto isColoured = HasSubstr("\x1b[");
    EXPECT_THAT(shell("NO_COLOR=1 '" KIV_PROGRAM "' tree --color=always " + workshop).out,
                isColoured);
    EXPECT_THAT(shown("-u NO_COLOR PAGER=", "tree --color=never " + workshop), Not(isColoured));
    EXPECT_THAT(shown("-u NO_COLOR PAGER=cat", "tree --color auto " + workshop), isColoured);
    EXPECT_EQ(kiv("tree --color=alwayz a").err,
              "kiv: --color: unknown value 'alwayz' (auto, always, never); did you mean 'always'? "
              "(kiv --help tells more)\n");
}

} // namespace
