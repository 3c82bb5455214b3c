#pragma once

#include <functional>

#include "kiv/assimp/sceneFile.h"

namespace Kiv_v4::assimp {

/// Runs `work` on a thread with a large stack, since the importer recurses over the depth of the
/// scene, and waits for it. What `work` asks is answered on the calling thread, by `answer`, so the
/// two threads never run at the same time.
///
/// Throws what `answer` threw, otherwise what `work` threw; a question that `answer` throws at gets
/// false. When no thread can be had, `work` runs on the calling one.
void runOnLargeStack(const std::function<void(const Progress& ask)>& work, const Progress& answer);

} // namespace Kiv_v4::assimp
