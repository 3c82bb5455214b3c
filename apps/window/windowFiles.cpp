// What the window does with files.
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QProgressDialog>
#include <QTreeView>
#include <algorithm>

#include "kiv/document/sceneDocument.h"

#include "errorBar.h"
#include "mainWindow.h"
#include "recentFiles.h"

namespace window {

namespace {

QString documents()
{
    return QObject::tr("Scenes (*.json);;All files (*)");
}

} // namespace

bool MainWindow::mayLose()
{
    if (_stage.history->isClean()) {
        return true;
    }
    const auto answer = QMessageBox::question(
        this, tr("Unsaved changes"), tr("The scene has changes that are not saved."),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && save());
}

bool MainWindow::load(const QString& file)
{
    const auto isDocument = file.endsWith(".json");
    if (isDocument && !mayLose()) {
        return false;
    }
    try {
        if (_stage.load(file.toStdString())) {
            setFile(file);
        } else if (_isKept) {
            _recent->add(file);
        }
        unfold();
        _view->frameAll();
        return true;
    } catch (const document::Cancelled&) { // as the user wanted
    } catch (const std::exception& error) {
        _errorBar->tell(QString::fromStdString(error.what()));
    }
    return false;
}

/// Opens the rows of the files that were mounted first; all of many would take a while.
void MainWindow::unfold()
{
    constexpr int kOpened = 20;
    _outliner->expandToDepth(0);
    const auto& rows = *_outliner->model();
    const auto top = rows.index(0, 0);
    for (auto row = 0; row < std::min(rows.rowCount(top), kOpened); ++row) {
        _outliner->expand(rows.index(row, 0, top));
    }
}

void MainWindow::newScene()
{
    if (!mayLose()) {
        return;
    }
    try {
        _stage.clear();
        setFile(QString());
    } catch (const std::exception& error) {
        _errorBar->tell(QString::fromStdString(error.what()));
    }
}

void MainWindow::chooseDocument()
{
    const auto file = QFileDialog::getOpenFileName(this, tr("Open a scene"), _file, documents());
    if (!file.isEmpty()) {
        load(file);
    }
}

void MainWindow::chooseSceneFiles()
{
    for (const auto& file : QFileDialog::getOpenFileNames(this, tr("Mount scene files"))) {
        load(file);
    }
}

bool MainWindow::save()
{
    return _file.isEmpty() ? saveAs() : saveTo(_file);
}

bool MainWindow::saveAs()
{
    auto file = QFileDialog::getSaveFileName(this, tr("Save the scene"), _file, documents());
    if (!file.isEmpty() && QFileInfo(file).suffix().isEmpty()) {
        file += ".json";
    }
    return !file.isEmpty() && saveTo(file);
}

bool MainWindow::saveTo(const QString& file)
{
    try {
        return write(file, false);
    } catch (const document::NotReplaceable& error) {
        const auto answer = QMessageBox::question(this, tr("Replace the file?"),
                                                  tr("%1\n\nReplace it?").arg(error.what()));
        try {
            return answer == QMessageBox::Yes && write(file, true);
        } catch (const std::exception& refusal) {
            _errorBar->tell(QString::fromStdString(refusal.what()));
        }
    } catch (const std::exception& error) {
        _errorBar->tell(QString::fromStdString(error.what()));
    }
    return false;
}

bool MainWindow::write(const QString& file, bool isForced)
{
    document::save(_stage.workspace, file.toStdString(),
                   isForced ? document::Replacing::Anything : document::Replacing::Documents);
    _stage.history->setClean();
    setFile(file);
    return true;
}

void MainWindow::loadPlugin()
{
    const auto file =
        QFileDialog::getOpenFileName(this, tr("Load a plug-in"), QString(), tr("Plug-ins (*.so)"));
    if (file.isEmpty()) {
        return;
    }
    try {
        _stage.plugins.load(file.toStdString());
    } catch (const std::exception& error) {
        _errorBar->tell(QString::fromStdString(error.what()));
    }
}

void MainWindow::unloadPlugin(const std::string& name)
{
    try {
        for (const auto& line : _stage.plugins.unload(name)) {
            _errorBar->tell(QString::fromStdString(line));
        }
    } catch (const std::exception& error) {
        _errorBar->tell(QString::fromStdString(error.what()));
    }
}

void MainWindow::showReading(const std::string& file, float fraction)
{
    if (!_progress && fraction < 1) {
        _progress = std::make_unique<QProgressDialog>(
            tr("Reading %1").arg(QString::fromStdString(file)), tr("Cancel"), 0, 1000, this);
        _progress->setWindowModality(Qt::WindowModal);
        _progress->setMinimumDuration(500);
    }
    const auto isCancelled =
        _progress && (_progress->setValue(int(fraction * 1000)), _progress->wasCanceled());
    if (isCancelled || fraction >= 1) {
        _progress.reset();
    }
    if (isCancelled) {
        throw document::Cancelled("cancelled");
    }
}

} // namespace window
