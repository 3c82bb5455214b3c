#include "componentNames.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "kiv/assimp/runTime.h"
#include "kiv/uniqueName.h"

namespace Kiv_v4::assimp {

namespace {

/// The length of the character that a lead byte announces, in bytes; 0 if it is not a lead byte.
std::size_t announcedSize(unsigned char lead) noexcept
{
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC0 || lead > 0xF7) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

struct CodePoint
{
    std::size_t size;    ///< In bytes.
    bool isText = false; ///< Whether it is valid UTF-8 and not a control character.
};

/// The first code point of `text`; an invalid byte counts as one.
CodePoint firstOf(std::string_view text) noexcept
{
    const auto lead = static_cast<unsigned char>(text.front());
    const auto size = announcedSize(lead);
    if (size == 0 || size > text.size()) {
        return {1};
    }
    auto value = static_cast<std::uint32_t>(size == 1 ? lead : lead & (0x7FU >> size));
    for (const auto c : text.substr(1, size - 1)) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0U) != 0x80U) {
            return {1};
        }
        value = value << 6U | (byte & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    const auto isSurrogate = value >= 0xD800 && value < 0xE000;
    if (value < kSmallest[size] || value > 0x10FFFF || isSurrogate) {
        return {1};
    }
    return {size, value >= 0x20 && !(value >= 0x7F && value < 0xA0)};
}

/// The code points of `text`.
std::vector<std::string> codePoints(std::string_view text)
{
    std::vector<std::string> points;
    while (!text.empty()) {
        points.emplace_back(text.substr(0, firstOf(text).size));
        text.remove_prefix(points.back().size());
    }
    return points;
}

/// Assigns the components of one node's children.
class TakenNames
{
public:
    explicit TakenNames(const std::string& segmentSeparator) : _segmentSeparator(segmentSeparator)
    {}

    /// Returns false if the name is already taken.
    bool take(const std::string& name) { return _taken.insert(name).second; }

    /// Takes `name` with a number that makes it unique, if it needs one.
    std::string takeUnique(const std::string& name)
    {
        // Counting continues where it ended, so that the cost of many siblings of one name is not
        // quadratic.
        auto& last = _last.try_emplace(name, name).first->second;
        last = uniqueName(last, [this](const std::string& candidate) {
            return _taken.count(candidate) != 0 ||
                   candidate.find(_segmentSeparator) != std::string::npos;
        });
        _taken.insert(last);
        return last;
    }

private:
    const std::string& _segmentSeparator;
    std::unordered_set<std::string> _taken;
    std::unordered_map<std::string, std::string> _last; ///< The last name made from each name.
};

/// A character that is in no separator.
char fillerBeside(const std::string& segmentSeparator)
{
    constexpr std::string_view kFillers = "_-.~x";
    return kFillers[std::min(kFillers.find_first_not_of(segmentSeparator), kFillers.size() - 1)];
}

} // namespace

ComponentNames::ComponentNames(const std::string& segmentSeparator)
    : _segmentSeparator(segmentSeparator), _forbidden(codePoints(segmentSeparator)),
      _filler(fillerBeside(segmentSeparator))
{
    _forbidden.emplace_back(1, RunTime::kSeparator);
}

std::vector<std::string> ComponentNames::ofSiblings(const std::vector<Sibling>& siblings) const
{
    std::vector<std::string> components(siblings.size());
    TakenNames taken(_segmentSeparator);
    std::vector<std::size_t> changed;
    for (std::size_t i = 0; i < siblings.size(); ++i) {
        const auto& [name, standIn] = siblings[i];
        components[i] = fit(name.empty() ? standIn : name);
        if (components[i] != name || !taken.take(components[i])) {
            changed.push_back(i);
        }
    }
    for (const auto i : changed) {
        components[i] = taken.takeUnique(components[i]);
    }
    return components;
}

std::string ComponentNames::fit(std::string_view name) const
{
    std::string component;
    component.reserve(name.size());
    while (!name.empty()) {
        const auto [size, isText] = firstOf(name);
        if (isText && !isForbidden(name.substr(0, size))) {
            component += name.substr(0, size);
        } else {
            component += _filler;
        }
        name.remove_prefix(size);
    }
    return component;
}

bool ComponentNames::isForbidden(std::string_view codePoint) const
{
    return std::any_of(_forbidden.begin(), _forbidden.end(), [codePoint](const auto& forbidden) {
        return codePoint.find(forbidden) != std::string_view::npos;
    });
}

} // namespace Kiv_v4::assimp
