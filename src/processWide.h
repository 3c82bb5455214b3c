#pragma once

#include <memory>
#include <stdexcept>
#include <utility>

#include "immortal.h"

namespace Kiv_v4::detail {

/// The one T of the process, made on first use. What it holds is dropped when the library is
/// unloaded or the process ends; its storage stays, so that whoever asks later, such as the
/// destructor of another static object, finds it empty instead of dead.
template <class T>
T& processWide()
{
    static auto& value = immortal<T>();
    struct Drop
    {
        ~Drop() { const auto dropped = std::exchange(value, T()); }
    };
    static const Drop drop;
    return value;
}

/// Fills or, with null, clears the place of an object that a host supplies once for the process.
/// Throws `std::invalid_argument` with `refusal` when the place is taken.
template <class T>
void install(const std::shared_ptr<T>& object, const char* refusal)
{
    auto& place = processWide<std::shared_ptr<T>>();
    if (object && place) {
        throw std::invalid_argument(refusal);
    }
    place = object;
}

} // namespace Kiv_v4::detail
