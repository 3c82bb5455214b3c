#pragma once

#include <csignal>

namespace app {

/// While it lives, an interrupt from the keyboard does not end the program: it ends a wait for
/// input, and work that asks for it. One of the conversation may live within one of the program.
class Interrupts
{
public:
    /// What a second interrupt does when work that does not ask was left running by the first.
    enum class Second { EndsProgram, Waits };

    explicit Interrupts(Second second);
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;
    ~Interrupts();

    /// Forgets one that came, before new work begins.
    static void forget() noexcept;

    /// Whether one came and is not forgotten.
    [[nodiscard]] static bool hasCome() noexcept;

    /// From now on an interrupt ends the program at once: for work in processes of its own, which
    /// the interrupt ends with it.
    static void endProgram() noexcept;

private:
    struct sigaction _before = {};
    const bool _endedBefore;
};

/// Throws `document::Cancelled` when an interrupt came and is not forgotten. For long work,
/// wherever it can end with nothing half done.
void endIfInterrupted();

/// Ends the program as an interrupt does when nobody minds it, with status 130 for a shell: so that
/// a script that called it ends, too.
[[noreturn]] void endAsInterrupted();

} // namespace app
