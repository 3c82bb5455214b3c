#include "kiv/uniqueName.h"

#include <algorithm>

namespace Kiv_v4 {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Adds one to a decimal number of any length; an empty text counts as 0.
std::string countedUp(std::string number)
{
    for (auto digit = number.rbegin(); digit != number.rend(); ++digit) {
        if (*digit != '9') {
            ++*digit;
            return number;
        }
        *digit = '0';
    }
    return "1" + number;
}

} // namespace

std::string uniqueName(const std::string& name,
                       const std::function<bool(const std::string&)>& isTaken)
{
    const auto digits = std::find_if_not(name.rbegin(), name.rend(), isDigit).base();
    const std::string stem(name.begin(), digits);
    std::string number(digits, name.end());
    auto candidate = name;
    while (isTaken(candidate)) {
        number = countedUp(std::move(number));
        candidate = stem + number;
    }
    return candidate;
}

} // namespace Kiv_v4
