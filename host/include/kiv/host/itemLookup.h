#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

// From the words of a user to items.

/// Returns the path of a path string; the empty path for text that is no path string, where
/// `PathString::path` throws.
[[nodiscard]] KIV_EXPORT Path pathOf(const std::string& text);

/// Returns whether names in paths may end at `c`, for some run-time.
[[nodiscard]] KIV_EXPORT bool isSeparator(char c);

/// Returns the item that a user means by `text`: a path string (`/world/file,:Node:Child`), or one
/// that goes on from `current` (`Child`, `../Other`). `.` is the current item, `..` the parent, a
/// lone separator the root. Between any two names a `/` will do, whatever run-times they belong to.
/// Null when there is none. Neither item may be null.
///
/// Cost: one question to the run-time for a path string, otherwise one for each name, and where
/// that fails a walk over the children beside it.
[[nodiscard]] KIV_EXPORT SceneItem::Ptr
lookUp(const SceneItem::Ptr& root, const SceneItem::Ptr& current, const std::string& text);

/// Returns `lookUp`, which must find an item. Throws `std::runtime_error` with the message "no such
/// item 'x'" and, when the name that led nowhere is nearly that of an item there, which is meant.
[[nodiscard]] KIV_EXPORT SceneItem::Ptr
requireItem(const SceneItem::Ptr& root, const SceneItem::Ptr& current, const std::string& text);

/// Returns the one of `names` that a user who typed `word` most likely meant: the same but for case
/// or, of those with few letters added, left out, exchanged or swapped, the nearest, the first one
/// of several. Empty when none is near.
///
/// Cost: linear in the lengths of all names, times that of the word.
[[nodiscard]] KIV_EXPORT std::string nearestName(std::string_view word,
                                                 const std::vector<std::string>& names);

/// Returns `; did you mean 'x'?` for the nearest name, or an empty text when none is near.
[[nodiscard]] KIV_EXPORT std::string suggestion(std::string_view word,
                                                const std::vector<std::string>& names);

} // namespace Kiv_v4::host
