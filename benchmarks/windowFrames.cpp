// How long a window over a large scene does not answer its user: for each thing that the user does,
// the processor time until all is shown, and that of the longest event on the way. Needs no screen.
//
//     window_frames [NUMBER OF ITEMS, by default 1000000]
#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>
#include <QTreeView>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"
#include "kiv/transform3d.h"

#include "mainWindow.h"
#include "stage.h"

using namespace Kiv_v4;

namespace {

constexpr std::size_t kSelected = 100'000;

/// Processor time from now on, which does not depend on what else the machine does.
class Clock
{
public:
    [[nodiscard]] double milliseconds() const { return now() - _begin; }

private:
    static double now()
    {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    double _begin = now();
};

/// Measures its events.
class Application : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        if (_depth > 0) {
            return QApplication::notify(receiver, event);
        }
        auto result = false;
        measure([&] { result = QApplication::notify(receiver, event); });
        return result;
    }

    /// Does the work as one event.
    void measure(const std::function<void()>& work)
    {
        const Clock clock;
        ++_depth;
        work();
        --_depth;
        longest = std::max(longest, clock.milliseconds());
    }

    double longest = 0;

private:
    int _depth = 0;
};

std::vector<std::string> numbered(const char* name, std::size_t count)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < count; ++i) {
        names.push_back(name + std::to_string(i));
    }
    return names;
}

/// A cube of boxes: one group with the items that are selected, and groups of a thousand.
class Crowd
{
public:
    explicit Crowd(memory::DataModel& model) : _model(model) {}

    void fill(std::size_t count)
    {
        const auto nbSelected = std::min(count, kSelected);
        addGroup("crowd", nbSelected);
        for (auto left = (count - nbSelected) / 1000; left > 0; --left) {
            addGroup("group" + std::to_string(left), 1000);
        }
    }

private:
    void addGroup(const std::string& name, std::size_t count)
    {
        const auto group = _model.make(_model.root(), "group", name);
        for (const auto& item : _model.makeAll(group->path(), "mesh", numbered("box", count))) {
            const auto at = [this](std::size_t step) { return double(_next / step % 100) * 3; };
            Transform3d::transform3d(item)->translate(at(1), at(100), at(10000));
            _model.setBoundingBox(item->path(), {{{-1, -1, -1}}, {{1, 1, 1}}});
            ++_next;
        }
    }

    memory::DataModel& _model;
    std::size_t _next = 0;
};

/// What the user does, and how the window takes it.
class Session
{
public:
    Session(Application& application, window::Stage& stage)
        : _application(application), _stage(stage)
    {
        std::printf("| what the user does | all, ms | longest event, ms |\n"
                    "| --- | ---: | ---: |\n");
    }

    void run()
    {
        act("open the window", [this] {
            _main = std::make_unique<window::MainWindow>(_stage, false);
            _main->resize(1280, 800);
            _main->show();
            _outliner = &_main->outliner();
        });
        act("frame all", [this] { QTest::keyClick(&_main->view(), Qt::Key_A); });
        act("expand 100 000 children, of which 1 000 are read", [this] {
            _outliner->expandToDepth(0);
            _outliner->expand(row("/world/crowd"));
        });
        act("scroll to the last row", [this] {
            auto& bar = *_outliner->verticalScrollBar();
            for (auto last = -1; bar.maximum() != last;) {
                last = bar.maximum();
                _application.measure([&] { bar.setValue(last); });
            }
        });
        act("scroll back", [this] { _outliner->scrollToTop(); });
        act("expand 1 000 children", [this] { _outliner->expand(row("/world/group1")); });
        act("select all rows of the parent", [this] { selectRows(); });
        act("frame them", [this] { _main->view().frameSelection(); });
        act("add one", [this] {
            QItemSelectionModel& rows = *_outliner->selectionModel();
            rows.select(row("/world/group1"),
                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
        });
        act("select another", [this] { select({"/world/group2"}); });
        act("frame all", [this] { _main->view().frameAll(); });
        act("select all by a rectangle", [this] {
            auto& view = _main->view();
            const QPoint corner(1, 1);
            QTest::mousePress(&view, Qt::LeftButton, Qt::ShiftModifier, corner);
            QMouseEvent over(QEvent::MouseMove, QPointF(view.width() - 2, view.height() - 2),
                             view.mapToGlobal(QPointF(corner)), Qt::NoButton, Qt::LeftButton,
                             Qt::ShiftModifier);
            QCoreApplication::sendEvent(&view, &over);
            QTest::mouseRelease(&view, Qt::LeftButton, Qt::ShiftModifier,
                                {view.width() - 2, view.height() - 2});
        });
        act("select 100 000 items elsewhere", [this] {
            Selection chosen;
            for (const auto& item : children("/world/crowd")) {
                chosen.append(item);
            }
            _stage.selection->replaceWith(chosen);
        });
        act("hide one", [this] {
            _outliner->model()->setData(row("/world/group1", qt::OutlinerModel::VisibilityColumn),
                                        Qt::Unchecked, Qt::CheckStateRole);
        });
        act("delete the selection", [this] { QTest::keyClick(_main.get(), Qt::Key_Delete); });
        act("undo it", [this] { _stage.history->undo(); });
    }

private:
    void act(const char* what, const std::function<void()>& work)
    {
        _application.longest = 0;
        const Clock clock;
        _application.measure(work);
        for (auto quiet = 0; quiet < 3; quiet = isBusy() ? 0 : quiet + 1) {
            QCoreApplication::processEvents();
        }
        std::printf("| %s | %.0f | %.0f |\n", what, clock.milliseconds(), _application.longest);
        std::fflush(stdout);
    }

    [[nodiscard]] bool isBusy() const
    {
        const auto* attributes =
            dynamic_cast<const qt::AttributeModel*>(_main->attributes().model());
        return _main->view().isReading() || _main->view().isDrawing() || attributes->isReading();
    }

    [[nodiscard]] QModelIndex row(const std::string& path, int column = 0) const
    {
        return dynamic_cast<qt::OutlinerModel&>(*_outliner->model())
            .indexOf(PathString::path(path), column);
    }

    [[nodiscard]] static SceneItemList children(const std::string& path)
    {
        return Hierarchy::hierarchy(Hierarchy::createItem(PathString::path(path)))->children();
    }

    void selectRows()
    {
        const auto parent = row("/world/crowd");
        const auto& model = *_outliner->model();
        _outliner->selectionModel()->select(
            QItemSelection(model.index(0, 0, parent),
                           model.index(model.rowCount(parent) - 1, 0, parent)),
            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }

    void select(const std::vector<std::string>& paths)
    {
        Selection chosen;
        for (const auto& path : paths) {
            chosen.append(Hierarchy::createItem(PathString::path(path)));
        }
        _stage.selection->replaceWith(chosen);
    }

    Application& _application;
    window::Stage& _stage;
    std::unique_ptr<window::MainWindow> _main;
    QTreeView* _outliner = nullptr;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    window::Stage stage;
    Crowd(stage.workspace.model()).fill(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1'000'000);
    Session(application, stage).run();
}
