#include <algorithm>
#include <unordered_set>

#include "kiv/hierarchyHandler.h"
#include "kiv/hierarchy_v4_2.h"
#include "kiv/pathString.h"

#include "edits.h"
#include "probes.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

namespace {

std::string described(const SceneItem::Ptr& item)
{
    return item ? textOf(item->path()) + " (" + item->nodeType() + ')' : "null";
}

void checkPath(Checking& checking, const SceneItem::Ptr& item)
{
    const auto& path = item->path();
    checking.at("paths.agree", "createItem of the path of a listed item", path);
    const auto again = Hierarchy::createItem(path);
    if (!again || again->path() != path || again->nodeType() != item->nodeType()) {
        checking.found(described(item), described(again));
    }
    checking.at("paths.text", "reading the text of the path", path);
    const auto text = PathString::string(path);
    if (!Checking::answers([&] {
            const auto read = PathString::path(text);
            if (read != path) {
                checking.found(text, textOf(read));
            }
        })) {
        checking.found("the path", "an exception from PathString::path(\"" + text + "\")");
    }
}

/// Paths that name nothing, as clients may pass them.
std::vector<Path> unknownPaths(const Path& path)
{
    const auto segment = path.getSegments().back();
    auto deep = path;
    for (int depth = 0; depth < 1000; ++depth) {
        deep = deep + std::string("no such item");
    }
    return {path + std::string("no such item"),
            path + std::string(),
            deep,
            Path(PathSegment("no such top", segment.runTimeId(), segment.separator())),
            Path(PathSegment(PathSegment::Components{}, segment.runTimeId(), segment.separator())),
            path + PathSegment("no such mount", segment.runTimeId(), segment.separator())};
}

void checkChildren(Checking& checking, const SceneItem::Ptr& item)
{
    const auto& path = item->path();
    checking.at("hierarchy.children", "children", path);
    const auto hierarchy = Hierarchy::hierarchy(item);
    if (!hierarchy) {
        checking.found("a hierarchy for each item", "null");
        return;
    }
    if (!hierarchy->sceneItem() || *hierarchy->sceneItem() != *item) {
        checking.found("sceneItem " + described(item), described(hierarchy->sceneItem()));
    }
    const auto children = hierarchy->children();
    if (hierarchy->hasChildren() != !children.empty()) {
        checking.found("hasChildren " + std::string(children.empty() ? "false" : "true"),
                       "the opposite");
    }
    std::unordered_set<Path> seen;
    for (const auto& child : children) {
        checking.at("hierarchy.children", "children", path);
        if (!child) {
            checking.found("items", "a null item");
            continue;
        }
        if (child->runTimeId() == path.runTimeId() && child->path().pop() != path) {
            checking.found("a child one component below " + textOf(path), described(child));
        }
        if (!seen.insert(child->path()).second) {
            checking.found("each child once", described(child) + " twice");
        }
        checking.at("hierarchy.parents", "parent of " + textOf(child->path()), child->path());
        const auto childHierarchy = Hierarchy::hierarchy(child);
        const auto parent = childHierarchy ? childHierarchy->parent() : nullptr;
        if (!parent || *parent != *item) {
            checking.found(described(item), described(parent));
        }
    }
    checking.at("hierarchy.children", "filteredChildren", path);
    const auto filter = hierarchy->defaultChildFilter();
    const auto filtered = hierarchy->filteredChildren(filter);
    if (hierarchy->hasFilteredChildren(filter) != !filtered.empty()) {
        checking.found("hasFilteredChildren " + std::string(filtered.empty() ? "false" : "true"),
                       "the opposite");
    }
    for (const auto& child : filtered) {
        if (!child || seen.count(child->path()) == 0) {
            checking.found("children that the filter lets through", described(child));
        }
    }
    checking.at("hierarchy.parents", "defaultParent", path);
    const auto place = hierarchy->defaultParent();
    if (place && !Hierarchy::createItem(place->path())) {
        checking.found("an item that is there, or null", described(place));
    }
}

/// Compares the rows, the names and types, and the walk with the children.
void checkRows(Checking& checking, const SceneItem::Ptr& item)
{
    const auto rows = Hierarchy_v4_2::hierarchy(item);
    if (!rows) {
        return;
    }
    const auto children = rows->children();
    const std::vector<SceneItem::Ptr> list(children.begin(), children.end());
    checking.at("hierarchy.rows", "nbChildren", item->path());
    if (rows->nbChildren() != list.size()) {
        checking.found(std::to_string(list.size()), std::to_string(rows->nbChildren()));
    }
    const auto infos = rows->childInfos(0, list.size() + 1);
    if (infos.size() != list.size()) {
        checking.found("childInfos of all children", std::to_string(infos.size()) + " infos");
    }
    for (std::size_t row = 0; row < std::min(infos.size(), list.size()); ++row) {
        const auto& path = list[row]->path();
        checking.at("hierarchy.rows", "row " + std::to_string(row), item->path());
        const auto child = rows->child(row);
        if (!child || child->path() != path || rows->row(path) != row) {
            checking.found(described(list[row]) + " in that row, and the row of its path",
                           described(child));
        }
        if (infos[row].name != path.back() || infos[row].nodeType != list[row]->nodeType() ||
            infos[row].runTimeId != list[row]->runTimeId()) {
            checking.found(described(list[row]), infos[row].name.string() + " (" +
                                                     infos[row].nodeType + ") in childInfos");
        }
    }
    checking.at("hierarchy.rows", "beyond the last row", item->path());
    if (rows->child(list.size()) || rows->row(item->path() + std::string("no such item"))) {
        checking.found("null, and no row", "a child");
    }
}

void checkName(Checking& checking, const Path& path)
{
    const auto name = path.back().string();
    const auto separator = path.getSegments().back().separator();
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7f; };
    checking.at("names.fit", "the name '" + name + '\'', path);
    if (name.empty()) {
        checking.found("a name", "an empty one");
    }
    if (name.find(separator) != std::string::npos ||
        name.find(PathString::pathSegmentSeparator()) != std::string::npos) {
        checking.found("no separator in the name", '\'' + name + '\'');
    }
    if (std::any_of(name.begin(), name.end(), isControl)) {
        checking.found("no control character in the name", '\'' + name + '\'');
    }
}

} // namespace

