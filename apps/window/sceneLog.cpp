#include "sceneLog.h"

#include <QScrollBar>
#include <QTimer>
#include <utility>

#include "kiv/attributeNotification.h"
#include "kiv/attributes.h"
#include "kiv/object3d.h"
#include "kiv/object3dNotification.h"
#include "kiv/pathString.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"

namespace window {

using namespace Kiv_v4;

namespace {

using Op = SceneCompositeNotification::Op;

constexpr int kMaxLines = 1000;

QString textOf(const Path& path)
{
    return QString::fromStdString(PathString::string(path));
}

QString textOf(const Op& op)
{
    switch (op.opType) {
    case SceneChanged::Added:
        return QObject::tr("added %1").arg(textOf(op.path));
    case SceneChanged::Deleted:
        return QObject::tr("deleted %1").arg(textOf(op.path));
    case SceneChanged::PathChanged:
        return op.item ? QObject::tr("%1 is now %2").arg(textOf(op.path), textOf(op.item->path()))
                       : QObject::tr("%1 has another path").arg(textOf(op.path));
    default:
        return QObject::tr("changed under %1").arg(textOf(op.path));
    }
}

/// Writes notifications to the log, which may be destroyed first.
class Writer : public Observer
{
public:
    explicit Writer(QPlainTextEdit& log) : _log(log)
    {
        _show.setSingleShot(true);
        _show.setInterval(0);
        QObject::connect(&_show, &QTimer::timeout, [this] { show(); });
    }

    void operator()(const Notification& notification) override
    {
        if (const auto* attribute = dynamic_cast<const AttributeChanged*>(&notification)) {
            write(QObject::tr("attribute %1 of %2")
                      .arg(QString::fromStdString(attribute->name()), textOf(attribute->path())));
        } else if (const auto* shown = dynamic_cast<const VisibilityChanged*>(&notification)) {
            write(QObject::tr("shown or hidden %1").arg(textOf(shown->path())));
        } else {
            writeChanges(notification);
        }
    }

private:
    /// Of a batch, the first ones: nobody reads a million.
    void writeChanges(const Notification& notification)
    {
        constexpr auto kMost = 100;
        auto count = 0;
        forEachOp(notification, [&](const Op& op) {
            if (++count <= kMost) {
                write(textOf(op));
            }
        });
        if (count > kMost) {
            write(QObject::tr("and %L1 more").arg(count - kMost));
        }
    }

    void write(const QString& line)
    {
        if (_lines.size() == kMaxLines) {
            _lines.removeFirst();
        }
        _lines.append(line);
        _show.start();
    }

    /// Shows all that was written since events were last handled: a line alone costs as much.
    void show()
    {
        _log.appendPlainText(std::exchange(_lines, {}).join('\n'));
        _log.horizontalScrollBar()->setValue(0); // the beginning tells the most
    }

    QPlainTextEdit& _log;
    QStringList _lines;
    QTimer _show;
};

} // namespace

SceneLog::SceneLog(QWidget* parent)
    : QPlainTextEdit(parent), _observer(std::make_shared<Writer>(*this))
{
    setReadOnly(true);
    setMaximumBlockCount(kMaxLines);
    setLineWrapMode(NoWrap);
    Scene::instance().addObserver(_observer);
    Attributes::addObserver(_observer);
    Object3d::addObserver(_observer);
}

} // namespace window
