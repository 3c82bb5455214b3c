#pragma once

#include <csignal>

namespace app {

/// While it lives, an interrupt from the keyboard does not end the program: it ends a wait for
/// input, and work that asks for it. There is one at a time.
class Interrupts
{
public:
    Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;
    ~Interrupts();

    /// Forgets one that came, before new work begins.
    static void forget() noexcept;

private:
    struct sigaction _before = {};
};

/// Throws `document::Cancelled` when an interrupt came and is not forgotten. For long work,
/// wherever it can end with nothing half done.
void endIfInterrupted();

} // namespace app
