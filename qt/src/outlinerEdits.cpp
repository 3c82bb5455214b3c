#include "outlinerEdits.h"

#include <QDataStream>
#include <QIODevice>
#include <algorithm>
#include <stdexcept>

#include "kiv/hierarchy.h"
#include "kiv/host/childName.h"
#include "kiv/host/itemLookup.h"
#include "kiv/host/transaction.h"
#include "kiv/object3d.h"
#include "kiv/pathString.h"
#include "kiv/qt/outlinerModel.h"
#include "kiv/sceneItemOps.h"

#include "attempt.h"
#include "texts.h"

namespace Kiv_v4::qt::detail {

namespace {

using Node = host::SceneTree::Node;

SceneItemOps::Ptr operationsOf(const SceneItem::Ptr& item)
{
    auto operations = SceneItemOps::sceneItemOps(item);
    if (!operations) {
        throw std::runtime_error("the run-time offers no operations on it");
    }
    return operations;
}

SceneItem::Ptr itemAt(const Path& path)
{
    auto item = Hierarchy::createItem(path);
    if (!item) {
        throw std::runtime_error("no such item '" + PathString::string(path) + "'");
    }
    return item;
}

/// Rows from the root down to the node: in the order of these lists, nodes are drawn.
std::vector<std::size_t> placeOf(const Node& node)
{
    std::vector<std::size_t> rows;
    for (const auto* at = &node; at->parent(); at = at->parent()) {
        rows.push_back(at->row());
    }
    std::ranges::reverse(rows);
    return rows;
}

} // namespace

void rename(const SceneItem::Ptr& item, const std::string& name)
{
    const auto parent = Hierarchy::hierarchy(item)->parent();
    execute(operationsOf(item)->renameItemCmd(parent ? host::freeName(parent, name) : name));
}

void setVisibility(const SceneItem::Ptr& item, bool visible)
{
    const auto object = Object3d::object3d(item);
    execute(object ? object->setVisibilityCmd(visible) : nullptr);
}

std::unique_ptr<QMimeData> dragOf(std::vector<const Node*> nodes)
{
    std::vector<std::pair<std::vector<std::size_t>, Path>> places;
    places.reserve(nodes.size());
    for (const auto* node : nodes) {
        places.emplace_back(placeOf(*node), node->path());
    }
    std::ranges::sort(
        places, {}, [](const auto& place) -> const auto& { return place.first; });

    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    QString lines;
    const Path* last = nullptr;
    for (const auto& [rows, path] : places) {
        if (last && path.isAtOrBelow(*last)) {
            continue;
        }
        last = &path;
        const auto text = PathString::string(path);
        stream << QByteArray::fromStdString(text);
        lines += textOf(text) + '\n';
    }
    auto data = std::make_unique<QMimeData>();
    data->setData(OutlinerModel::kMimeType, bytes);
    data->setText(lines);
    return data;
}

std::vector<Path> draggedPaths(const QMimeData& data)
{
    std::vector<Path> paths;
    const auto bytes = data.data(OutlinerModel::kMimeType);
    QDataStream stream(bytes);
    while (!stream.atEnd()) {
        QByteArray text;
        stream >> text;
        auto path = host::pathOf(text.toStdString());
        if (path.empty() || stream.status() != QDataStream::Ok) {
            return {};
        }
        paths.push_back(std::move(path));
    }
    return paths;
}

SceneItem::Ptr siblingAt(host::SceneTree& tree, Node& parent, int row,
                         const std::vector<Path>& dragged)
{
    for (auto at = static_cast<std::size_t>(row); row >= 0; ++at) {
        if (at >= parent.nbRows()) {
            tree.fetch(parent, 1);
        }
        if (at >= parent.nbRows()) {
            break;
        }
        const auto& sibling = parent.child(at);
        if (sibling.path().runTimeId() == parent.path().runTimeId() &&
            std::ranges::find(dragged, sibling.path()) == dragged.end()) {
            return sibling.item();
        }
    }
    return nullptr;
}

void move(const std::vector<Path>& paths, const SceneItem::Ptr& parent,
          const SceneItem::Ptr& before)
{
    host::Transaction edits(paths.size() == 1 ? "Move " + paths.front().back().string()
                                              : "Move " + std::to_string(paths.size()) + " items");
    for (const auto& path : paths) {
        host::moveUnder(edits, itemAt(path), parent, before);
    }
    edits.commit();
}

} // namespace Kiv_v4::qt::detail
