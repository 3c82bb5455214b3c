#include "mainWindow.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QMenuBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

#include "kiv/camera.h"
#include "kiv/cameraHandler.h"
#include "kiv/hierarchy.h"
#include "kiv/host/transaction.h"
#include "kiv/log.h"
#include "kiv/notification.h"
#include "kiv/pathString.h"
#include "kiv/qt/contextMenu.h"
#include "kiv/qt/icons.h"
#include "kiv/qt/selectionSync.h"
#include "kiv/sceneItemOps.h"
#include "kiv/selectionCommands.h"

#include "errorBar.h"
#include "recentFiles.h"
#include "sceneLog.h"

namespace window {

namespace {

/// Calls a function with each notification.
class Calling : public Observer
{
public:
    explicit Calling(std::function<void()> work) : _work(std::move(work)) {}
    void operator()(const Notification& /*notification*/) override { _work(); }

private:
    const std::function<void()> _work;
};

} // namespace

MainWindow::MainWindow(Stage& stage, bool isKept)
    : _stage(stage), _isKept(isKept), _historyModel(stage.history), _undo(stage.history),
      _view(new qt::SceneView(stage.selection, this)), _errorBar(new ErrorBar(this)),
      _outliner(new QTreeView(this)), _attributes(new QTreeView(this)),
      _history(new QListView(this)),
      _recent(new RecentFiles([this](const QString& file) { load(file); }, this)),
      _historyObserver(std::make_shared<Calling>([this] { updateTitle(); }))
{
    setObjectName("mainWindow");
    resize(1280, 800);
    auto* middle = new QWidget(this);
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(_errorBar);
    column->addWidget(_view, 1);
    setCentralWidget(middle);

    makeOutliner();
    makeAttributes();
    makeHistory();
    makeDocks();
    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    showProgress();
    _stage.history->addObserver(_historyObserver);
    _stage.workspace.setProgress(
        [this](const std::string& file, float fraction) { showReading(file, fraction); });
    setFile(QString());
    if (_isKept) {
        restoreGeometry(QSettings().value("geometry").toByteArray());
        restoreState(QSettings().value("layout").toByteArray());
    }
}

MainWindow::~MainWindow()
{
    _stage.workspace.setProgress(nullptr);
    _stage.history->removeObserver(_historyObserver);
}

void MainWindow::makeOutliner()
{
    using Model = qt::OutlinerModel;
    _outliner->setModel(&_outlinerModel);
    _outliner->setUniformRowHeights(true);
    _outliner->setSelectionMode(QAbstractItemView::ExtendedSelection);
    _outliner->setDragDropMode(QAbstractItemView::DragDrop);
    _outliner->setEditTriggers(QAbstractItemView::EditKeyPressed |
                               QAbstractItemView::SelectedClicked);
    _outliner->setContextMenuPolicy(Qt::CustomContextMenu);
    auto& header = *_outliner->header();
    header.setStretchLastSection(false);
    header.setSectionResizeMode(Model::NameColumn, QHeaderView::Stretch);
    header.setSectionResizeMode(Model::TypeColumn, QHeaderView::Interactive);
    header.setSectionResizeMode(Model::VisibilityColumn, QHeaderView::ResizeToContents);
    header.resizeSection(Model::TypeColumn, 72);
    header.resizeSection(Model::RunTimeColumn, 76);
    _outliner->setIndentation(14);
    new qt::SelectionSync(_outlinerModel, *_outliner->selectionModel(), _stage.selection);
    connect(_outliner, &QWidget::customContextMenuRequested, this, &MainWindow::showItemMenu);
}

void MainWindow::makeAttributes()
{
    using Model = qt::AttributeModel;
    _attributeModel.follow(_stage.selection);
    _attributes->setModel(&_attributeModel);
    _attributes->setItemDelegate(new qt::AttributeDelegate(_attributes));
    _attributes->setAlternatingRowColors(true);
    _attributes->setRootIsDecorated(true);
    _attributes->setIndentation(14);
    _attributes->setEditTriggers(QAbstractItemView::AllEditTriggers);
    _attributes->setContextMenuPolicy(Qt::CustomContextMenu);
    auto& header = *_attributes->header();
    header.setStretchLastSection(false);
    header.setSectionResizeMode(Model::LabelColumn, QHeaderView::Interactive);
    header.setSectionResizeMode(Model::ValueColumn, QHeaderView::Stretch);
    header.setSectionResizeMode(Model::UnitColumn, QHeaderView::ResizeToContents);
    header.resizeSection(Model::LabelColumn, 176);
    const auto open = [this] {
        _attributes->expandAll();
        for (auto row = 0; row < _attributeModel.rowCount(); ++row) {
            _attributes->setFirstColumnSpanned(row, {}, true);
        }
    };
    connect(&_attributeModel, &QAbstractItemModel::modelReset, _attributes, open);
    connect(_attributes, &QWidget::customContextMenuRequested, this,
            &MainWindow::showAttributeMenu);
}

void MainWindow::makeHistory()
{
    _history->setModel(&_historyModel);
    _history->setUniformItemSizes(true);
    _history->setSelectionMode(QAbstractItemView::NoSelection);
    connect(_history, &QAbstractItemView::activated, &_historyModel, &qt::HistoryModel::goTo);
    connect(&_historyModel, &QAbstractItemModel::dataChanged, _history,
            [this] { _history->scrollTo(_historyModel.current()); });
}

QDockWidget* MainWindow::dock(const QString& title, QWidget* content, Qt::DockWidgetArea area)
{
    auto* made = new QDockWidget(title, this);
    made->setObjectName(title); // which the kept layout knows it by
    made->setWidget(content);
    if (auto* frame = qobject_cast<QFrame*>(content)) {
        frame->setFrameShape(QFrame::NoFrame);
    }
    addDockWidget(area, made);
    return made;
}

void MainWindow::makeDocks()
{
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    auto* outliner = dock(tr("Outliner"), _outliner, Qt::LeftDockWidgetArea);
    auto* attributes = dock(tr("Attributes"), _attributes, Qt::RightDockWidgetArea);
    auto* history = dock(tr("History"), _history, Qt::RightDockWidgetArea);
    auto* log = dock(tr("Notifications"), new SceneLog(this), Qt::BottomDockWidgetArea);
    resizeDocks({outliner, attributes}, {360, 400}, Qt::Horizontal);
    resizeDocks({attributes, history}, {560, 160}, Qt::Vertical);
    resizeDocks({log}, {110}, Qt::Vertical);
}

void MainWindow::makeFileMenu()
{
    auto& menu = *menuBar()->addMenu(tr("&File"));
    auto& bar = *addToolBar(tr("File"));
    bar.setObjectName("fileBar");
    bar.setIconSize({18, 18});
    const auto add = [&](const char* icon, const QString& text, const QKeySequence& keys,
                         void (MainWindow::*work)()) {
        auto* action = menu.addAction(qt::namedIcon(icon), text, this, work);
        action->setShortcut(keys);
        return action;
    };
    add("", tr("&New scene"), QKeySequence::New, &MainWindow::newScene);
    bar.addAction(add("open", tr("&Open..."), QKeySequence::Open, &MainWindow::chooseDocument));
    menu.addMenu(_recent);
    bar.addAction(add("mount", tr("&Mount scene files..."), QKeySequence("Ctrl+M"),
                      &MainWindow::chooseSceneFiles));
    menu.addSeparator();
    auto* save = menu.addAction(qt::namedIcon("save"), tr("&Save"), this, [this] { this->save(); });
    save->setShortcut(QKeySequence::Save);
    bar.addAction(save);
    menu.addAction(tr("Save &as..."), this, [this] { saveAs(); })
        ->setShortcut(QKeySequence::SaveAs);
    menu.addSeparator();
    add("plugIn", tr("Load &plug-in..."), {}, &MainWindow::loadPlugin);
    makePluginMenu(*menu.addMenu(tr("&Unload plug-in")));
    menu.addSeparator();
    menu.addAction(tr("&Quit"), this, [this] { close(); })->setShortcut(QKeySequence::Quit);
    bar.addSeparator();
    bar.addAction(&_undo.undo());
    bar.addAction(&_undo.redo());
    bar.addSeparator();
    bar.addAction(qt::namedIcon("frame"), tr("Frame selection (F)"), _view,
                  &qt::SceneView::frameSelection);
}

void MainWindow::makePluginMenu(QMenu& menu)
{
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] {
        menu.clear();
        for (const auto& plugin : _stage.plugins.plugins()) {
            menu.addAction(QString::fromStdString(plugin.name), this,
                           [this, name = plugin.name] { unloadPlugin(name); });
        }
        if (menu.isEmpty()) {
            menu.addAction(tr("None is loaded"))->setEnabled(false);
        }
    });
}

