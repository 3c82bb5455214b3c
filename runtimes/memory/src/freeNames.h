#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kiv/pathComponent.h"

namespace Kiv_v4::memory {

class Tree;
struct Node;

/// Finds names that are free among siblings. It remembers, per parent and stem (the name without
/// the number at its end), a run of numbers that are all taken, so that making a thousand items of
/// one name does not count to a thousand a thousand times.
class FreeNames
{
public:
    /// `name`, made valid for an item and free among the children of `parent`. The names in `freed`
    /// count as free.
    [[nodiscard]] PathComponent find(Tree& tree, const Node& parent, const std::string& name,
                                     const std::vector<PathComponent>& freed);

    /// Must be called when a child leaves its parent or its name, and when a parent is destroyed.
    void left(const Node& parent, const PathComponent& name) noexcept;
    void forget(const Node& parent) noexcept;

private:
    /// The numbers from `first` up to, but not including, `end`.
    struct Run
    {
        std::uint64_t first;
        std::uint64_t end;
    };
    using Runs = std::map<std::string, Run, std::less<>>;

    [[nodiscard]] std::uint64_t firstFree(Tree& tree, const Node& parent, std::string_view stem,
                                          std::uint64_t from);

    std::unordered_map<const Node*, Runs> _runs;
};

} // namespace Kiv_v4::memory
