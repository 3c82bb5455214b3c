#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/host/undoHistory.h"
#include "kiv/qt/sceneView.h"
#include "kiv/selection.h"

namespace Kiv_v4::qt {

/// A drag of items: one entry of the undo history, however often the mouse moves.
class SceneView::Move
{
public:
    /// Moves the topmost of the selected items that have a place in the world.
    explicit Move(const Selection& selection);

    /// Has them where they began, moved by `by` in the world. Throws what keeps it from being done.
    void to(const Vector3d& by);

    /// Takes back what was done.
    void cancel();

private:
    struct Item
    {
        Path path;
        Vector3d begin;
        Matrix4d toParent; ///< From the world to the space of the item's translation.
    };

    void take(const SceneItem::Ptr& item);

    std::vector<Item> _items;
    host::UndoHistory* const _history; ///< Null for another command manager.
    std::optional<host::UndoHistory::Merging> _merging;
    bool _isDone = false;
};

} // namespace Kiv_v4::qt