void MainWindow::makeEditMenu()
{
    auto& menu = *menuBar()->addMenu(tr("&Edit"));
    menu.addAction(&_undo.undo());
    menu.addAction(&_undo.redo());
    menu.addSeparator();
    auto* remove =
        menu.addAction(qt::namedIcon("delete"), tr("&Delete"), this, &MainWindow::deleteSelected);
    remove->setShortcut(QKeySequence::Delete);
}

void MainWindow::makeViewMenu()
{
    auto& menu = *menuBar()->addMenu(tr("&View"));
    menu.addAction(qt::namedIcon("frame"), tr("Frame &selection"), _view,
                   &qt::SceneView::frameSelection);
    menu.addAction(tr("Frame &all"), _view, &qt::SceneView::frameAll);
    auto& cameras = *menu.addMenu(qt::namedIcon("camera"), tr("Look &through"));
    connect(&cameras, &QMenu::aboutToShow, this, [this, &cameras] { fillCameraMenu(cameras); });
    menu.addSeparator();
    for (auto* panel : findChildren<QDockWidget*>()) {
        menu.addAction(panel->toggleViewAction());
    }
}

void MainWindow::fillCameraMenu(QMenu& menu)
{
    menu.clear();
    auto* none = menu.addAction(tr("None"), _view, &qt::SceneView::leaveCamera);
    none->setEnabled(!_view->camera().empty());
    menu.addSeparator();
    try {
        for (const auto& camera : CameraHandler::findAll(_stage.workspace.root()->path())) {
            const auto path = camera->path();
            menu.addAction(
                QString::fromStdString(PathString::string(path)).replace('&', QLatin1String("&&")),
                _view, [this, path] { _view->lookThrough(path); });
        }
    } catch (const std::exception& error) {
        _errorBar->tell(QString::fromStdString(error.what()));
    }
}

