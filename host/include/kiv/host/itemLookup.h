#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

// Finds the items that a user names.

/// Returns the path of a path string; the empty path if the text is not a path string, where
/// `PathString::path` throws.
[[nodiscard]] KIV_EXPORT Path pathOf(const std::string& text);

/// Returns whether `c` may separate names in the paths of some run-time.
[[nodiscard]] KIV_EXPORT bool isSeparator(char c);

/// Returns the item that a user means by `text`: a path string (`/world/file,:Node:Child`), or one
/// relative to `current` (`Child`, `../Other`). `.` is the current item, `..` the parent, a lone
/// separator the root. A `/` may stand between any two names, whatever their run-times. Null if
/// there is no such item. Neither `root` nor `current` may be null.
///
/// Cost: one query to the run-time for a path string, otherwise one for each name, and if that
/// fails a walk over its siblings.
[[nodiscard]] KIV_EXPORT SceneItem::Ptr
lookUp(const SceneItem::Ptr& root, const SceneItem::Ptr& current, const std::string& text);

/// Returns the item that `lookUp` finds. If it finds none, throws `std::runtime_error` with the
/// message "no such item 'x'" and, if an item there has a similar name, the suggestion of that
/// name.
[[nodiscard]] KIV_EXPORT SceneItem::Ptr
requireItem(const SceneItem::Ptr& root, const SceneItem::Ptr& current, const std::string& text);

/// Returns the one of `names` that a user who typed `word` most likely meant: the one that differs
/// in case only, or else the nearest of those with few letters added, left out, replaced or
/// swapped; the first of several. Empty if none is near.
///
/// Cost: linear in the lengths of all names, times that of the word.
[[nodiscard]] KIV_EXPORT std::string nearestName(std::string_view word,
                                                 const std::vector<std::string>& names);

/// Returns `; did you mean 'x'?` for the nearest name, or an empty text if none is near.
[[nodiscard]] KIV_EXPORT std::string suggestion(std::string_view word,
                                                const std::vector<std::string>& names);

} // namespace Kiv_v4::host
