#pragma once

#include <QMimeData>
#include <memory>
#include <string>
#include <vector>

#include "kiv/host/sceneTree.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::qt::detail {

// What users do to rows of an outliner. Each edit is one undo step, and throws what keeps it from
// being done.

void rename(const SceneItem::Ptr& item, const std::string& name);

void setVisibility(const SceneItem::Ptr& item, bool visible);

/// Returns what a drag of the nodes carries: their paths in the order of the rows, without those
/// that go along with a node above them.
[[nodiscard]] std::unique_ptr<QMimeData> dragOf(std::vector<const host::SceneTree::Node*> nodes);

/// Returns the paths that a drag carries; none when it is not one of `dragOf`.
[[nodiscard]] std::vector<Path> draggedPaths(const QMimeData& data);

/// Returns the child before which items dropped at `row` belong, which is none of those dragged;
/// null for after the last one.
[[nodiscard]] SceneItem::Ptr siblingAt(host::SceneTree& tree, host::SceneTree::Node& parent,
                                       int row, const std::vector<Path>& dragged);

/// Moves the items under `parent`, to before `before` or after the last child for null.
void move(const std::vector<Path>& paths, const SceneItem::Ptr& parent,
          const SceneItem::Ptr& before);

} // namespace Kiv_v4::qt::detail
