#pragma once

#include <functional>

#include "kiv/assimp/sceneFile.h"

namespace Kiv_v4::assimp {

/// Runs `work` on a thread with a large stack, since the importer recurses over the depth of the
/// scene, and waits for it. `answer` answers the questions of `work` on the calling thread, so the
/// two threads never run at the same time.
///
/// Rethrows the exception of `answer`, or else that of `work`; if `answer` throws, the answer is
/// false. If no thread can be started, `work` runs on the calling one.
void runOnLargeStack(const std::function<void(const Progress& ask)>& work, const Progress& answer);

} // namespace Kiv_v4::assimp
