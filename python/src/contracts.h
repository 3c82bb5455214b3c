#pragma once

#include <cstddef>

namespace bound {

/// The contract of one public name of the C++ headers, in Python's words.
struct Contract
{
    const char* key;
    const char* text; ///< Empty for what needs none.
};

/// Sorted by key; written by scripts/contracts.py.
extern const Contract kContracts[];
extern const std::size_t kNbContracts;

} // namespace bound
