#include "kiv/hierarchyHandler.h"

namespace Kiv_v4 {

HierarchyHandler::HierarchyHandler() = default;

HierarchyHandler::~HierarchyHandler() = default;

} // namespace Kiv_v4
