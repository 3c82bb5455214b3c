#include "terminal/interrupts.h"

#include <atomic>

#include "kiv/document/workspace.h"

namespace app {

namespace {

std::atomic<bool> hasCome = false;
static_assert(std::atomic<bool>::is_always_lock_free, "as a signal handler needs it");

void note(int)
{
    hasCome = true;
}

} // namespace

Interrupts::Interrupts()
{
    struct sigaction action = {};
    action.sa_handler = note; // without SA_RESTART, so that reading ends
    ::sigaction(SIGINT, &action, &_before);
}

Interrupts::~Interrupts()
{
    ::sigaction(SIGINT, &_before, nullptr);
}

void Interrupts::forget() noexcept
{
    hasCome = false;
}

void endIfInterrupted()
{
    if (hasCome) {
        throw Kiv_v4::document::Cancelled("interrupted");
    }
}

} // namespace app
