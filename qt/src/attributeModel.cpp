#include "kiv/qt/attributeModel.h"

#include <QElapsedTimer>
#include <algorithm>

#include "kiv/hierarchy.h"
#include "kiv/host/itemProperties.h"
#include "kiv/host/transaction.h"
#include "kiv/runTimeMgr.h"

#include "attempt.h"
#include "attributeCells.h"
#include "itemRows.h"
#include "itemWatch.h"
#include "listening.h"

namespace Kiv_v4::qt {

namespace {

using detail::attempt;

/// How long items are read at a stretch, in milliseconds.
constexpr int kFillingSlice = 10;

bool isSame(const detail::AttributeGroups& some, const detail::AttributeGroups& others)
{
    const auto isSameRow = [](const auto& row, const auto& other) {
        return row.name == other.name && row.type == other.type;
    };
    return std::ranges::equal(some, others, [&](const auto& group, const auto& other) {
        return group.key == other.key && std::ranges::equal(group.rows, other.rows, isSameRow);
    });
}

} // namespace

/// Items of which some are read.
class AttributeModel::Reading
{
public:
    explicit Reading(std::vector<Path> items) : _items(std::move(items)) {}

    /// Reads on for a while; whether there is more to read.
    bool readOn()
    {
        QElapsedTimer clock;
        clock.start();
        while (_next < _items.size() && clock.elapsed() < kFillingSlice) {
            attempt("read an item", [this] { read(_items[_next]); });
            ++_next;
        }
        return _next < _items.size();
    }

    [[nodiscard]] const std::vector<Group>& groups() const { return _groups; }

private:
    void read(const Path& path)
    {
        const auto isThere = RunTimeMgr::instance().hierarchyHandler(path.runTimeId()) != nullptr;
        const auto item = isThere ? Hierarchy::createItem(path) : nullptr;
        if (!item) {
            return;
        }
        if (std::exchange(_isFirst, false)) {
            _groups = detail::groupsOf(item);
        } else {
            detail::keepShared(_groups, item);
        }
    }

    const std::vector<Path> _items;
    std::vector<Group> _groups;
    std::size_t _next = 0;
    bool _isFirst = true;
};

AttributeModel::AttributeModel(QObject* parent)
    : QAbstractItemModel(parent), _selectionObserver(detail::listeningTo<Notification>(
                                      [this](const Notification&) { _refresh.start(); })),
      _runTimes([this](RunTimeEvent event, Rtid) {
          if (event == RunTimeEvent::Leaving) {
              dropItems();
          }
      })
{
    _refresh.setSingleShot(true);
    _refresh.setInterval(0);
    connect(&_refresh, &QTimer::timeout, this, &AttributeModel::refresh);
    _slice.setInterval(0);
    connect(&_slice, &QTimer::timeout, this, &AttributeModel::readOn);
}

AttributeModel::~AttributeModel()
{
    follow(nullptr);
}

void AttributeModel::setItems(std::vector<Path> items)
{
    if (!_watch || items != _items) {
        _items = std::move(items);
        _watch.reset();
        _watch = std::make_unique<Watch>(_items, [this] { _refresh.start(); });
    }
    _refresh.stop();
    _reading = std::make_unique<Reading>(_items);
    readOn();
}

void AttributeModel::follow(ObservableSelection::Ptr selection)
{
    if (_selection) {
        _selection->removeObserver(_selectionObserver);
    }
    _selection = std::move(selection);
    if (_selection) {
        _selection->addObserver(_selectionObserver);
        refresh();
    }
}

bool AttributeModel::isReading() const noexcept
{
    return _reading != nullptr;
}

void AttributeModel::refresh()
{
    auto items = _items;
    if (_selection) {
        items.clear();
        for (const auto& item : *_selection) {
            items.push_back(item->path());
        }
    }
    setItems(std::move(items));
}

void AttributeModel::dropItems()
{
    _slice.stop();
    _reading.reset();
    _watch.reset();
    _refresh.start();
}

void AttributeModel::readOn()
{
    const auto isMore = _reading->readOn();
    publish();
    if (isMore) {
        _slice.start();
    } else {
        _slice.stop();
        _reading.reset();
    }
}

void AttributeModel::publish()
{
    const auto& groups = _reading->groups();
    if (!isSame(groups, _groups)) {
        beginResetModel();
        _groups = groups;
        endResetModel();
        return;
    }
    for (std::size_t i = 0; i < groups.size(); ++i) {
        for (std::size_t j = 0; j < groups[i].rows.size(); ++j) {
            if (groups[i].rows[j] != _groups[i].rows[j]) {
                _groups[i].rows[j] = groups[i].rows[j];
                const auto row = static_cast<int>(j);
                const auto above = index(static_cast<int>(i), 0);
                Q_EMIT dataChanged(index(row, 0, above), index(row, ColumnCount - 1, above));
            }
        }
    }
}

// Indexes of rows hold the place of their group, from 1 on; those of groups hold 0.

const AttributeModel::Row* AttributeModel::rowOf(const QModelIndex& index) const
{
    return index.isValid() && index.internalId() > 0
               ? &_groups[index.internalId() - 1].rows[static_cast<std::size_t>(index.row())]
               : nullptr;
}

QModelIndex AttributeModel::index(int row, int column, const QModelIndex& parent) const
{
    const auto id = parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : 0;
    return hasIndex(row, column, parent) ? createIndex(row, column, id) : QModelIndex();
}

QModelIndex AttributeModel::parent(const QModelIndex& index) const
{
    return index.internalId() > 0
               ? createIndex(static_cast<int>(index.internalId()) - 1, 0, quintptr(0))
               : QModelIndex();
}

int AttributeModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid()) {
        return static_cast<int>(_groups.size());
    }
    const auto isGroup = parent.internalId() == 0 && parent.column() == 0;
    return isGroup ? static_cast<int>(_groups[static_cast<std::size_t>(parent.row())].rows.size())
                   : 0;
}

