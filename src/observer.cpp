#include "kiv/observer.h"

namespace Kiv_v4 {

Observer::Observer() = default;

Observer::~Observer() = default;

void Observer::operator()(const Notification& /*notification*/) {}

} // namespace Kiv_v4
