// A window over a scene: an outliner in which items are renamed, dragged, shown and hidden, whose
// selection is the global one, and a menu with Undo and Redo.
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QTimer>
#include <QTreeView>
#include <iostream>

#include "kiv/host/hostScene.h"
#include "kiv/host/undoHistory.h"
#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"
#include "kiv/qt/outlinerModel.h"
#include "kiv/qt/selectionSync.h"
#include "kiv/qt/undoActions.h"

int main(int argc, char** argv)
{
    // What every host installs.
    const auto scene = std::make_shared<Kiv::host::HostScene>();
    const auto history = std::make_shared<Kiv::host::UndoHistory>();
    const auto selection = std::make_shared<Kiv::ObservableSelection>();
    Kiv::Scene::initializeInstance(scene);
    Kiv::UndoableCommandMgr::initializeInstance(history);
    Kiv::GlobalSelection::initializeInstance(selection);
    scene->follow(selection, Kiv::host::HostScene::Gone::ComesBack);

    Kiv::memory::RunTime runTime;
    const auto props = runTime.model().make(runTime.model().root(), "group", "props");
    const auto cube = runTime.model().make(props->path(), "mesh", "cube");

    const QApplication application(argc, argv);
    QMainWindow window;
    auto* outliner = new QTreeView;
    window.setCentralWidget(outliner);

    Kiv::qt::OutlinerModel model;
    outliner->setModel(&model);
    outliner->setUniformRowHeights(true);
    outliner->setSelectionMode(QAbstractItemView::ExtendedSelection);
    outliner->setDragDropMode(QAbstractItemView::InternalMove);
    const Kiv::qt::SelectionSync sync(model, *outliner->selectionModel());

    const Kiv::qt::UndoActions actions(history);
    auto& edit = *window.menuBar()->addMenu("Edit");
    edit.addAction(&actions.undo());
    edit.addAction(&actions.redo());

    selection->append(cube); // and the row is selected, once it is there
    outliner->scrollTo(model.reveal(cube->path()));
    model.setData(model.indexOf(cube->path()), "box", Qt::EditRole);
    std::cout << actions.undo().text().toStdString() << '\n'
              << outliner->currentIndex().data().toString().toStdString() << " is selected\n";

    if (QGuiApplication::platformName() == "offscreen") { // a test: nobody will close the window
        QTimer::singleShot(0, &window, [] { QCoreApplication::quit(); });
    }
    window.show();
    return QCoreApplication::exec();
}
