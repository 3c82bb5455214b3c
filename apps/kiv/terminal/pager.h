#pragma once

#include <csignal>
#include <string>
#include <sys/types.h>

namespace app {

/// Whether the text for the terminal is one for a pager: it takes more rows than there are, and
/// `PAGER` does not refuse one by being empty or `cat`.
[[nodiscard]] bool wantsPager(const std::string& text);

/// The user's pager, which takes what is written to its input. The destructor waits until the user
/// leaves it. Interrupts from the keyboard are its own while it runs.
class Pager
{
public:
    /// Throws `std::system_error` if it cannot be started.
    Pager();
    Pager(const Pager&) = delete;
    Pager& operator=(const Pager&) = delete;
    ~Pager();

    [[nodiscard]] int input() const { return _input; }

private:
    int _input = -1;
    pid_t _id = 0;
    struct sigaction _interrupt = {};
};

} // namespace app
