#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kiv/export.h"
#include "kiv/host/outline.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

// Items by patterns, for command lines and search fields.

/// Returns whether the whole of `text` matches the pattern, in which `*` stands for any text, `?`
/// for any character and `[...]` for one of several; a backslash takes the next one for itself. The
/// characters are those of the C library's locale.
[[nodiscard]] KIV_EXPORT bool isLike(const std::string& text, const std::string& pattern,
                                     bool ignoresCase = false);

/// Returns whether the text has a character that patterns give a meaning.
[[nodiscard]] KIV_EXPORT bool isPattern(std::string_view text) noexcept;

/// Returns the items that a path of patterns names, each once, in the order in which a walk through
/// the tree comes to their parents: `props/L*`, `/world/**`. Paths are as in `lookUp`; a name `**`
/// stands for any number of levels, and at the end for all items below. Neither item may be null.
///
/// Cost: linear in the children of the items on the way, and for each `**` in what lies below them.
[[nodiscard]] KIV_EXPORT std::vector<SceneItem::Ptr> itemsLike(const SceneItem::Ptr& root,
                                                               const SceneItem::Ptr& current,
                                                               const std::string& pattern,
                                                               const OnVisit& onVisit = {});

} // namespace Kiv_v4::host
