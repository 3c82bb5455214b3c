#include "kiv/pathMappingHandler.h"

namespace Kiv_v4 {

PathMappingHandler::PathMappingHandler() = default;

PathMappingHandler::~PathMappingHandler() = default;

} // namespace Kiv_v4
