#pragma once

#include <exception>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4 {

/// A failed internal check. The message names the expression and its place in the source.
class KIV_EXPORT AssertionException : public std::exception
{
public:
    explicit AssertionException(std::string message);
    AssertionException(const AssertionException&) = default;
    ~AssertionException() override;

    /// The expression, its place in the source, and the description.
    [[nodiscard]] const char* what() const noexcept override;

private:
    std::string _message;
};

/// Reports that `expression` did not hold: writes the expression, then a line each for file, line,
/// function and, unless it is null, `description` to the standard error stream, and throws an
/// `AssertionException` with the same text.
[[noreturn]] KIV_EXPORT void handleAssert(const char* function, const char* file, int line,
                                          const char* expression, const char* description);

} // namespace Kiv_v4
