#pragma once

namespace Kiv_v4::detail {

/// Forgets the raw addresses of objects that have died.
void forgetDeadAddresses() noexcept;

} // namespace Kiv_v4::detail
