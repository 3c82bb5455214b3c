#pragma once

#include "kiv/path.h"
#include "kiv/sceneNotification.h"
#include "kiv/selection.h"

namespace app::shell {

// What a host does so that what it remembers of the scene stays true when the scene changes. A
// change is one that has happened.

/// `path` after the change: where its item is now or, when that is gone, its nearest ancestor that
/// is there.
[[nodiscard]] Kiv_v4::Path followed(const Kiv_v4::Path& path,
                                    const Kiv_v4::SceneCompositeNotification::Op& change);

/// Lets the selection have the items where they are now, in their places, and no items that are
/// gone. An observable one announces this as one composite, and nothing when nothing changes.
void follow(Kiv_v4::Selection& selection, const Kiv_v4::SceneCompositeNotification::Op& change);

} // namespace app::shell
