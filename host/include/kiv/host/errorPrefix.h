#pragma once

#include <exception>
#include <stdexcept>
#include <string>

namespace Kiv_v4::host {

/// Returns the result of `work`. If that throws a `std::exception`, throws an `Error` instead, with
/// `prefix` and a colon before the message, so that messages begin with the file, line or item that
/// they are about. Exceptions of the classes `Passing` pass through unchanged.
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
