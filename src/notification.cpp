#include "kiv/notification.h"

namespace Kiv_v4 {

Notification::Notification() = default;

Notification::~Notification() = default;

} // namespace Kiv_v4
