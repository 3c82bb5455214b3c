#include "terminal/pager.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "terminal/terminal.h"

namespace app {

namespace {

/// Shows colours, and leaves by itself when all fits.
constexpr auto kLessOptions = "FRX";

/// The rest is for shells without the pager.
constexpr auto kUsualPager = "command -v less >/dev/null && exec less; exec cat";

std::string pagerCommand()
{
    const auto* wanted = std::getenv("PAGER");
    return wanted ? wanted : kUsualPager;
}

/// Whether the text takes more rows than the terminal has; not if it does not tell.
bool isTall(const std::string& text)
{
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) {
        return false;
    }
    std::size_t rows = 0;
    std::istringstream lines(text);
    for (std::string line; rows < size.ws_row && std::getline(lines, line);) {
        rows += std::max<std::size_t>(1, (columns(line) + size.ws_col - 1) / size.ws_col);
    }
    return rows >= size.ws_row;
}

[[noreturn]] void become(const std::string& command, int input)
{
    ::dup2(input, STDIN_FILENO);
    ::setenv("LESS", kLessOptions, 0);
    ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    ::_exit(127);
}

} // namespace

bool wantsPager(const std::string& text)
{
    const auto command = pagerCommand();
    return !command.empty() && command != "cat" && !isDumb() && isTall(text);
}

Pager::Pager()
{
    const auto command = pagerCommand();
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "pager");
    }
    _id = ::fork();
    if (_id == 0) {
        become(command, pipe[0]);
    }
    ::close(pipe[0]);
    if (_id < 0) {
        ::close(pipe[1]);
        throw std::system_error(errno, std::generic_category(), "pager");
    }
    _input = pipe[1];
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    ::sigaction(SIGINT, &ignored, &_interrupt);
}

Pager::~Pager()
{
    ::close(_input);
    while (::waitpid(_id, nullptr, 0) < 0 && errno == EINTR) {
    }
    ::sigaction(SIGINT, &_interrupt, nullptr);
}

} // namespace app