int AttributeModel::columnCount(const QModelIndex& /*parent*/) const
{
    return ColumnCount;
}

QVariant AttributeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const auto* row = rowOf(index);
    if (!row) {
        return index.column() == LabelColumn
                   ? detail::groupData(_groups[static_cast<std::size_t>(index.row())], role)
                   : QVariant();
    }
    switch (index.column()) {
    case LabelColumn:
        return detail::labelData(*row, role);
    case ValueColumn:
        return detail::valueData(*row, role);
    default:
        return detail::unitData(*row, role);
    }
}

QVariant AttributeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char* const titles[ColumnCount] = {QT_TR_NOOP("Name"), QT_TR_NOOP("Value"),
                                                    QT_TR_NOOP("Unit")};
    return role == Qt::DisplayRole && orientation == Qt::Horizontal && section < ColumnCount
               ? tr(titles[section])
               : QVariant();
}

Qt::ItemFlags AttributeModel::flags(const QModelIndex& index) const
{
    const auto* row = rowOf(index);
    if (!row) {
        return index.isValid() ? Qt::ItemIsEnabled : Qt::NoItemFlags;
    }
    const auto flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() != ValueColumn || !row->isSettable) {
        return flags;
    }
    return flags | (row->type == Attribute::kBool ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool AttributeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const auto* row = rowOf(index);
    if (!row || index.column() != ValueColumn || !row->isSettable) {
        return false;
    }
    return attempt("set " + row->label, [&] {
        if (role == Qt::CheckStateRole) {
            set(index, value.toInt() != Qt::Unchecked);
        } else if (role == Qt::EditRole) {
            set(index, valueFromText(row->type, value.toString().toStdString()));
        } else {
            throw std::invalid_argument("not a value");
        }
    });
}

bool AttributeModel::canReset(const QModelIndex& index) const
{
    const auto* row = rowOf(index);
    return row && row->isSettable && row->standard &&
           (row->isMixed || row->value != *row->standard);
}

bool AttributeModel::reset(const QModelIndex& index)
{
    return canReset(index) &&
           attempt("reset " + rowOf(index)->label, [&] { set(index, *rowOf(index)->standard); });
}

void AttributeModel::set(const QModelIndex& index, const host::PropertyValue& value)
{
    const auto& group = _groups[index.internalId() - 1];
    const auto row = *rowOf(index); // the model may change while observers are notified of the edit
    const auto key = group.key;
    if (!row.isMixed && row.value == value) {
        return;
    }
    host::Transaction edits("Set " + row.label);
    for (const auto& path : _items) {
        if (const auto item = Hierarchy::createItem(path)) {
            edits.run(detail::setRowCmd(item, key, row.name, value));
        }
    }
    edits.commit();
}

} // namespace Kiv_v4::qt
