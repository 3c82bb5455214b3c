#pragma once

#include <string>
#include <utility>
#include <vector>

namespace Kiv_v4 {

/// One named flag of the filter that decides which children a hierarchy lists.
struct ChildFilterFlag
{
    /// Takes the fields in order.
    ChildFilterFlag(std::string flagName, std::string flagLabel, bool isSet)
        : name(std::move(flagName)), label(std::move(flagLabel)), value(isSet)
    {}

    std::string name;  ///< The flag's key.
    std::string label; ///< The text shown to a user.
    bool value;        ///< Whether the flag is set.
};

/// The flags that an item's run-time knows; a flag that is left out has its default value.
using ChildFilter = std::vector<ChildFilterFlag>;

} // namespace Kiv_v4
