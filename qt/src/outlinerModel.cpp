#include "kiv/qt/outlinerModel.h"

#include <QFont>
#include <QGuiApplication>
#include <QMimeData>
#include <QPalette>

#include "kiv/object3d.h"
#include "kiv/object3dNotification.h"
#include "kiv/pathString.h"
#include "kiv/qt/icons.h"
#include "kiv/runTimeMgr.h"
#include "kiv/uiInfoHandler.h"

#include "attempt.h"
#include "listening.h"
#include "outlinerEdits.h"
#include "texts.h"

namespace Kiv_v4::qt {

namespace {

using detail::attempt;
using detail::textOf;

/// As many rows as are read at once.
constexpr std::size_t kFetched = 1000;

TypedColorN<float, 3> colorOf(const QColor& color)
{
    return {{color.redF(), color.greenF(), color.blueF()}};
}

/// How the name of an item looks.
CellInfo lookOf(const SceneItem::Ptr& item)
{
    const auto palette = QGuiApplication::palette();
    const CellInfo hostLook(item->nodeName(), 0, false, false, false,
                            colorOf(palette.color(QPalette::Text)),
                            colorOf(palette.color(QPalette::Base)));
    const auto handler = UIInfoHandler::uiInfoHandler(item->runTimeId());
    return handler ? handler->treeViewCellInfo(item, hostLook) : hostLook;
}

QVariant brushOf(const TypedColorN<float, 3>& color, QPalette::ColorRole hostRole)
{
    const auto isOfHost = color == colorOf(QGuiApplication::palette().color(hostRole));
    return isOfHost ? QVariant() : QBrush(QColor::fromRgbF(color.r(), color.g(), color.b()));
}

QVariant fontOf(const CellInfo& look)
{
    if (!look.fontBold && !look.fontItalic && !look.fontStrikeOut && look.fontPointSize <= 0) {
        return {};
    }
    QFont font;
    font.setBold(look.fontBold);
    font.setItalic(look.fontItalic);
    font.setStrikeOut(look.fontStrikeOut);
    if (look.fontPointSize > 0) {
        font.setPointSizeF(look.fontPointSize);
    }
    return font;
}

QString tooltipOf(const SceneItem::Ptr& item)
{
    const auto handler = UIInfoHandler::uiInfoHandler(item->runTimeId());
    const auto own = handler ? handler->treeViewTooltip(item) : std::string();
    return textOf(own.empty() ? PathString::string(item->path()) : own);
}

QVariant nameData(const SceneItem::Ptr& item, int role)
{
    switch (role) {
    case Qt::DisplayRole:
        return textOf(lookOf(item).text);
    case Qt::EditRole:
        return textOf(item->nodeName());
    case Qt::DecorationRole:
        return itemIcon(item);
    case Qt::ToolTipRole:
        return tooltipOf(item);
    case Qt::FontRole:
        return fontOf(lookOf(item));
    case Qt::ForegroundRole:
        return brushOf(lookOf(item).textForeground, QPalette::Text);
    case Qt::BackgroundRole:
        return brushOf(lookOf(item).textBackground, QPalette::Base);
    default:
        return {};
    }
}

QString runTimeText(Rtid id)
{
    const auto handler = UIInfoHandler::uiInfoHandler(id);
    return textOf(handler ? handler->runTimeLabel() : RunTimeMgr::instance().getName(id));
}

QVariant visibilityData(const SceneItem::Ptr& item, int role)
{
    if (role == Qt::CheckStateRole) {
        const auto object = Object3d::object3d(item);
        return object ? QVariant(object->visibility() ? Qt::Checked : Qt::Unchecked) : QVariant();
    }
    return {};
}

} // namespace

OutlinerModel::OutlinerModel(QObject* parent)
    : QAbstractItemModel(parent),
      _visibilityObserver(detail::listeningTo<VisibilityChanged>(
          [this](const VisibilityChanged& change) { visibilityChanged(change.path()); }))
{
    _tree.addListener(*this);
    Object3d::addObserver(_visibilityObserver);
}

OutlinerModel::~OutlinerModel()
{
    Object3d::removeObserver(_visibilityObserver);
    _tree.removeListener(*this);
}

QModelIndex OutlinerModel::indexOf(const Path& path, int column) const
{
    const auto* node = _tree.find(path);
    return node ? indexOf(*node, column) : QModelIndex();
}

QModelIndex OutlinerModel::reveal(const Path& path)
{
    const auto* node = _tree.reveal(path);
    return node ? indexOf(*node, NameColumn) : QModelIndex();
}

Path OutlinerModel::path(const QModelIndex& index) const
{
    return nodeOf(index).path();
}

SceneItem::Ptr OutlinerModel::item(const QModelIndex& index) const
{
    return index.isValid()
               ? attempt("show an item", SceneItem::Ptr(), [&] { return nodeOf(index).item(); })
               : nullptr;
}

QModelIndex OutlinerModel::index(int row, int column, const QModelIndex& parent) const
{
    return hasIndex(row, column, parent)
               ? indexOf(nodeOf(parent).child(static_cast<std::size_t>(row)), column)
               : QModelIndex();
}

QModelIndex OutlinerModel::parent(const QModelIndex& index) const
{
    const auto* above = nodeOf(index).parent();
    return above ? indexOf(*above, NameColumn) : QModelIndex();
}

int OutlinerModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(nodeOf(parent).nbRows());
}

