#include "shell/commands/numbers.h"

#include <charconv>
#include <stdexcept>
#include <system_error>
#include <type_traits>

namespace app::shell {

namespace host = Kiv_v4::host;

namespace {

template <class T>
void readNumber(std::span<const std::string> words, T& value, const char* kind)
{
    requireCount(words, 1);
    const auto& word = words.front();
    const auto* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error == std::errc::result_out_of_range) {
        throw std::runtime_error("'" + word + "' is out of range");
    }
    if (error != std::errc() || stop != end) {
        throw std::runtime_error(std::string("not a ") + kind + ": '" + word + "'");
    }
}

} // namespace

void requireCount(std::span<const std::string> words, std::size_t count)
{
    if (words.size() != count) {
        throw std::runtime_error("expected " + std::to_string(count) +
                                 (count == 1 ? " value" : " values") + ", not " +
                                 std::to_string(words.size()));
    }
}

void read(std::span<const std::string> words, int& value)
{
    readNumber(words, value, "whole number");
}

void read(std::span<const std::string> words, float& value)
{
    readNumber(words, value, "number");
}

void read(std::span<const std::string> words, double& value)
{
    readNumber(words, value, "number");
}

void read(std::span<const std::string> words, bool& value)
{
    requireCount(words, 1);
    const auto& word = words.front();
    const auto isYes = word == "true" || word == "yes" || word == "on" || word == "1";
    const auto isNo = word == "false" || word == "no" || word == "off" || word == "0";
    if (!isYes && !isNo) {
        throw std::runtime_error("'" + word + "' is neither yes nor no");
    }
    value = isYes;
}

void read(std::span<const std::string> words, std::string& value)
{
    requireCount(words, 1);
    value = words.front();
}

host::PropertyValue valueLike(const host::PropertyValue& kind, std::span<const std::string> words)
{
    return std::visit(
        [&words]<class T>(const T&) -> host::PropertyValue {
            if constexpr (std::is_same_v<T, std::monostate>) {
                throw std::invalid_argument("a value of no type");
            } else {
                return valueOf<T>(words);
            }
        },
        kind);
}

} // namespace app::shell
