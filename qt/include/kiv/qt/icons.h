#pragma once

#include <QIcon>
#include <string>

#include "kiv/export.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::qt {

// Icons of items and of what can be done with them. Those that are drawn here have no colour of
// their own: they take the text colour of the palette, at any size and pixel ratio.

/// Returns the icon that run-times mean by `name`: a drawn one of that name; else one from the
/// theme or the folders given to `QIcon::setFallbackSearchPaths`; a null icon when there is
/// neither.
///
/// The drawn ones are `camera`, `light`, `directionalLight`, `pointLight`, `spotLight`,
/// `areaLight`, `mesh`, `group`, `joint`, `material`, `file` and `scene` for items, and `open`,
/// `save`, `mount`, `plugIn`, `frame`, `undo`, `redo` and `delete` for actions.
[[nodiscard]] KIV_EXPORT QIcon namedIcon(const std::string& name);

/// Returns the icon of the item in a tree view: the one that its run-time wants, with its badge, or
/// one by the item's types. Types that are not known are told by their first letter. The item must
/// not be null. Passes on what the run-time throws.
[[nodiscard]] KIV_EXPORT QIcon itemIcon(const SceneItem::Ptr& item);

} // namespace Kiv_v4::qt
