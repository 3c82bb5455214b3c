#pragma once

namespace Kiv_v4::detail {

/// Executes a command and drops it. Returns false if it is null because the run-time refused.
template <class Command>
bool executeIfAny(const Command& command)
{
    if (!command) {
        return false;
    }
    command->execute();
    return true;
}

} // namespace Kiv_v4::detail
