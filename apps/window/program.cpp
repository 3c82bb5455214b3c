#include "program.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>
#include <algorithm>
#include <iostream>
#include <optional>
#include <string_view>

#include "kiv/versionInfo.h"

#include "errorBar.h"
#include "mainWindow.h"
#include "screenshot.h"
#include "stage.h"

namespace window {

namespace {

/// What the program is told.
class Arguments
{
public:
    Arguments()
    {
        _parser.setApplicationDescription(
            "Shows scenes in a window: an outliner, a view, attributes and an undo history.\n"
            "Scene documents (.json) are opened, other files are mounted side by side.");
        _parser.addPositionalArgument("FILE", "Documents and scene files", "[FILE...]");
        _parser.addOptions({_camera, _dark, _plugin, _screenshot, _size});
    }

    /// Returns the exit code when nothing is left to be done: wrong arguments, or a question that
    /// was answered.
    [[nodiscard]] std::optional<int> read()
    {
        if (!_parser.parse(QCoreApplication::arguments())) {
            std::cerr << _parser.errorText().toStdString() << '\n';
            return 1;
        }
        if (_parser.isSet(_help) || _parser.isSet("help-all")) {
            std::cout << _parser.helpText().toStdString();
            return 0;
        }
        if (_parser.isSet(_version)) {
            std::cout << QCoreApplication::applicationName().toStdString() << ' '
                      << QCoreApplication::applicationVersion().toStdString() << '\n';
            return 0;
        }
        return {};
    }

    [[nodiscard]] QStringList files() const { return _parser.positionalArguments(); }
    [[nodiscard]] QStringList plugins() const { return _parser.values(_plugin); }
    [[nodiscard]] bool isDark() const { return _parser.isSet(_dark); }
    [[nodiscard]] QString camera() const { return _parser.value(_camera); }
    [[nodiscard]] QString screenshot() const { return _parser.value(_screenshot); }
    [[nodiscard]] QString size() const { return _parser.value(_size); }

private:
    const QCommandLineOption _camera{"camera", "Look through the camera at that path.", "PATH"};
    const QCommandLineOption _dark{"dark", "Use dark colours."};
    const QCommandLineOption _plugin{"plugin", "Load a plug-in; may be given again.", "FILE"};
    const QCommandLineOption _screenshot{
        "screenshot", "Write a picture of the window, for which no screen is needed.", "OUT.png"};
    const QCommandLineOption _size{"size", "The size of that picture.", "WxH", "1280x800"};
    QCommandLineParser _parser;
    const QCommandLineOption _help = _parser.addHelpOption();
    const QCommandLineOption _version = _parser.addVersionOption();
};

int fail(const QString& message)
{
    std::cerr << "kiv window: " << message.toStdString() << '\n';
    return 1;
}

/// Opens what the command line names; the first complaint, if there is one.
QString open(Stage& stage, MainWindow& main, const Arguments& arguments)
{
    auto plugins = Kiv_v4::host::PluginLoader::filesOnPath();
    for (const auto& file : arguments.plugins()) {
        plugins.push_back(file.toStdString());
    }
    for (const auto& refused : stage.plugins.load(plugins)) {
        main.errorBar().tell(QString::fromStdString(refused.what()));
    }
    for (const auto& file : arguments.files()) {
        main.load(file);
    }
    stage.history->clear();
    stage.history->setClean();
    const auto camera = arguments.camera();
    if (!camera.isEmpty() && !main.lookThrough(camera.toStdString())) {
        main.errorBar().tell("no such camera '" + camera + "'");
    }
    return main.errorBar().text();
}

int run(QApplication& application, const Arguments& arguments)
{
    const auto picture = arguments.screenshot();
    const auto size = sizeOf(arguments.size());
    if (!picture.isEmpty() && size.isEmpty()) {
        return fail("not a size: '" + arguments.size() + "'");
    }
    if (arguments.isDark()) {
        useDarkColors();
    }
    Stage stage;
    MainWindow main(stage, picture.isEmpty());
    const auto complaint = open(stage, main, arguments);
    if (picture.isEmpty()) {
        main.show();
        return application.exec();
    }
    if (!complaint.isEmpty()) {
        return fail(complaint);
    }
    return saveScreenshot(main, picture, size) ? 0 : fail("cannot write '" + picture + "'");
}

} // namespace

int runProgram(int argc, char** argv)
{
    const auto isTold = [&](std::initializer_list<std::string_view> beginnings) {
        return std::any_of(argv + 1, argv + argc, [&](std::string_view word) {
            return std::ranges::any_of(beginnings, [&](const auto& beginning) {
                return word.substr(0, beginning.size()) == beginning;
            });
        });
    };
    if (isTold({"--screenshot", "--help", "-h", "--version", "-v"})) { // no screen is needed
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (isTold({"--screenshot"})) {
        QApplication::setStyle("Fusion"); // the same picture everywhere
    }
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName("kiv");
    QCoreApplication::setApplicationName("kiv-window");
    QCoreApplication::setApplicationVersion(
        QString::number(Kiv_v4::VersionInfo::getMajorVersion()) + '.' +
        QString::number(Kiv_v4::VersionInfo::getMinorVersion()) + '.' +
        QString::number(Kiv_v4::VersionInfo::getPatchLevel()));
    Arguments arguments;
    if (const auto code = arguments.read()) {
        return *code;
    }
    return run(application, arguments);
}

} // namespace window
