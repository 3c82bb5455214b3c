#pragma once

#include <QIcon>
#include <string>

#include "kiv/export.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::qt {

// Icons of items and of what can be done with them. Those that are drawn here have no colour of
// their own: they take the text colour of the palette, at any size and pixel ratio.

/// Returns the icon that run-times call `name`: a drawn one if there is one of that name, otherwise
/// one from the theme or from the folders of `QIcon::setFallbackSearchPaths`; a null icon if there
/// is none.
///
/// The drawn ones are `camera`, `light`, `directionalLight`, `pointLight`, `spotLight`,
/// `areaLight`, `mesh`, `group`, `joint`, `material`, `file` and `scene` for items, and `open`,
/// `save`, `mount`, `plugIn`, `frame`, `undo`, `redo` and `delete` for actions.
[[nodiscard]] KIV_EXPORT QIcon namedIcon(const std::string& name);

/// Returns the icon of the item in a tree view: the one that its run-time names, with its badge, or
/// one for the item's types. For an unknown type it is the type's first letter. The item must not
/// be null. Exceptions of the run-time pass through.
[[nodiscard]] KIV_EXPORT QIcon itemIcon(const SceneItem::Ptr& item);

} // namespace Kiv_v4::qt
