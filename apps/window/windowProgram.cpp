#include "windowProgram.h"

#include <QApplication>
#include <iostream>
#include <variant>

#include "kiv/versionInfo.h"

#include "cli/commandSyntax.h"
#include "cli/usageTrouble.h"
#include "cli/windowSyntax.h"
#include "errorBar.h"
#include "mainWindow.h"
#include "screenshot.h"
#include "stage.h"
#include "terminal/diagnostics.h"

namespace window {

using app::WindowWishes;

namespace {

std::string version()
{
    using Kiv_v4::VersionInfo;
    return std::to_string(VersionInfo::getMajorVersion()) + "." +
           std::to_string(VersionInfo::getMinorVersion()) + "." +
           std::to_string(VersionInfo::getPatchLevel());
}

/// What the command line wishes, or the exit status when there is nothing left to be done.
std::variant<WindowWishes, int> read(int argc, char** argv)
{
    WindowWishes wishes;
    CLI::App syntax(app::kWindowTitle, "kiv window");
    syntax.formatter(std::make_shared<app::HelpFormatter>());
    syntax.set_help_flag("-h,--help", "Tell how to call it");
    syntax.set_version_flag(
        "--version", [] { return "kiv-window " + version(); }, "Print the version");
    app::defineWindowOptions(syntax, wishes);
    try {
        syntax.parse(argc, argv);
        return wishes;
    } catch (const CLI::CallForHelp&) {
        std::cout << syntax.help();
        return app::kSuccess;
    } catch (const CLI::CallForVersion&) {
        std::cout << "kiv-window " + version() + "\n";
        return app::kSuccess;
    } catch (const CLI::ParseError& error) {
        app::complain(app::argumentTrouble(syntax, error) + " (kiv window --help tells more)");
        return app::kWrongUsage;
    }
}

/// Opens what the command line names; the first complaint, if there is one.
QString open(Stage& stage, MainWindow& main, const WindowWishes& wishes)
{
    auto plugins = Kiv_v4::host::PluginLoader::filesOnPath();
    plugins.insert(plugins.end(), wishes.plugins.begin(), wishes.plugins.end());
    for (const auto& refused : stage.plugins.load(plugins)) {
        main.errorBar().tell(QString::fromStdString(refused.what()));
    }
    for (const auto& file : wishes.files) {
        main.load(QString::fromStdString(file));
    }
    stage.history->clear();
    stage.history->setClean();
    if (!wishes.camera.empty() && !main.lookThrough(wishes.camera)) {
        main.errorBar().tell(QString::fromStdString("no such camera '" + wishes.camera + "'"));
    }
    return main.errorBar().text();
}

QSize sizeOf(const std::string& text)
{
    const auto sides = QString::fromStdString(text).split('x');
    return {sides[0].toInt(), sides[1].toInt()};
}

/// Without a screen, the same everywhere.
void preparePicture()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle("Fusion");
}

int run(const WindowWishes& wishes)
{
    if (wishes.dark) {
        useDarkColors();
    }
    const auto isPicture = !wishes.screenshot.empty();
    Stage stage;
    MainWindow main(stage, !isPicture);
    const auto complaint = open(stage, main, wishes);
    if (!isPicture) {
        main.show();
        return QApplication::exec();
    }
    if (!complaint.isEmpty()) {
        throw std::runtime_error(complaint.toStdString());
    }
    saveScreenshot(main, QString::fromStdString(wishes.screenshot), sizeOf(wishes.size));
    return app::kSuccess;
}

} // namespace

int runProgram(int argc, char** argv)
{
    // Before there is an application, which ends the program where there is no screen.
    const auto told = read(argc, argv);
    if (const auto* status = std::get_if<int>(&told)) {
        return *status;
    }
    const auto& wishes = std::get<WindowWishes>(told);
    if (!wishes.screenshot.empty()) {
        preparePicture();
    }
    argc = 1; // the rest is no business of Qt
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName("kiv");
    QCoreApplication::setApplicationName("kiv-window");
    QCoreApplication::setApplicationVersion(QString::fromStdString(version()));
    try {
        return run(wishes);
    } catch (const std::exception& error) {
        app::complain(error.what());
        return app::kFailure;
    }
}

} // namespace window
