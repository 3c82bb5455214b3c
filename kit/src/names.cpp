#include "kiv/kit/names.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

#include "kiv/uniqueName.h"

namespace Kiv_v4::kit {

namespace {

/// A name that ends in a number as `std::to_string` writes it.
struct Numbered
{
    std::string stem;
    std::uint64_t number;
};

/// `std::nullopt` if there is no number, or one with leading zeros or too many digits to count.
std::optional<Numbered> numbered(const std::string& name)
{
    constexpr auto mostDigits = 18;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto digits = std::find_if_not(name.rbegin(), name.rend(), isDigit).base();
    const auto count = name.end() - digits;
    if (count == 0 || count > mostDigits || (*digits == '0' && count > 1)) {
        return std::nullopt;
    }
    Numbered result{{name.begin(), digits}, 0};
    std::from_chars(name.data() + result.stem.size(), name.data() + name.size(), result.number);
    return result;
}

} // namespace

std::string fitName(const std::string& name, std::string_view unfit)
{
    const auto isUnfit = [&](char c) {
        const auto code = static_cast<unsigned char>(c);
        return code < 0x20 || code == 0x7F || unfit.find(c) != std::string_view::npos;
    };
    const auto filler = isUnfit('_') ? '-' : '_';
    std::string fit;
    auto wasUnfit = false;
    for (const auto c : name) {
        const auto drops = isUnfit(c);
        if (!drops || !wasUnfit) {
            fit += drops ? filler : c;
        }
        wasUnfit = drops;
    }
    return fit.empty() ? std::string(1, filler) : fit;
}

bool NameIndex::insert(const std::string& name)
{
    if (!_names.insert(name).second) {
        return false;
    }
    if (const auto split = numbered(name)) {
        auto& runs = _runs[split->stem];
        auto first = split->number;
        auto last = split->number;
        const auto after = runs.upper_bound(first);
        if (after != runs.end() && after->first == last + 1) {
            last = after->second;
        }
        if (after != runs.begin() && std::prev(after)->second + 1 == first) {
            first = std::prev(after)->first;
        }
        if (last != split->number) {
            runs.erase(after);
        }
        runs[first] = last;
    }
    return true;
}

bool NameIndex::erase(const std::string& name)
{
    if (_names.erase(name) == 0) {
        return false;
    }
    if (const auto split = numbered(name)) {
        const auto runs = _runs.find(split->stem);
        const auto run = std::prev(runs->second.upper_bound(split->number));
        const auto [first, last] = *run;
        if (last != split->number) {
            runs->second[split->number + 1] = last;
        }
        if (first == split->number) {
            runs->second.erase(run);
        } else {
            run->second = split->number - 1;
        }
        if (runs->second.empty()) {
            _runs.erase(runs);
        }
    }
    return true;
}

std::string NameIndex::uniqueName(const std::string& name) const
{
    // Tries one name of each run, so this ends after the first run or soon after it.
    auto candidate = name;
    while (contains(candidate)) {
        if (const auto split = numbered(candidate)) {
            const auto& runs = _runs.at(split->stem);
            candidate =
                split->stem + std::to_string(std::prev(runs.upper_bound(split->number))->second);
        }
        candidate =
            Kiv_v4::uniqueName(candidate, [&](const auto& tried) { return tried == candidate; });
    }
    return candidate;
}

} // namespace Kiv_v4::kit
