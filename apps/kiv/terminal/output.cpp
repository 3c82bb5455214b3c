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

Output::Output() : _isTerminal(app::isTerminal(STDOUT_FILENO)), _isPaged(_isTerminal)
{
    std::signal(SIGPIPE, SIG_IGN); // so that write() tells instead
}

void Output::write(std::string_view text)
{
    _pending += text;
    if (_pending.size() >= kPieceSize) {
        send();
    }
}

void Output::line(std::string_view text)
{
    _pending += text;
    write("\n");
}

void Output::flush()
{
    send();
    if (_pager) {
        _pager.reset();
        _isRead = true; // that the user left the pager concerns what was in it
    }
}

bool Output::isColoured() const
{
    return _colouring == Colouring::Auto ? _isTerminal && !refusesColour() && !isDumb()
                                         : _colouring == Colouring::Always;
}

void Output::send()
{
    if (_isPaged && !_pager && wantsPager(_pending)) {
        _pager.emplace();
    }
    const auto pending = std::exchange(_pending, {});
    for (std::string_view rest = pending; _isRead && !rest.empty();) {
        const auto written =
            ::write(_pager ? _pager->input() : STDOUT_FILENO, rest.data(), rest.size());
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
