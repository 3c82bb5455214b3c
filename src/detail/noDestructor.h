#pragma once

#include <cstddef>
#include <new>
#include <type_traits>

namespace Kiv_v4::detail {

/// Holds a T that is made with its holder and never destroyed: as a static object it serves the
/// destructors of other static objects, whatever their order. The T lies in the holder, so that
/// making it needs no memory of its own.
template <class T>
class NoDestructor
{
public:
    NoDestructor() noexcept(std::is_nothrow_default_constructible_v<T>) { new (_place) T(); }

    NoDestructor(const NoDestructor&) = delete;
    NoDestructor& operator=(const NoDestructor&) = delete;

    [[nodiscard]] T& operator*() noexcept { return *std::launder(reinterpret_cast<T*>(_place)); }

private:
    alignas(T) std::byte _place[sizeof(T)];
};

} // namespace Kiv_v4::detail
