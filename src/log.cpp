#include "kiv/log.h"

#include <iostream>
#include <utility>

#include "detail/noDestructor.h"
#include "detail/sourceLines.h"

namespace Kiv_v4 {

namespace {

struct Listening
{
    LogListener listener;
    bool isTelling = false;
};

Listening& listening()
{
    static detail::NoDestructor<Listening> shared;
    return *shared;
}

void tell(const LogRecord& record) noexcept
{
    auto& state = listening();
    if (!state.listener || std::exchange(state.isTelling, true)) {
        return;
    }
    try {
        const auto listener = state.listener; // a copy, since it may replace itself
        listener(record);
    } catch (...) {
        // There is no further place to report it.
    }
    state.isTelling = false;
}

} // namespace

void log(const char* function, const char* file, int line, const std::string& message)
{
    std::cerr << message + "\n" + detail::sourceLines(function, file, line) << std::flush;
    tell({function, file, line, message, std::current_exception()});
}

void setLogListener(LogListener listener)
{
    listening().listener = std::move(listener);
}

} // namespace Kiv_v4
