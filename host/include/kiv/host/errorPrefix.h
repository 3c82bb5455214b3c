#pragma once

#include <exception>
#include <stdexcept>
#include <string>

namespace Kiv_v4::host {

/// Returns what `work` returns. When it throws a `std::exception`, throws an `Error` instead, with
/// the message behind `prefix` and a colon: what a user reads begins with the file, line or item
/// that it is about. Exceptions of the classes `Passing` pass through as they are.
template <class Error = std::runtime_error, class... Passing, class Work>
decltype(auto) prefixed(const std::string& prefix, Work&& work)
{
    try {
        return work();
    } catch (const std::exception& error) {
        if ((dynamic_cast<const Passing*>(&error) || ...)) {
            throw;
        }
        throw Error(prefix + ": " + error.what());
    }
}

} // namespace Kiv_v4::host
