#include "kiv/qt/undoActions.h"

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeySequence>
#include <QPalette>
#include <algorithm>

#include "kiv/qt/icons.h"

#include "attempt.h"
#include "listening.h"
#include "texts.h"

namespace Kiv_v4::qt {

namespace {

using detail::attempt;
using detail::textOf;
using host::UndoHistory;

/// Longer texts end in an ellipsis: menus are as wide as their widest entry.
constexpr qsizetype kLongest = 48;

QString entryText(const QString& verb, const std::string& entry)
{
    auto text = textOf(entry);
    if (text.size() > kLongest) {
        text = text.left(kLongest - 1) + QChar(0x2026);
    }
    return text.isEmpty() ? verb : verb + ' ' + text.replace('&', QLatin1String("&&"));
}

QAction* actionFor(const char* icon, QKeySequence::StandardKey key, QObject* parent)
{
    auto* action = new QAction(parent);
    action->setIcon(namedIcon(icon));
    action->setShortcuts(key);
    return action;
}

} // namespace

UndoActions::UndoActions(std::shared_ptr<UndoHistory> history, QObject* parent)
    : QObject(parent), _history(std::move(history)),
      _undo(actionFor("undo", QKeySequence::Undo, this)),
      _redo(actionFor("redo", QKeySequence::Redo, this)),
      _observer(detail::listeningTo<host::UndoHistoryChanged>(
          [this](const host::UndoHistoryChanged&) { update(); }))
{
    _history->addObserver(_observer);
    connect(_undo, &QAction::triggered, this,
            [this] { attempt(_undo->text().toStdString(), [&] { _history->undo(); }); });
    connect(_redo, &QAction::triggered, this,
            [this] { attempt(_redo->text().toStdString(), [&] { _history->redo(); }); });
    update();
}

UndoActions::~UndoActions()
{
    _history->removeObserver(_observer);
}

void UndoActions::update()
{
    _undo->setText(entryText(tr("Undo"), _history->undoText()));
    _undo->setEnabled(_history->canUndo());
    _redo->setText(entryText(tr("Redo"), _history->redoText()));
    _redo->setEnabled(_history->canRedo());
}

HistoryModel::HistoryModel(std::shared_ptr<UndoHistory> history, QObject* parent)
    : QAbstractListModel(parent), _history(std::move(history)), _entries(_history->entries()),
      _nbDone(_history->nbDone()), _observer(detail::listeningTo<host::UndoHistoryChanged>(
                                       [this](const host::UndoHistoryChanged&) { update(); }))
{
    _history->addObserver(_observer);
}

HistoryModel::~HistoryModel()
{
    _history->removeObserver(_observer);
}

int HistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(_entries.size()) + 1;
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto row = static_cast<std::size_t>(index.row());
    if (role == Qt::DisplayRole) {
        return row == 0 ? tr("Start") : textOf(_entries[row - 1]);
    }
    if (role == Qt::FontRole && row == _nbDone) {
        QFont font;
        font.setBold(true);
        return font;
    }
    if (role == Qt::ForegroundRole && row > _nbDone) {
        return QGuiApplication::palette().brush(QPalette::PlaceholderText);
    }
    return {};
}

QModelIndex HistoryModel::current() const
{
    return index(static_cast<int>(_nbDone));
}

void HistoryModel::goTo(const QModelIndex& index)
{
    if (!index.isValid()) {
        return;
    }
    const auto wanted = static_cast<std::size_t>(index.row());
    attempt("undo and redo", [&] {
        while (_history->nbDone() > wanted && _history->undo()) {
        }
        while (_history->nbDone() < wanted && _history->redo()) {
        }
    });
}

void HistoryModel::update()
{
    auto entries = _history->entries();
    const auto common = std::ranges::mismatch(entries, _entries).in1 - entries.begin();
    const auto first = static_cast<int>(common) + 1;
    if (first < rowCount()) {
        beginRemoveRows({}, first, rowCount() - 1);
        _entries.resize(static_cast<std::size_t>(common));
        endRemoveRows();
    }
    if (entries.size() > _entries.size()) {
        beginInsertRows({}, first, static_cast<int>(entries.size()));
        _entries = std::move(entries);
        endInsertRows();
    }
    _nbDone = _history->nbDone();
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

} // namespace Kiv_v4::qt
