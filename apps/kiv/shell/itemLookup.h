#pragma once

#include <string>

#include "kiv/sceneItem.h"

namespace app::shell {

/// The item that a user means by `text`: a path string (`/world/file,:Node:Child`), or one that
/// goes on from `current` (`Child`, `../Other`). `.` is the current item, `..` the parent, a lone
/// separator the root. Between any two names a `/` will do, whatever run-times they belong to. Null
/// when there is none.
[[nodiscard]] Kiv_v4::SceneItem::Ptr lookUp(const Kiv_v4::SceneItem::Ptr& root,
                                            const Kiv_v4::SceneItem::Ptr& current,
                                            const std::string& text);

/// Whether names in paths may end at `c`, for some run-time.
[[nodiscard]] bool isSeparator(char c);

} // namespace app::shell
