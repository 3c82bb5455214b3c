#include "kiv/lightHandler.h"

namespace Kiv_v4 {

LightHandler::LightHandler() = default;

LightHandler::~LightHandler() = default;

} // namespace Kiv_v4
