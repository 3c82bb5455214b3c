#include "kiv/detail/poolAllocator.h"

#include <array>
#include <cstdint>
#include <new>

// Under the address sanitizer each cell comes from the heap, so that it sees stale uses.
#if defined(__SANITIZE_ADDRESS__)
#define KIV_PLAIN_HEAP 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KIV_PLAIN_HEAP 1
#endif
#endif

namespace Kiv_v4::detail {

namespace {

constexpr std::size_t kSlabAlignment = std::size_t{1} << 16U;
/// A little less than the alignment: the heap's own header fits between two slabs side by side.
constexpr std::size_t kSlabSize = kSlabAlignment - 64;
constexpr std::size_t kGrain = 8;
[[maybe_unused]] constexpr std::size_t kLargestCell = 256;

struct FreeCell
{
    FreeCell* next;
};

/// Cells of one size. It starts at a multiple of `kSlabAlignment`, so a cell's address leads to it.
struct alignas(64) Slab
{
    Slab* next = nullptr;
    Slab* previous = nullptr;
    FreeCell* freed = nullptr;
    char* untouched = nullptr; ///< The first cell that was never allocated.
    std::size_t taken = 0;

    static Slab& of(void* cell) noexcept
    {
        const auto address = reinterpret_cast<std::uintptr_t>(cell);
        return *reinterpret_cast<Slab*>(address & ~(kSlabAlignment - 1));
    }

    [[nodiscard]] bool full(std::size_t cellSize) const noexcept
    {
        const auto* const end = reinterpret_cast<const char*>(this) + kSlabSize;
        return !freed && static_cast<std::size_t>(end - untouched) < cellSize;
    }
};

/// Some slabs without used cells, so that filling and clearing a container again and again does not
/// go to the system each time.
class EmptySlabs
{
public:
    Slab* take()
    {
        auto* const kept = _first;
        void* memory = kept;
        if (kept) {
            _first = kept->next;
            --_count;
        } else {
            memory = ::operator new (kSlabSize, std::align_val_t{kSlabAlignment});
        }
        auto* const slab = new (memory) Slab;
        slab->untouched = static_cast<char*>(memory) + sizeof(Slab);
        return slab;
    }

    void keepOrFree(Slab& slab) noexcept
    {
        constexpr std::size_t kMost = 16;
        if (_count == kMost) {
            ::operator delete (&slab, std::align_val_t{kSlabAlignment});
            return;
        }
        slab.next = _first;
        _first = &slab;
        ++_count;
    }

private:
    Slab* _first = nullptr;
    std::size_t _count = 0;
};

constinit EmptySlabs emptySlabs;

/// The slabs of one cell size.
///
/// Invariants: the list holds exactly the slabs with room; none of them is empty, except possibly
/// the only one, which is kept so that allocating and releasing one cell again and again stays
/// cheap.
class Pool
{
public:
    void* take(std::size_t cellSize)
    {
        if (!_open) {
            link(*emptySlabs.take());
        }
        auto& slab = *_open;
        void* cell = slab.freed;
        if (cell) {
            slab.freed = slab.freed->next;
        } else {
            cell = slab.untouched;
            slab.untouched += cellSize;
        }
        ++slab.taken;
        if (slab.full(cellSize)) {
            unlink(slab);
        }
        return cell;
    }

    void giveBack(void* cell, std::size_t cellSize) noexcept
    {
        auto& slab = Slab::of(cell);
        const auto wasFull = slab.full(cellSize);
        slab.freed = new (cell) FreeCell{slab.freed};
        --slab.taken;
        if (wasFull) {
            link(slab);
        }
        if (slab.taken == 0 && (slab.next || slab.previous)) {
            unlink(slab);
            emptySlabs.keepOrFree(slab);
        }
    }

private:
    void link(Slab& slab) noexcept
    {
        slab.next = _open;
        if (_open) {
            _open->previous = &slab;
        }
        _open = &slab;
    }

    void unlink(Slab& slab) noexcept
    {
        (slab.previous ? slab.previous->next : _open) = slab.next;
        if (slab.next) {
            slab.next->previous = slab.previous;
        }
        slab.next = slab.previous = nullptr;
    }

    Slab* _open = nullptr;
};

constexpr std::size_t roundedUp(std::size_t size) noexcept
{
    return (size + kGrain - 1) / kGrain * kGrain;
}

/// The pool of the size; null if cells of this size come from the heap. Pools are never destroyed:
/// objects held by other static objects outlive every order of destruction.
Pool* poolOf([[maybe_unused]] std::size_t cellSize) noexcept
{
#if KIV_PLAIN_HEAP
    return nullptr;
#else
    static constinit std::array<Pool, kLargestCell / kGrain + 1> pools;
    return cellSize <= kLargestCell ? &pools[cellSize / kGrain] : nullptr;
#endif
}

} // namespace

void* allocateCell(std::size_t size)
{
    const auto cellSize = roundedUp(size);
    auto* const pool = poolOf(cellSize);
    return pool ? pool->take(cellSize) : ::operator new(cellSize);
}

void releaseCell(void* cell, std::size_t size) noexcept
{
    const auto cellSize = roundedUp(size);
    if (auto* const pool = poolOf(cellSize)) {
        pool->giveBack(cell, cellSize);
    } else {
        ::operator delete(cell);
    }
}

} // namespace Kiv_v4::detail
