#include "terminal/interrupts.h"

#include <atomic>
#include <cstdlib>

#include "kiv/document/workspace.h"

namespace app {

namespace {

constexpr int kInterrupted = 128 + SIGINT; ///< As a shell has it.

std::atomic<bool> hasOneCome = false;
std::atomic<bool> secondEnds = false;
static_assert(std::atomic<bool>::is_always_lock_free, "as a signal handler needs it");

void note(int)
{
    if (hasOneCome.exchange(true) && secondEnds) {
        std::signal(SIGINT, SIG_DFL);
        std::raise(SIGINT); // which takes effect when this returns
    }
}

} // namespace

Interrupts::Interrupts(Second second)
    : _endedBefore(secondEnds.exchange(second == Second::EndsProgram))
{
    ::sigaction(SIGINT, nullptr, &_before);
    if (_before.sa_handler != SIG_IGN) { // as a job in the background has it
        struct sigaction action = {};
        action.sa_handler = note; // without SA_RESTART, so that reading ends
        ::sigaction(SIGINT, &action, nullptr);
    }
}

Interrupts::~Interrupts()
{
    ::sigaction(SIGINT, &_before, nullptr);
    secondEnds = _endedBefore;
}

void Interrupts::forget() noexcept
{
    hasOneCome = false;
}

bool Interrupts::hasCome() noexcept
{
    return hasOneCome;
}

void Interrupts::endProgram() noexcept
{
    std::signal(SIGINT, SIG_DFL);
}

void endIfInterrupted()
{
    if (hasOneCome) {
        throw Kiv_v4::document::Cancelled("interrupted");
    }
}

void endAsInterrupted()
{
    std::signal(SIGINT, SIG_DFL);
    std::raise(SIGINT);
    std::_Exit(kInterrupted);
}

} // namespace app
