// A window over a scene: an outliner in which items are renamed, dragged, shown and hidden, a view
// of where they are, their attributes, and a menu with Undo and Redo.
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QSplitter>
#include <QTimer>
#include <QTreeView>
#include <iostream>

#include "kiv/host/hostScene.h"
#include "kiv/host/undoHistory.h"
#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"
#include "kiv/qt/attributeModel.h"
#include "kiv/qt/contextMenu.h"
#include "kiv/qt/outlinerModel.h"
#include "kiv/qt/sceneView.h"
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
    runTime.model().setBoundingBox(cube->path(), {{{-1, -1, -1}}, {{1, 1, 1}}});

    const QApplication application(argc, argv);
    QMainWindow window;
    auto* columns = new QSplitter;
    window.setCentralWidget(columns);

    auto* outliner = new QTreeView;
    columns->addWidget(outliner);
    Kiv::qt::OutlinerModel model;
    outliner->setModel(&model);
    outliner->setUniformRowHeights(true);
    outliner->setSelectionMode(QAbstractItemView::ExtendedSelection);
    outliner->setDragDropMode(QAbstractItemView::InternalMove);
    const Kiv::qt::SelectionSync sync(model, *outliner->selectionModel());

    outliner->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(outliner, &QWidget::customContextMenuRequested, outliner, [&](QPoint at) {
        Kiv::qt::ContextMenu menu(model.path(outliner->indexAt(at)), outliner);
        menu.exec(outliner->viewport()->mapToGlobal(at));
    });

    auto* view = new Kiv::qt::SceneView;
    columns->addWidget(view);

    auto* attributes = new QTreeView;
    columns->addWidget(attributes);
    Kiv::qt::AttributeModel values;
    values.follow(selection);
    attributes->setModel(&values);
    attributes->setItemDelegate(new Kiv::qt::AttributeDelegate(attributes));
    attributes->setEditTriggers(QAbstractItemView::AllEditTriggers);

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
