#include <algorithm>
#include <limits>

#include "sceneTreeState.h"

namespace Kiv_v4::host {

namespace {

using Node = SceneTree::Node;

bool isUnder(const Node& node, const Node& top)
{
    const auto* at = &node;
    while (at && at != &top) {
        at = at->parent();
    }
    return at != nullptr;
}

bool enters(const Node& node, Rtid runTimeId)
{
    return node.path().runTimeId() == runTimeId &&
           (!node.parent() || node.parent()->path().runTimeId() != runTimeId);
}

} // namespace

void SceneTree::State::follow(const std::vector<Op>& ops, bool inBatch)
{
    isBatch = inBatch && ops.size() > 1;
    for (const auto& op : ops) {
        if (detail::hasMoved(op)) {
            followMove(op);
        } else if (detail::hasGone(op, inBatch)) {
            followGone(op.path);
        } else if (detail::hasCome(op)) {
            followCome(op.path);
        } else if (op.opType == SceneChanged::SubtreeInvalidated) {
            if (auto* node = find(op.path)) {
                invalid.insert(node);
            }
        } else if (op.opType == SceneChanged::PathChanged) {
            invalid.insert(&root); // an unknown path
        }
    }
    compareAtEnd();
}

void SceneTree::State::followMove(const Op& op)
{
    const auto& path = op.item->path();
    auto* node = find(op.path);
    if (!node) {
        followCome(path);
        return;
    }
    if (auto* occupant = find(path); occupant && occupant != node) {
        unsure.insert(occupant->_parent); // its removal was not announced
        remove(*occupant);
        node = find(op.path);
        if (!node) {
            return;
        }
    }
    auto* before = node->_parent;
    auto* parent = path.size() == 1 ? &root : find(path.pop());
    if (!parent || isUnder(*parent, *node) || !opensFor(*parent)) {
        remove(*node);
        unsure.insert(before);
        return;
    }
    if (parent != before) {
        move(*node, *parent, parent->nbRows());
    }
    setPath(*node, path);
    settle(*node);
    tellChanged(*node);
}

bool SceneTree::State::opensFor(Node& parent)
{
    if (parent._isOpened) {
        return true;
    }
    // A new group of known items, without other children yet.
    const auto isNew =
        isBatch ? fresh.count(&parent) != 0 : reader(parent).children(0, 2).size() < 2;
    if (isNew) {
        parent._isOpened = parent._isComplete = true;
        unsure.insert(&parent);
    }
    return isNew;
}

void SceneTree::State::followCome(const Path& path)
{
    auto* parent = openParentOf(path);
    if (auto* known = find(path)) {
        invalid.insert(known);
        return;
    }
    if (!parent) {
        return;
    }
    constexpr auto kUnknown = std::numeric_limits<std::size_t>::max();
    const auto row = isBatch ? kUnknown : reader(*parent).rowOf(path).value_or(kUnknown);
    if (parent == &root || !filter.empty() || (!parent->_isComplete && row == kUnknown)) {
        unsure.insert(parent); // it may not be shown at all
        return;
    }
    if (!parent->_isComplete && row >= parent->nbRows()) {
        settleRows(*parent); // it is not read yet, like those before it
        return;
    }
    auto* node = make(path);
    fresh.insert(node);
    insert(*parent, std::min(row, parent->nbRows()), std::vector<Node*>{node});
    settle(*node);
}

void SceneTree::State::followGone(const Path& path)
{
    if (auto* node = find(path)) {
        auto* parent = node->_parent;
        remove(*node);
        settleRows(*parent);
    }
}

void SceneTree::State::settleRows(Node& parent)
{
    const auto nbRows = parent.nbRows();
    auto isRight = false;
    if (!isBatch && parent._isComplete) {
        const auto count = reader(parent).count();
        isRight = !count || *count == nbRows;
    } else if (!isBatch && filter.empty() && nbRows > 0) {
        isRight = reader(parent).rowOf(parent.child(nbRows - 1)._path) == nbRows - 1;
    }
    if (!isRight) {
        unsure.insert(&parent);
    }
}

void SceneTree::State::followRunTime(RunTimeEvent event, Rtid runTimeId)
{
    if (event != RunTimeEvent::Leaving) {
        unsure.insert(&root);
        compareAtEnd();
        return;
    }
    std::vector<Path> leaving; // one may be under another
    for (const auto& [path, node] : byPath) {
        if (enters(*node, runTimeId)) {
            leaving.push_back(path);
        }
    }
    for (const auto& path : leaving) {
        if (auto* node = find(path)) {
            remove(*node);
        }
    }
}

void SceneTree::State::settle(Node& node)
{
    auto& parent = *node._parent;
    const auto children = reader(parent);
    const auto count = isBatch || !parent._isComplete ? std::nullopt : children.count();
    const auto isKnown = parent._isComplete ? count == parent.nbRows() : !isBatch && filter.empty();
    const auto place = isKnown ? children.rowOf(node._path) : std::nullopt;
    if (!place || *place >= parent.nbRows()) {
        unsure.insert(&parent);
        return;
    }
    if (node.row() != *place) {
        move(node, parent, *place);
    }
    // A later notification may announce that the siblings moved.
    for (const auto row : {*place - 1, *place + 1}) {
        if (row < parent.nbRows() && children.rowOf(parent.child(row)._path) != row) {
            unsure.insert(&parent);
        }
    }
    if (!parent._isComplete) {
        settleRows(parent);
    }
}

} // namespace Kiv_v4::host
