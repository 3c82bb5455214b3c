#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Kiv_v4::assimp {

/// Turns the names that nodes have in a file, any bytes, into components that a path string holds
/// unharmed: not empty; valid UTF-8 without control characters, component separator and the
/// characters of the path segment separator; no two the same among siblings.
///
/// A name that is fit already is kept by the first sibling that has it, whatever the others are
/// called.
class ComponentNames
{
public:
    struct Sibling
    {
        std::string_view name;    ///< As it is in the file.
        std::string_view standIn; ///< What it is called when it has no name; not empty.
    };

    explicit ComponentNames(const std::string& segmentSeparator);

    /// One component per sibling, in order. Linear in the number of siblings.
    [[nodiscard]] std::vector<std::string> ofSiblings(const std::vector<Sibling>& siblings) const;

private:
    [[nodiscard]] std::string fit(std::string_view name) const;
    [[nodiscard]] bool isForbidden(std::string_view codePoint) const;

    const std::string _segmentSeparator;
    std::vector<std::string> _forbidden; ///< The separators' characters.
    char _filler;                        ///< Stands for what a name must not hold.
};

} // namespace Kiv_v4::assimp
