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

/// What a selection does with items that are gone.
enum class Gone { dropped, kept };

/// Lets the selection have the items where they are now, in their places; those that are gone it
/// drops, or keeps at the paths that they had. An observable one announces this as one composite,
/// and nothing when nothing changes.
void follow(Kiv_v4::Selection& selection, const Kiv_v4::SceneCompositeNotification::Op& change,
            Gone gone);

} // namespace app::shell
