#include "sceneMove.h"

#include <algorithm>
#include <stdexcept>

#include "kiv/hierarchy.h"
#include "kiv/host/matrix.h"
#include "kiv/host/transaction.h"
#include "kiv/pathString.h"
#include "kiv/transform3d.h"

#include "attempt.h"
#include "vectors.h"

namespace Kiv_v4::qt {

namespace {

Transform3d::Ptr transformOf(const SceneItem::Ptr& item)
{
    return Transform3d::editTransform3d(item, EditTransform3dHint::Translate);
}

} // namespace

SceneView::Move::Move(const Selection& selection)
    : _history(dynamic_cast<host::UndoHistory*>(&UndoableCommandMgr::instance()))
{
    for (const auto& item : selection) {
        if (!selection.containsAncestor(item->path())) {
            detail::attempt("move " + item->nodeName(), [&] { take(item); });
        }
    }
    if (_history) {
        _merging.emplace(*_history);
    }
}

void SceneView::Move::take(const SceneItem::Ptr& item)
{
    const auto transform = transformOf(item);
    if (!transform || !host::worldMatrix(item)) {
        return;
    }
    if (const auto toParent = host::inverse(transform->exclusiveMatrix())) {
        _items.push_back({item->path(), transform->translation(), *toParent});
    }
}

void SceneView::Move::to(const Vector3d& by)
{
    host::Transaction edits(_items.size() == 1
                                ? "Move " + _items.front().path.back().string()
                                : "Move " + std::to_string(_items.size()) + " items");
    for (const auto& item : _items) {
        const auto transform = transformOf(Hierarchy::createItem(item.path));
        if (!transform) {
            throw std::runtime_error("no such item '" + PathString::string(item.path) + "'");
        }
        const auto at = detail::sum(item.begin, detail::image(by, item.toParent, 0));
        edits.run(transform->translateCmd(at.vector[0], at.vector[1], at.vector[2]));
    }
    edits.commit();
    _isDone = _isDone || !_items.empty();
}

void SceneView::Move::cancel()
{
    _merging.reset();
    if (_history && _isDone) {
        _history->undo();
    }
}

} // namespace Kiv_v4::qt