void MainWindow::showItemMenu(const QPoint& position)
{
    const auto index = _outliner->indexAt(position);
    const auto path = _outlinerModel.path(index);
    if (path.empty()) {
        return;
    }
    qt::ContextMenu menu(path, this);
    menu.addSeparator();
    menu.addAction(tr("Rename"), this,
                   [this, path] { _outliner->edit(_outlinerModel.indexOf(path)); });
    menu.addAction(qt::namedIcon("frame"), tr("Frame selection"), _view,
                   &qt::SceneView::frameSelection);
    if (const auto item = _outlinerModel.item(index); item && Camera::camera(item)) {
        menu.addAction(qt::namedIcon("camera"), tr("Look through"), _view,
                       [this, path] { _view->lookThrough(path); });
    }
    menu.addAction(qt::namedIcon("delete"), tr("Delete"), this, &MainWindow::deleteSelected);
    menu.exec(_outliner->viewport()->mapToGlobal(position));
}

void MainWindow::showAttributeMenu(const QPoint& position)
{
    const QPersistentModelIndex index(_attributes->indexAt(position));
    QMenu menu(this);
    auto* reset = menu.addAction(tr("Reset to default"), this,
                                 [this, index] { _attributeModel.reset(index); });
    reset->setEnabled(_attributeModel.canReset(index));
    menu.exec(_attributes->viewport()->mapToGlobal(position));
}

void MainWindow::deleteSelected()
{
    try {
        const Selection selected(*_stage.selection);
        host::Transaction edits(selected.size() == 1
                                    ? "Delete " + selected.front()->nodeName()
                                    : "Delete " + std::to_string(selected.size()) + " items");
        if (selected.size() > 1) { // at once, or the views would follow each item
            edits.run(std::make_shared<SelectionClear>(_stage.selection));
        }
        for (const auto& item : selected) {
            if (!selected.containsAncestor(item->path())) {
                const auto operations = SceneItemOps::sceneItemOps(item);
                edits.run(operations ? operations->deleteItemCmd() : nullptr);
            }
        }
        edits.commit();
    } catch (const std::exception& error) {
        _errorBar->tell(tr("Delete: %1").arg(QString::fromStdString(error.what())));
    }
}

void MainWindow::showProgress()
{
    auto* text = new QLabel(this);
    auto* stop = new QPushButton(tr("Stop reading"), this);
    statusBar()->addPermanentWidget(text);
    statusBar()->addPermanentWidget(stop);
    connect(stop, &QPushButton::clicked, _view, &qt::SceneView::stopReading);
    const auto show = [this, text, stop] {
        stop->setVisible(_view->isReading());
        text->setText(tr("%L1 items").arg(_view->nbItems()));
    };
    connect(_view, &qt::SceneView::progressed, this, show);
    show();
}

void MainWindow::updateTitle()
{
    setWindowModified(!_stage.history->isClean());
}

void MainWindow::setFile(const QString& file)
{
    _file = file;
    const auto name = file.isEmpty() ? tr("New scene") : QFileInfo(file).fileName();
    setWindowTitle(tr("%1[*] - kiv").arg(name));
    updateTitle();
    if (!file.isEmpty() && _isKept) {
        _recent->add(file);
    }
}

bool MainWindow::lookThrough(const std::string& camera)
{
    const auto item = _stage.workspace.item(camera, Path());
    if (!item || !_view->lookThrough(item->path())) {
        return false;
    }
    _outlinerModel.reveal(item->path());
    Selection chosen;
    chosen.append(item);
    _stage.selection->replaceWith(chosen);
    return true;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!mayLose()) {
        event->ignore();
        return;
    }
    if (_isKept) {
        QSettings().setValue("geometry", saveGeometry());
        QSettings().setValue("layout", saveState());
    }
    event->accept();
}

} // namespace window
