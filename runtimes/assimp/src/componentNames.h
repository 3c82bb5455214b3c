#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Kiv_v4::assimp {

/// Turns the names of nodes in a file, which may contain any bytes, into components that are safe
/// in path strings: not empty; valid UTF-8 without control characters, component separator and the
/// characters of the path segment separator; unique among siblings.
///
/// The first sibling with a valid name keeps it, whatever the names of the others.
class ComponentNames
{
public:
    struct Sibling
    {
        std::string_view name;    ///< The name in the file.
        std::string_view standIn; ///< The name if there is none in the file; not empty.
    };

    explicit ComponentNames(const std::string& segmentSeparator);

    /// One component per sibling, in order. Linear in the number of siblings.
    [[nodiscard]] std::vector<std::string> ofSiblings(const std::vector<Sibling>& siblings) const;

private:
    [[nodiscard]] std::string fit(std::string_view name) const;
    [[nodiscard]] bool isForbidden(std::string_view codePoint) const;

    const std::string _segmentSeparator;
    std::vector<std::string> _forbidden; ///< The separators' characters.
    char _filler;                        ///< Replaces forbidden characters.
};

} // namespace Kiv_v4::assimp
