#include "receivers.h"

#include <exception>

#include "kiv/log.h"

namespace Kiv_v4::host::detail {

void logThrown(const std::string& what) noexcept
{
    try {
        try {
            throw;
        } catch (const std::exception& error) {
            log("receive", "host/src/receivers", __LINE__, what + " threw " + error.what() + "\n");
        } catch (...) {
            log("receive", "host/src/receivers", __LINE__, what + " threw.\n");
        }
    } catch (...) {
        // There is no memory for the message.
    }
}

} // namespace Kiv_v4::host::detail
