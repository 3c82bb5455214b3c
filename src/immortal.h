#pragma once

#include <cstddef>
#include <new>
#include <type_traits>

namespace Kiv_v4::detail {

/// The one default-made T of the process, never destroyed: destructors of other static objects may
/// still use it. It is made in place, so that the first use needs no memory of its own.
template <class T>
T& immortal() noexcept(std::is_nothrow_default_constructible_v<T>)
{
    alignas(T) static std::byte place[sizeof(T)];
    static auto& made = *new (place) T;
    return made;
}

} // namespace Kiv_v4::detail
