#include "kiv/qt/selectionSync.h"

#include <QItemSelection>
#include <QScopedValueRollback>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "kiv/notificationGuard.h"
#include "kiv/selectionNotification.h"

#include "attempt.h"
#include "listening.h"

namespace Kiv_v4::qt {

namespace {

using Flag = QItemSelectionModel::SelectionFlag;
using Node = host::SceneTree::Node;

/// The number of rows that are selected.
qsizetype nbRows(const QItemSelection& selection)
{
    qsizetype count = 0;
    for (const auto& range : selection) {
        count += range.left() == 0 ? range.height() : 0;
    }
    return count;
}

/// Calls `visit` with the item of each row.
template <class Visit>
void eachItem(const OutlinerModel& model, const QItemSelection& selection, Visit visit)
{
    for (const auto& range : selection) {
        for (auto row = range.top(); range.left() == 0 && row <= range.bottom(); ++row) {
            if (const auto item = model.item(model.index(row, 0, range.parent()))) {
                visit(item);
            }
        }
    }
}

/// Whether to show the changes one by one costs less than to show all that is selected.
bool areFewItems(const SelectionCompositeNotification& changes)
{
    constexpr std::size_t kFew = 16;
    return changes.size() <= kFew &&
           std::ranges::all_of(changes, [](const auto& change) { return change.item != nullptr; });
}

/// Whole rows as few ranges.
class RowRanges
{
public:
    explicit RowRanges(const OutlinerModel& model) : _model(model) {}

    void add(const Node& node) { _rows.push_back({node.parent(), node.row(), &node}); }

    [[nodiscard]] QItemSelection ranges()
    {
        std::ranges::sort(_rows, [](const Row& a, const Row& b) {
            return std::less<>()(a.parent, b.parent) || (a.parent == b.parent && a.row < b.row);
        });
        QItemSelection ranges;
        for (std::size_t first = 0, end = 0; first < _rows.size(); first = end) {
            for (end = first + 1; end < _rows.size() && follows(_rows[end], _rows[end - 1]);) {
                ++end;
            }
            ranges.append(
                {_model.indexOf(_rows[first].node->path()),
                 _model.indexOf(_rows[end - 1].node->path(), OutlinerModel::ColumnCount - 1)});
        }
        return ranges;
    }

private:
    struct Row
    {
        const Node* parent;
        std::size_t row;
        const Node* node;
    };

    static bool follows(const Row& next, const Row& last)
    {
        return next.parent == last.parent && next.row == last.row + 1;
    }

    const OutlinerModel& _model;
    std::vector<Row> _rows;
};

} // namespace

SelectionSync::SelectionSync(OutlinerModel& model, QItemSelectionModel& view,
                             ObservableSelection::Ptr selection)
    : QObject(&view), _model(model), _view(view), _selection(std::move(selection)),
      _observer(detail::listeningTo<Notification>(
          [this](const Notification& notification) { follow(notification); }))
{
    _selection->addObserver(_observer);
    connect(&_view, &QItemSelectionModel::selectionChanged, this, &SelectionSync::take);
    connect(&_model, &QAbstractItemModel::rowsInserted, this, &SelectionSync::showRows);
    // The view's selection cannot be trusted after a move: a row that came in between others of
    // which all were selected would count as selected.
    connect(&_model, &QAbstractItemModel::rowsMoved, this, &SelectionSync::showAllLater);
    showAll();
}

SelectionSync::~SelectionSync()
{
    _selection->removeObserver(_observer);
}

void SelectionSync::take(const QItemSelection& selected, const QItemSelection& deselected)
{
    if (_isShowing) {
        return;
    }
    if (_model.isChanging()) { // for lack of rows, and maybe others in their place
        showAllLater();
        return;
    }
    _nbReceived = 0;
    detail::attempt("select", [&] {
        const QScopedValueRollback taking(_isTaking, true);
        if (nbRows(selected) == nbRows(_view.selection())) { // nothing stays
            Selection items;
            eachItem(_model, selected, [&](const auto& item) { items.append(item); });
            _selection->replaceWith(items);
        } else {
            const NotificationGuard once(*_selection);
            eachItem(_model, deselected, [&](const auto& item) { _selection->remove(item); });
            eachItem(_model, selected, [&](const auto& item) { _selection->append(item); });
        }
    });
    if (_nbReceived > 1) { // somebody answered with a change
        showAll();
    }
}

void SelectionSync::follow(const Notification& notification)
{
    if (_isTaking) {
        ++_nbReceived;
    } else if (_model.isChanging()) {
        showAllLater();
    } else if (const auto* appended = dynamic_cast<const SelectionItemAppended*>(&notification)) {
        show(appended->item()->path(), true);
    } else if (const auto* inserted = dynamic_cast<const SelectionItemInserted*>(&notification)) {
        show(inserted->item()->path(), true);
    } else if (const auto* removed = dynamic_cast<const SelectionItemRemoved*>(&notification)) {
        show(removed->item()->path(), false);
    } else if (const auto* changes =
                   dynamic_cast<const SelectionCompositeNotification*>(&notification);
               changes && areFewItems(*changes)) {
        for (const auto& change : *changes) {
            show(change.item->path(), change.opType != SelectionChanged::Remove);
        }
    } else {
        showAll();
    }
}

void SelectionSync::show(const Path& path, bool isSelected)
{
    const QScopedValueRollback showing(_isShowing, true);
    _view.select(_model.indexOf(path), (isSelected ? Flag::Select : Flag::Deselect) | Flag::Rows);
    setCurrent();
}

void SelectionSync::showAllLater()
{
    if (!std::exchange(_isStale, true)) {
        QTimer::singleShot(0, this, [this] {
            if (_isStale) {
                showAll();
            }
        });
    }
}

void SelectionSync::showAll()
{
    const QScopedValueRollback showing(_isShowing, true);
    _isStale = false;
    RowRanges rows(_model);
    for (const auto& item : *_selection) {
        if (const auto* node = _model.tree().find(item->path())) {
            rows.add(*node);
        }
    }
    _view.select(rows.ranges(), Flag::ClearAndSelect);
    setCurrent();
}

void SelectionSync::showRows(const QModelIndex& parent, int first, int last)
{
    if (_selection->empty()) {
        return;
    }
    const QScopedValueRollback showing(_isShowing, true);
    RowRanges rows(_model);
    for (auto row = first; row <= last; ++row) {
        const auto path = _model.path(_model.index(row, 0, parent));
        if (_selection->contains(path)) {
            rows.add(*_model.tree().find(path));
        }
    }
    _view.select(rows.ranges(), Flag::Select);
}

void SelectionSync::setCurrent()
{
    if (!_selection->empty()) {
        const auto index = _model.indexOf(_selection->back()->path());
        if (index.isValid()) {
            _view.setCurrentIndex(index, Flag::NoUpdate);
        }
    }
}

} // namespace Kiv_v4::qt
