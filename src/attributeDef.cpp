#include "kiv/attributeDef.h"

namespace Kiv_v4 {

AttributeDef::AttributeDef() = default;

AttributeDef::~AttributeDef() = default;

} // namespace Kiv_v4
