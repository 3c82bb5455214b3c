#pragma once

#include <QAbstractListModel>
#include <QAction>
#include <QObject>
#include <memory>

#include "kiv/export.h"
#include "kiv/host/undoHistory.h"
#include "kiv/observer.h"

namespace Kiv_v4::qt {

/// The actions Undo and Redo for menus and tool bars, with the standard shortcuts and icons. Their
/// texts name the entry ("Undo rename cube"); they are enabled if there is an entry.
class KIV_EXPORT UndoActions : public QObject
{
    Q_OBJECT

public:
    /// `history` must not be null.
    explicit UndoActions(std::shared_ptr<host::UndoHistory> history, QObject* parent = nullptr);
    ~UndoActions() override;

    /// Returns the actions, which belong to this object.
    [[nodiscard]] QAction& undo() const noexcept { return *_undo; }
    [[nodiscard]] QAction& redo() const noexcept { return *_redo; }

private:
    KIV_HIDDEN void update();

    const std::shared_ptr<host::UndoHistory> _history;
    QAction* const _undo;
    QAction* const _redo;
    const Observer::Ptr _observer;
};

/// The entries of an undo history, oldest first, behind a row for the state before all of them.
/// Undone entries are shown paler, and the entry that Undo would undo in bold.
class KIV_EXPORT HistoryModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// `history` must not be null.
    explicit HistoryModel(std::shared_ptr<host::UndoHistory> history, QObject* parent = nullptr);
    ~HistoryModel() override;

    /// As in `QAbstractListModel`.
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// Returns the row of the state that the scene is in.
    [[nodiscard]] QModelIndex current() const;

public Q_SLOTS:
    /// Undoes or redoes until the scene is in the state of that row. Stops where a command throws.
    void goTo(const QModelIndex& index);

private:
    KIV_HIDDEN void update();

    const std::shared_ptr<host::UndoHistory> _history;
    std::vector<std::string> _entries;
    std::size_t _nbDone = 0;
    const Observer::Ptr _observer;
};

} // namespace Kiv_v4::qt
