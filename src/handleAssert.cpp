#include "kiv/handleAssert.h"

#include <iostream>
#include <utility>

#include "detail/sourceLines.h"

namespace Kiv_v4 {

AssertionException::AssertionException(std::string message) : _message(std::move(message)) {}

AssertionException::~AssertionException() = default;

const char* AssertionException::what() const noexcept
{
    return _message.c_str();
}

void handleAssert(const char* function, const char* file, int line, const char* expression,
                  const char* description)
{
    auto message = std::string("Assertion failed: \"") + expression + "\"\n" +
                   detail::sourceLines(function, file, line);
    if (description) {
        message += std::string("\tDescription: ") + description + "\n";
    }
    std::cerr << message << std::flush;
    throw AssertionException(std::move(message));
}

} // namespace Kiv_v4
