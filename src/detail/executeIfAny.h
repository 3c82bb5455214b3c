#pragma once

namespace Kiv_v4::detail {

/// Executes a command that was made for the occasion and drops it; false when there is none because
/// the run-time refused.
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