int OutlinerModel::columnCount(const QModelIndex& /*parent*/) const
{
    return ColumnCount;
}

bool OutlinerModel::hasChildren(const QModelIndex& parent) const
{
    return rowCount(parent) > 0 || canFetchMore(parent);
}

bool OutlinerModel::canFetchMore(const QModelIndex& parent) const
{
    return parent.column() <= 0 &&
           attempt("look for children", false, [&] { return _tree.canFetch(nodeOf(parent)); });
}

void OutlinerModel::fetchMore(const QModelIndex& parent)
{
    attempt("read children", [&] { _tree.fetch(nodeOf(parent), kFetched); });
}

QVariant OutlinerModel::data(const QModelIndex& index, int role) const
{
    const auto shown = item(index);
    if (!shown) {
        return {};
    }
    return attempt("show an item", QVariant(), [&]() -> QVariant {
        switch (index.column()) {
        case NameColumn:
            return nameData(shown, role);
        case TypeColumn:
            return role == Qt::DisplayRole ? textOf(shown->nodeType()) : QVariant();
        case RunTimeColumn:
            return role == Qt::DisplayRole ? runTimeText(shown->runTimeId()) : QVariant();
        default:
            return visibilityData(shown, role);
        }
    });
}

QVariant OutlinerModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char* const titles[ColumnCount] = {QT_TR_NOOP("Name"), QT_TR_NOOP("Type"),
                                                    QT_TR_NOOP("Run-time"), QT_TR_NOOP("Shown")};
    return role == Qt::DisplayRole && orientation == Qt::Horizontal && section < ColumnCount
               ? tr(titles[section])
               : QVariant();
}

Qt::ItemFlags OutlinerModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    const auto flags =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    const auto id = nodeOf(index).path().runTimeId();
    const auto& manager = RunTimeMgr::instance();
    switch (index.column()) {
    case NameColumn:
        return manager.sceneItemOpsHandler(id) ? flags | Qt::ItemIsEditable : flags;
    case VisibilityColumn:
        return manager.object3dHandler(id) ? flags | Qt::ItemIsUserCheckable : flags;
    default:
        return flags;
    }
}

