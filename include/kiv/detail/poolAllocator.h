#pragma once

#include <cstddef>
#include <memory>

#include "kiv/export.h"

namespace Kiv_v4::detail {

/// Returns memory for one object of `size` bytes, aligned for any object of that size, which must
/// be released with the same size. Small cells of one size lie side by side without headers, in
/// slabs that go back to the system with their last cell, except for some kept for later. Main
/// thread only. Throws `std::bad_alloc`.
[[nodiscard]] KIV_EXPORT void* allocateCell(std::size_t size);
KIV_EXPORT void releaseCell(void* cell, std::size_t size) noexcept;

/// Single objects from the process-wide pool of their size. It has no state, so its memory outlives
/// the container that allocated it.
template <class T>
class PoolAllocator
{
public:
    using value_type = T;

    PoolAllocator() = default;

    template <class U>
    PoolAllocator(const PoolAllocator<U>&) noexcept
    {}

    [[nodiscard]] T* allocate(std::size_t count)
    {
        static_assert(alignof(T) <= alignof(std::max_align_t));
        return count == 1 ? static_cast<T*>(allocateCell(sizeof(T)))
                          : std::allocator<T>().allocate(count);
    }

    void deallocate(T* object, std::size_t count) noexcept
    {
        count == 1 ? releaseCell(object, sizeof(T)) : std::allocator<T>().deallocate(object, count);
    }

    template <class U>
    bool operator==(const PoolAllocator<U>&) const noexcept
    {
        return true;
    }
    template <class U>
    bool operator!=(const PoolAllocator<U>&) const noexcept
    {
        return false;
    }
};

} // namespace Kiv_v4::detail
