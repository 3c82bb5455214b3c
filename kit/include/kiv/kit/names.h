#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "kiv/export.h"

namespace Kiv_v4::kit {

/// Returns `name` with each run of characters of `unfit` and of control characters replaced by one
/// `_`; `_` for an empty name. Paths write the names with separators, so `unfit` should contain the
/// separators of the run-time and of path segments.
[[nodiscard]] KIV_EXPORT std::string fitName(const std::string& name, std::string_view unfit);

/// The names of siblings. It finds a free name at the same cost whether ten or a hundred thousand
/// of `cube1`, `cube2`, ... are taken. Keep one beside the children of a parent, and insert and
/// erase every name that is added and removed.
///
/// **Cost.** Logarithmic in the number of gaps between numbered names, for each operation.
class KIV_EXPORT NameIndex
{
public:
    /// Returns false if the name is already there.
    bool insert(const std::string& name);
    /// Returns false if the name is not there.
    bool erase(const std::string& name);

    /// Return whether the name is there, and the number of names.
    [[nodiscard]] bool contains(const std::string& name) const { return _names.count(name) != 0; }
    [[nodiscard]] std::size_t size() const noexcept { return _names.size(); }

    /// Returns the name that `Kiv_v4::uniqueName` returns if these names are taken. Does not insert
    /// it.
    [[nodiscard]] std::string uniqueName(const std::string& name) const;

private:
    using Runs = std::map<std::uint64_t, std::uint64_t>; // the first and last number of each

    std::unordered_set<std::string> _names;
    std::unordered_map<std::string, Runs> _runs; // by the name without its number
};

} // namespace Kiv_v4::kit
