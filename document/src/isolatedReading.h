#pragma once

#include <functional>

#include "kiv/document/isolation.h"
#include "kiv/sceneFileHandler.h"

namespace Kiv_v4::document {

/// Runs `read` in a child process and answers its progress here. Throws `std::runtime_error` with
/// the message of the exception that it threw there, or with the limit that it exceeded or the
/// signal that ended it; exceptions of `progress` pass through, and end the child.
void readInChild(const Isolation& limits,
                 const std::function<void(const SceneFileHandler::Progress& progress)>& read,
                 const SceneFileHandler::Progress& progress);

} // namespace Kiv_v4::document
