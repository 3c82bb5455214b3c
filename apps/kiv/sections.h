#pragma once

#include "kiv/sceneItem.h"

#include "facts.h"

namespace app {

// What the library's interfaces tell of an item, whatever its run-time. The item is not null; the
// sections of interfaces that it does not have are without facts. Exceptions of run-times pass
// through.

/// Where the item stands in the hierarchy.
[[nodiscard]] Section place(const Kiv_v4::SceneItem::Ptr& item);

/// Its attributes with type, value and metadata.
[[nodiscard]] Section attributes(const Kiv_v4::SceneItem::Ptr& item);

/// The connections that begin or end at its attributes.
[[nodiscard]] Section connections(const Kiv_v4::SceneItem::Ptr& item);

/// Its matrices and what its own is made of.
[[nodiscard]] Section transform(const Kiv_v4::SceneItem::Ptr& item);

[[nodiscard]] Section camera(const Kiv_v4::SceneItem::Ptr& item);
[[nodiscard]] Section light(const Kiv_v4::SceneItem::Ptr& item);

/// Visibility, bounding box and materials.
[[nodiscard]] Section object(const Kiv_v4::SceneItem::Ptr& item);

/// The definition of its node type.
[[nodiscard]] Section nodeDefinition(const Kiv_v4::SceneItem::Ptr& item);

/// How a user interface shows it: icon, tooltip, context menu, place in a node graph.
[[nodiscard]] Section userInterface(const Kiv_v4::SceneItem::Ptr& item);

/// The path of the item as a string; null for no item.
[[nodiscard]] Json pathOf(const Kiv_v4::SceneItem::Ptr& item);

} // namespace app