void checkPaths(Checking& checking)
{
    const auto items = walk(checking.running().roots, checking.options().maxItems);
    for (const auto& item : items) {
        checkPath(checking, item);
    }
    const auto count = std::min<std::size_t>(items.size(), 20);
    for (std::size_t index = 0; index < count; ++index) {
        for (const auto& path : unknownPaths(items[checking.below(items.size())]->path())) {
            checking.at("paths.unknown", "createItem of a path that names nothing", path);
            Checking::answers([&] {
                if (const auto item = Hierarchy::createItem(path)) {
                    checking.found("null", described(item));
                }
            });
        }
    }
}

void checkHierarchy(Checking& checking)
{
    for (const auto& item : walk(checking.running().roots, checking.options().maxItems)) {
        checkChildren(checking, item);
        checkRows(checking, item);
    }
    for (const auto& root : checking.running().roots) {
        checking.at("hierarchy.parents", "parent of a top item", root);
        const auto parent = Hierarchy::hierarchy(Hierarchy::createItem(root))->parent();
        const auto gateway = root.popSegment();
        if (gateway.empty() ? parent != nullptr : !parent || parent->path() != gateway) {
            checking.found(gateway.empty() ? "null" : textOf(gateway), described(parent));
        }
    }
}

void checkOrder(Checking& checking)
{
    checking.at("hierarchy.order", "asking the whole scene again");
    const auto first = snapshot(checking.running().roots, checking.options().maxItems);
    for (int round = 0; round < 5; ++round) {
        const auto again = snapshot(checking.running().roots, checking.options().maxItems);
        if (const auto found = difference(first, again)) {
            checking.found("hierarchy.order", found->item, found->expected, found->seen);
            return;
        }
    }
}

void checkNames(Checking& checking)
{
    for (const auto& item : walk(checking.running().roots, checking.options().maxItems)) {
        checkName(checking, item->path());
    }
}

} // namespace Kiv_v4::conformance
