#pragma once

#include <QMainWindow>
#include <memory>
#include <string>

#include "kiv/qt/attributeModel.h"
#include "kiv/qt/outlinerModel.h"
#include "kiv/qt/sceneView.h"
#include "kiv/qt/undoActions.h"

#include "stage.h"

class QDockWidget;
class QListView;
class QProgressDialog;
class QTreeView;

namespace window {

class ErrorBar;
class RecentFiles;

/// Outliner, view, attributes, history and log of one scene.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// With `isKept`, the layout is that of the last window and kept for the next.
    explicit MainWindow(Stage& stage, bool isKept = true);
    ~MainWindow() override;

    /// Opens a document, asking about unsaved changes, or mounts a scene file. Returns false when
    /// that cannot be, or is not wanted.
    bool load(const QString& file);

    /// Saves the scene under its name, or asks for one. Returns whether it is saved.
    bool save();
    bool saveAs();

    /// Looks through the camera that the text names. Returns false when there is none.
    bool lookThrough(const std::string& camera);

    [[nodiscard]] QTreeView& outliner() const { return *_outliner; }
    [[nodiscard]] QTreeView& attributes() const { return *_attributes; }
    [[nodiscard]] Kiv_v4::qt::SceneView& view() const { return *_view; }
    [[nodiscard]] ErrorBar& errorBar() const { return *_errorBar; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeOutliner();
    void makeAttributes();
    void makeHistory();
    void makeDocks();
    void makeFileMenu();
    void makePluginMenu(QMenu& menu);
    void makeEditMenu();
    void makeViewMenu();
    QDockWidget* dock(const QString& title, QWidget* content, Qt::DockWidgetArea area);

    void showItemMenu(const QPoint& position);
    void showAttributeMenu(const QPoint& position);
    void fillCameraMenu(QMenu& menu);
    void deleteSelected();
    void showProgress();
    void updateTitle();

    void unfold();
    bool mayLose();
    void newScene();
    void chooseDocument();
    void chooseSceneFiles();
    bool saveTo(const QString& file);
    bool write(const QString& file, bool isForced);
    void loadPlugin();
    void unloadPlugin(const std::string& name);
    void setFile(const QString& file);
    void showReading(const std::string& file, float fraction);

    Stage& _stage;
    const bool _isKept;
    QString _file; ///< The document; empty for none.
    Kiv_v4::qt::OutlinerModel _outlinerModel;
    Kiv_v4::qt::AttributeModel _attributeModel;
    Kiv_v4::qt::HistoryModel _historyModel;
    Kiv_v4::qt::UndoActions _undo;
    Kiv_v4::qt::SceneView* const _view;
    ErrorBar* const _errorBar;
    QTreeView* const _outliner;
    QTreeView* const _attributes;
    QListView* const _history;
    RecentFiles* const _recent;
    std::unique_ptr<QProgressDialog> _progress; ///< Null when no file is read.
    const Kiv_v4::Observer::Ptr _historyObserver;
};

} // namespace window
