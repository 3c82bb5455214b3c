#pragma once

#include <exception>
#include <source_location>
#include <string>

#include "kiv/undoableCommand.h"

namespace Kiv_v4::qt::detail {

/// Writes to the log that `what` was not done, and why.
void complain(const std::string& what, const std::string& why,
              const std::source_location& where = std::source_location::current());

/// Executes the command through the installed manager. Throws `std::runtime_error` for null, which
/// is how run-times refuse.
void execute(const UndoableCommand::Ptr& command);

/// Returns what `work` returns or, when it throws, `fallback`, with a complaint: no exception may
/// pass through Qt.
template <class Result, class Work>
Result attempt(const std::string& what, Result fallback, Work&& work,
               const std::source_location& where = std::source_location::current())
{
    try {
        return work();
    } catch (const std::exception& error) {
        complain(what, error.what(), where);
    } catch (...) {
        complain(what, "unknown exception", where);
    }
    return fallback;
}

/// The same for work without a result; whether it was done.
template <class Work>
bool attempt(const std::string& what, Work&& work,
             const std::source_location& where = std::source_location::current())
{
    return attempt(
        what, false,
        [&] {
            work();
            return true;
        },
        where);
}

} // namespace Kiv_v4::qt::detail
