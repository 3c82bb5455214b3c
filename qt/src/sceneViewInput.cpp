// What the user does in the view: selecting, moving items, and looking from elsewhere.
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "kiv/hierarchy.h"
#include "kiv/qt/sceneView.h"

#include "attempt.h"
#include "sceneContent.h"
#include "sceneMove.h"
#include "sceneOrbit.h"
#include "vectors.h"

namespace Kiv_v4::qt {

namespace {

using detail::attempt;

/// A press that moves less is a click.
constexpr double kClick = 4;

} // namespace

void SceneView::choose(const std::vector<Path>& paths, Qt::KeyboardModifiers modifiers)
{
    attempt("select", [&] {
        Selection chosen;
        if (modifiers & (Qt::ShiftModifier | Qt::ControlModifier)) {
            chosen = *_selection;
        }
        for (const auto& path : paths) {
            const auto item = Hierarchy::createItem(path);
            if (item && !chosen.append(item) && modifiers & Qt::ControlModifier) {
                chosen.remove(item);
            }
        }
        _selection->replaceWith(chosen);
    });
}

void SceneView::mousePressEvent(QMouseEvent* event)
{
    _pressed = _last = event->position();
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier) {
        const auto item = itemAt(_pressed);
        if (!item.empty() && !_selection->containsAncestorInclusive(item)) {
            choose({item}, Qt::NoModifier);
        }
    }
}

void SceneView::beginMove(const QPointF& at)
{
    const auto item = itemAt(at);
    if (!item.empty() && _selection->containsAncestorInclusive(item)) {
        attempt("move items", [this] { _move = std::make_unique<Move>(*_selection); });
        const auto box = _content->box(*_selection);
        _moveDepth = std::max(_viewpoint.seen(detail::middle(box)).vector[2], 1e-6);
    }
}

void SceneView::mouseMoveEvent(QMouseEvent* event)
{
    const auto by = event->position() - _last;
    const auto isAlt = event->modifiers() & Qt::AltModifier;
    const auto isShift = event->modifiers() & Qt::ShiftModifier;
    _last = event->position();
    if (event->buttons() & Qt::MiddleButton) {
        isAlt || isShift ? pan(by) : orbit(by);
    } else if (event->buttons() & Qt::LeftButton && isAlt) {
        orbit(by);
    } else if (event->buttons() & Qt::LeftButton) {
        drag(event->modifiers());
    }
}

void SceneView::drag(Qt::KeyboardModifiers modifiers)
{
    const auto by = _last - _pressed;
    if (!_move && _band.isNull()) {
        if (std::hypot(by.x(), by.y()) < kClick) {
            return;
        }
        if (modifiers == Qt::NoModifier) {
            beginMove(_pressed);
        }
    }
    if (!_move) {
        _band = QRectF(_pressed, _last).normalized();
        update();
        return;
    }
    const auto reach = 1 / _viewpoint.scale(_moveDepth, size());
    const auto moved = detail::sum(detail::scaled(_viewpoint.right(), by.x() * reach),
                                   _viewpoint.up(), -by.y() * reach);
    if (!attempt("move items", [&] { _move->to(moved); })) {
        _move.reset();
        _pressed = _last;
        return;
    }
    for (const auto& item : *_selection) {
        _content->update(item);
    }
}

void SceneView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const auto by = event->position() - _pressed;
    if (!_band.isNull()) {
        choose(itemsIn(_band), event->modifiers());
    } else if (!_move && std::hypot(by.x(), by.y()) < kClick &&
               !(event->modifiers() & Qt::AltModifier)) {
        const auto item = itemAt(event->position());
        choose(item.empty() ? std::vector<Path>() : std::vector{item}, event->modifiers());
    }
    _move.reset();
    _band = {};
    update();
}

void SceneView::wheelEvent(QWheelEvent* event)
{
    leaveToOrbit();
    _orbit->zoom(event->angleDelta().y() / 120.0);
    look();
}

void SceneView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_F:
        frameSelection();
        break;
    case Qt::Key_A:
        frameAll();
        break;
    case Qt::Key_Escape:
        if (_move) {
            attempt("take the move back", [this] { _move->cancel(); });
            _move.reset();
        }
        _band = {};
        update();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace Kiv_v4::qt
