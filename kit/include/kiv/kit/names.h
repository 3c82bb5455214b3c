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

/// `name` without the characters of `unfit` and without control characters, each run of which
/// becomes one `_`; `_` for an empty name. Paths of items are told apart by names alone and are
/// written with separators, so give the separators of the run-time and of path segments.
[[nodiscard]] KIV_EXPORT std::string fitName(const std::string& name, std::string_view unfit);

/// The names of siblings, which gives a free name at the same cost whether ten or a hundred
/// thousand of `cube1`, `cube2`, ... are taken. Keep one beside the children of a parent, and tell
/// it of every name that comes and goes.
///
/// **Cost.** Logarithmic in the number of gaps between numbered names, for each operation.
class KIV_EXPORT NameIndex
{
public:
    /// False when the name is there already.
    bool insert(const std::string& name);
    /// False when the name is not there.
    bool erase(const std::string& name);

    /// Returns whether the name is there, and how many there are.
    [[nodiscard]] bool contains(const std::string& name) const { return _names.count(name) != 0; }
    [[nodiscard]] std::size_t size() const noexcept { return _names.size(); }

    /// The name that `Kiv_v4::uniqueName` gives when these names are taken. It is not inserted.
    [[nodiscard]] std::string uniqueName(const std::string& name) const;

private:
    using Runs = std::map<std::uint64_t, std::uint64_t>; // the first and last number of each

    std::unordered_set<std::string> _names;
    std::unordered_map<std::string, Runs> _runs; // by the name without its number
};

} // namespace Kiv_v4::kit
