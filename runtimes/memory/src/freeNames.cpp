#include "freeNames.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "kiv/uniqueName.h"

#include "itemNames.h"
#include "memoryTree.h"

namespace Kiv_v4::memory {

namespace {

/// A name with a number that counts up as an integer; 0 for none.
struct Numbered
{
    std::string_view stem;
    std::uint64_t number = 0;
};

/// `std::nullopt` for a number with leading zeros, which counting keeps, or with too many digits.
std::optional<Numbered> numbered(std::string_view name) noexcept
{
    constexpr std::size_t kMostDigits = 19;
    const auto nbOthers = name.find_last_not_of("0123456789") + 1;
    const auto digits = name.substr(nbOthers);
    if (digits.size() > kMostDigits || (digits.size() > 1 && digits.front() == '0')) {
        return std::nullopt;
    }
    Numbered parts{name.substr(0, nbOthers), 0};
    std::from_chars(digits.data(), digits.data() + digits.size(), parts.number);
    return parts;
}

std::string joined(std::string_view stem, std::uint64_t number)
{
    return std::string(stem) + std::to_string(number);
}

/// Names with higher numbers are counted up as texts, so that no run leads to a number with more
/// digits than `numbered` reads.
constexpr std::uint64_t kLastCounted = 999'999'999'999'999'998;

/// Checks without interning names that no item has.
bool isTaken(Tree& tree, const Node& parent, const std::string& name)
{
    return PathComponent::exists(name) && tree.child(parent, name);
}

} // namespace

PathComponent FreeNames::find(Tree& tree, const Node& parent, const std::string& name,
                              const std::vector<PathComponent>& freed)
{
    const auto isFree = [&](const std::string& candidate) {
        const auto bears = [&](const auto& other) { return other.string() == candidate; };
        return !isTaken(tree, parent, candidate) || std::any_of(freed.begin(), freed.end(), bears);
    };
    const auto wanted = validName(name);
    if (isFree(wanted)) {
        return wanted;
    }
    const auto parts = numbered(wanted);
    if (!parts || parts->number > kLastCounted) {
        return uniqueName(wanted, [&](const auto& candidate) { return !isFree(candidate); });
    }
    auto number = firstFree(tree, parent, parts->stem, parts->number + 1);
    for (const auto& other : freed) {
        const auto known = numbered(other.string());
        if (known && known->stem == parts->stem && known->number > parts->number) {
            number = std::min(number, known->number);
        }
    }
    return joined(parts->stem, number);
}

void FreeNames::left(const Node& parent, const PathComponent& name) noexcept
{
    const auto runs = _runs.find(&parent);
    const auto parts = runs == _runs.end() ? std::nullopt : numbered(name.string());
    if (!parts) {
        return;
    }
    const auto run = runs->second.find(parts->stem);
    if (run != runs->second.end() && parts->number >= run->second.first) {
        run->second.end = std::min(run->second.end, parts->number);
    }
}

void FreeNames::forget(const Node& parent) noexcept
{
    if (!_runs.empty()) {
        _runs.erase(&parent);
    }
}

std::uint64_t FreeNames::firstFree(Tree& tree, const Node& parent, std::string_view stem,
                                   std::uint64_t from)
{
    auto& run = _runs[&parent].try_emplace(std::string(stem), Run{from, from}).first->second;
    if (from < run.first || from > run.end) {
        run = {from, from};
    }
    while (isTaken(tree, parent, joined(stem, run.end))) {
        ++run.end;
    }
    return run.end;
}

} // namespace Kiv_v4::memory
