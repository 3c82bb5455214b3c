#include "recentFiles.h"

#include <QFileInfo>
#include <QSettings>

namespace window {

namespace {

constexpr qsizetype kLongest = 10;
constexpr auto kKey = "recentFiles";

} // namespace

RecentFiles::RecentFiles(std::function<void(const QString&)> open, QWidget* parent)
    : QMenu(QObject::tr("Open &recent"), parent), _open(std::move(open))
{
    fill();
}

void RecentFiles::add(const QString& file)
{
    QSettings settings;
    auto files = settings.value(kKey).toStringList();
    const auto path = QFileInfo(file).absoluteFilePath();
    files.removeAll(path);
    files.prepend(path);
    settings.setValue(kKey, files.mid(0, kLongest));
    fill();
}

void RecentFiles::fill()
{
    clear();
    const auto files = QSettings().value(kKey).toStringList();
    for (const auto& file : files) {
        auto text = fontMetrics().elidedText(file, Qt::ElideMiddle, 480);
        addAction(text.replace('&', QLatin1String("&&")), this, [this, file] { _open(file); });
    }
    setEnabled(!files.isEmpty());
}

} // namespace window
