#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kiv/pathComponent.h"

namespace Kiv_v4::memory {

struct Node;

/// The nodes of a tree by parent and name: open addressing with linear probing. A slot keeps its
/// node's hash, so that a search hardly ever reads another node.
///
/// Invariants: the number of slots is 0 or a power of two, and more than a third of them are free;
/// no free slot lies between a node's home slot (the top bits of its hash) and its own.
class ChildIndex
{
public:
    /// The child of that name; null if there is none.
    [[nodiscard]] Node* find(const Node& parent, const PathComponent& name) const noexcept;

    /// Makes room, so that the next `count` insertions do not throw.
    void reserve(std::size_t count);

    /// Enters a node, in the reserved room, as a child of `parent` under its present name.
    void insert(Node& node, const Node& parent) noexcept;

    /// Removes a node that was entered under its present parent and name.
    void erase(const Node& node) noexcept;

private:
    struct Slot
    {
        std::uint64_t hash;
        Node* node; ///< Null in a free slot.
    };

    [[nodiscard]] std::size_t home(std::uint64_t hash) const noexcept;
    [[nodiscard]] std::size_t next(std::size_t slot) const noexcept
    {
        return (slot + 1) & (_slots.size() - 1);
    }
    void place(Slot entry) noexcept;

    std::vector<Slot> _slots;
    std::size_t _size = 0;
    unsigned _shift = 64; ///< 64 minus the logarithm of the number of slots.
};

} // namespace Kiv_v4::memory