bool OutlinerModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const auto edited = item(index);
    if (!edited) {
        return false;
    }
    if (index.column() == NameColumn && role == Qt::EditRole) {
        const auto text = value.toString();
        return text != textOf(edited->nodeName()) && attempt("rename " + edited->nodeName(), [&] {
                   detail::rename(edited, text.toStdString());
               });
    }
    return index.column() == VisibilityColumn && role == Qt::CheckStateRole &&
           attempt("show or hide " + edited->nodeName(),
                   [&] { detail::setVisibility(edited, value.toInt() == Qt::Checked); });
}

QStringList OutlinerModel::mimeTypes() const
{
    return {kMimeType};
}

QMimeData* OutlinerModel::mimeData(const QModelIndexList& indexes) const
{
    std::vector<const Node*> nodes;
    for (const auto& index : indexes) {
        if (index.isValid() && index.column() == NameColumn) {
            nodes.push_back(&nodeOf(index));
        }
    }
    return detail::dragOf(std::move(nodes)).release();
}

Qt::DropActions OutlinerModel::supportedDropActions() const
{
    return Qt::MoveAction;
}

bool OutlinerModel::canDropMimeData(const QMimeData* data, Qt::DropAction action, int /*row*/,
                                    int /*column*/, const QModelIndex& parent) const
{
    if (!data || action != Qt::MoveAction || !parent.isValid()) {
        return false;
    }
    const auto& target = nodeOf(parent).path();
    const auto paths = detail::draggedPaths(*data);
    return !paths.empty() && std::ranges::all_of(paths, [&](const Path& path) {
        return path.runTimeId() == target.runTimeId() && !target.isAtOrBelow(path);
    });
}

bool OutlinerModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                                 const QModelIndex& parent)
{
    return canDropMimeData(data, action, row, column, parent) && attempt("move items", [&] {
               auto& target = nodeOf(parent);
               const auto paths = detail::draggedPaths(*data);
               const auto before = detail::siblingAt(_tree, target, row, paths);
               detail::move(paths, target.item(), before);
           });
}

void OutlinerModel::beginInsert(const Node& parent, std::size_t first, std::size_t count)
{
    _isChanging = true;
    beginInsertRows(indexOf(parent, NameColumn), static_cast<int>(first),
                    static_cast<int>(first + count - 1));
}

void OutlinerModel::endInsert()
{
    endInsertRows();
    _isChanging = false;
}

void OutlinerModel::beginRemove(const Node& parent, std::size_t first, std::size_t count)
{
    _isChanging = true;
    beginRemoveRows(indexOf(parent, NameColumn), static_cast<int>(first),
                    static_cast<int>(first + count - 1));
}

void OutlinerModel::endRemove()
{
    endRemoveRows();
    _isChanging = false;
}

void OutlinerModel::beginMove(const Node& node, const Node& newParent, std::size_t newRow)
{
    _isChanging = true;
    const auto row = node.row();
    const auto isDown = node.parent() == &newParent && newRow > row; // counted with itself
    beginMoveRows(indexOf(*node.parent(), NameColumn), static_cast<int>(row), static_cast<int>(row),
                  indexOf(newParent, NameColumn), static_cast<int>(newRow + (isDown ? 1 : 0)));
}

void OutlinerModel::endMove()
{
    endMoveRows();
    _isChanging = false;
}

void OutlinerModel::changed(const Node& node)
{
    Q_EMIT dataChanged(indexOf(node, NameColumn), indexOf(node, ColumnCount - 1));
}

QModelIndex OutlinerModel::indexOf(const Node& node, int column) const
{
    return node.parent()
               ? createIndex(static_cast<int>(node.row()), column, const_cast<Node*>(&node))
               : QModelIndex();
}

OutlinerModel::Node& OutlinerModel::nodeOf(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<Node*>(index.internalPointer()) : _tree.root();
}

void OutlinerModel::visibilityChanged(const Path& path)
{
    const auto index = indexOf(path, VisibilityColumn);
    if (index.isValid()) {
        Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    }
}

} // namespace Kiv_v4::qt
