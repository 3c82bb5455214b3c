#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include "kiv/detail/poolAllocator.h"
#include "kiv/pathComponent.h"

namespace Kiv_v4::detail {

/// The children of one trie node by component: open addressing with linear probing, the component
/// and the child side by side, so that stepping to a child costs one run of slots and no reference
/// count. `Node` must give this class access to its `_children`.
///
/// Invariants:
/// - the number of slots is 0 or a power of two, and at least three eighths of them are free;
/// - more than an eighth of them are taken, except in the smallest tables and when memory runs out,
///   so that visiting all children is linear in their number, whatever it was before;
/// - no free slot lies between a child's home slot (the top bits of its mixed record address) and
///   its own slot, which erasing keeps by shifting later children back.
///
/// The destructor drops whole subtrees without recursion and without allocating.
template <class Node>
class ChildTable
{
public:
    using Ptr = std::shared_ptr<Node>;

    struct Slot
    {
        PathComponent component;
        Ptr node; ///< Null in a free slot.
    };

    ChildTable() = default;
    ChildTable(const ChildTable&) = delete;
    ChildTable& operator=(const ChildTable&) = delete;
    ~ChildTable() { clear(); }

    [[nodiscard]] std::size_t size() const noexcept { return _size; }

    /// The child under that component, without shared ownership; null if there is none.
    [[nodiscard]] Node* find(const PathComponent& component) const noexcept
    {
        const auto* const slot = slotOf(component);
        return slot ? slot->node.get() : nullptr;
    }

    /// The same with shared ownership.
    [[nodiscard]] Ptr get(const PathComponent& component) const noexcept
    {
        const auto* const slot = slotOf(component);
        return slot ? slot->node : nullptr;
    }

    template <class Visitor>
    void forEach(Visitor visit) const
    {
        for (std::size_t i = 0; i < capacity(); ++i) {
            if (_slots[i].node) {
                visit(_slots[i]);
            }
        }
    }

    /// Makes room for one more child, so that the next `put` does not throw.
    void reserveOne()
    {
        if ((size() + 1) * 8 > capacity() * 5) {
            resize(_slots ? _shift - 1U : 63U);
        }
    }

    /// Stores the child in the reserved room, replacing one of the same component. Returns the
    /// replaced child.
    Ptr put(const PathComponent& component, Ptr node) noexcept
    {
        auto& slot = _slots[slotOf(component) - _slots];
        if (!slot.node) {
            slot.component = component;
            ++_size;
        }
        std::swap(slot.node, node);
        return node;
    }

    /// Erases and returns the child under that component; null if there is none. Keeps room for one
    /// more.
    Ptr take(const PathComponent& component) noexcept
    {
        const auto* const slot = slotOf(component);
        if (!slot || !slot->node) {
            return nullptr;
        }
        auto hole = static_cast<std::size_t>(slot - _slots);
        auto taken = std::move(_slots[hole].node);
        for (auto i = next(hole); _slots[i].node; i = next(i)) {
            if (distance(home(_slots[i].component), i) >= distance(hole, i)) {
                _slots[hole] = std::move(_slots[i]);
                hole = i;
            }
        }
        _slots[hole] = Slot();
        --_size;
        shrink();
        return taken;
    }

    /// Drops the children, and their descendants that only this table holds.
    void clear() noexcept
    {
        auto* doomed = release();
        while (doomed) {
            auto* slot = slotsOf(doomed);
            auto* const end = slot + doomed->capacity;
            auto* later = doomed->later;
            for (; slot != end; ++slot) {
                // A child that goes with its slot leaves its own children to this loop.
                if (slot->node.use_count() == 1) {
                    if (auto* const below = slot->node->_children.release()) {
                        below->later = later;
                        later = below;
                    }
                }
                slot->~Slot();
            }
            releaseCell(doomed, sizeOf(doomed->capacity));
            doomed = later;
        }
    }

private:
    /// The head of the slots' memory.
    struct Block
    {
        std::size_t capacity;
        Block* later; ///< Links blocks whose children are being dropped.
    };
    static_assert(sizeof(Block) % alignof(Slot) == 0);

    static constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15;

    [[nodiscard]] static std::size_t sizeOf(std::size_t capacity) noexcept
    {
        return sizeof(Block) + capacity * sizeof(Slot);
    }

    [[nodiscard]] static Slot* slotsOf(Block* block) noexcept
    {
        return reinterpret_cast<Slot*>(block + 1);
    }

    /// The slot of that component; null or a free slot if there is none.
    [[nodiscard]] const Slot* slotOf(const PathComponent& component) const noexcept
    {
        if (!_slots) {
            return nullptr;
        }
        const auto* slot = _slots + home(component);
        // A free slot has no component, and neither may a child.
        while (slot->component != component && slot->node) {
            slot = _slots + next(static_cast<std::size_t>(slot - _slots));
        }
        return slot;
    }

    [[nodiscard]] std::size_t capacity() const noexcept
    {
        return _slots ? std::size_t{1} << (64U - _shift) : 0;
    }

    [[nodiscard]] std::size_t mask() const noexcept { return ~std::uint64_t{0} >> _shift; }

    /// Records of consecutive names lie at regular distances; the product's top bits scatter them.
    /// The record is not read.
    [[nodiscard]] std::size_t home(const PathComponent& component) const noexcept
    {
        const auto record = reinterpret_cast<std::uintptr_t>(&component.string());
        return static_cast<std::size_t>((record * kMix) >> _shift);
    }

    [[nodiscard]] std::size_t next(std::size_t index) const noexcept
    {
        return (index + 1) & mask();
    }

    [[nodiscard]] std::size_t distance(std::size_t from, std::size_t to) const noexcept
    {
        return (to - from) & mask();
    }

    void shrink() noexcept
    {
        if (capacity() < 16 || size() * 8 > capacity()) {
            return;
        }
        try {
            resize(_shift + 1U);
        } catch (const std::bad_alloc&) {
            // The large table still works.
        }
    }

    /// Moves the children into a table of another shift, which must have room for them.
    void resize(unsigned shift)
    {
        const auto capacity = std::size_t{1} << (64U - shift);
        auto* const memory = allocateCell(sizeOf(capacity));
        auto* const table = slotsOf(new (memory) Block{capacity, nullptr});
        for (std::size_t i = 0; i < capacity; ++i) {
            new (table + i) Slot;
        }
        auto* const old = release();
        _slots = table;
        _shift = static_cast<std::uint8_t>(shift);
        if (old) {
            moveIn(old);
        }
    }

    void moveIn(Block* old) noexcept
    {
        auto* slot = slotsOf(old);
        for (auto* const end = slot + old->capacity; slot != end; ++slot) {
            if (slot->node) {
                auto i = home(slot->component);
                while (_slots[i].node) {
                    i = next(i);
                }
                _slots[i].component = std::move(slot->component);
                _slots[i].node = std::move(slot->node);
                ++_size;
            }
            slot->~Slot();
        }
        releaseCell(old, sizeOf(old->capacity));
    }

    /// Returns the slots, which the caller then owns, and leaves the table empty.
    Block* release() noexcept
    {
        _size = 0;
        auto* const first = std::exchange(_slots, nullptr);
        return first ? reinterpret_cast<Block*>(first) - 1 : nullptr;
    }

    Slot* _slots = nullptr;
    std::uint32_t _size = 0;
    std::uint8_t _shift = 64; ///< 64 minus the logarithm of the number of slots.
};

} // namespace Kiv_v4::detail
