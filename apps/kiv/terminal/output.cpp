#include "terminal/output.h"

#include <cerrno>
#include <csignal>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "terminal/terminal.h"

namespace app {

namespace {
constexpr std::size_t kPieceSize = 1 << 16;
}

Output::Output() : _isTerminal(app::isTerminal(STDOUT_FILENO))
{
    std::signal(SIGPIPE, SIG_IGN); // so that write() tells instead
}

void Output::write(std::string_view text)
{
    _pending += text;
    if (_pending.size() >= kPieceSize) {
        flush();
    }
}

void Output::line(std::string_view text)
{
    _pending += text;
    write("\n");
}

void Output::flush()
{
    const auto pending = std::exchange(_pending, {});
    for (std::string_view rest = pending; _isRead && !rest.empty();) {
        const auto written = ::write(STDOUT_FILENO, rest.data(), rest.size());
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EPIPE) {
            _isRead = false;
        } else if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "standard output");
        }
    }
}

} // namespace app
