#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Kiv_v4::memory {

struct Node;

/// The rows of the children of one parent, in blocks of bounded size, so that an insertion, a
/// removal and a query touch one block and, at worst, one number per block after it.
///
/// Invariants: no block is empty; a child's `rowBlock` is the id of its block; the blocks before
/// `_nbNumbered` know the row of their first child.
class SiblingRows
{
public:
    /// Lists the present children of `parent`.
    explicit SiblingRows(const Node& parent);

    [[nodiscard]] std::size_t size() const noexcept { return _size; }

    /// The child in a row, which must exist.
    [[nodiscard]] Node* at(std::size_t row) noexcept;

    /// The row of a child.
    [[nodiscard]] std::size_t rowOf(const Node& child) noexcept;

    /// Enters a child before a sibling, or last if that is null.
    void insert(Node& child, const Node* before);
    void erase(const Node& child) noexcept;

private:
    struct Block
    {
        std::uint32_t id;
        std::size_t firstRow;
        std::vector<Node*> children;
    };

    void append(Node& child);
    void split(std::size_t block);
    void renumberBlocks(std::size_t from) noexcept;
    void numberRows(std::size_t upTo) noexcept;
    [[nodiscard]] std::size_t blockOf(const Node& child) const noexcept;

    std::vector<Block> _blocks;
    std::vector<std::size_t> _places; ///< The places of the blocks in `_blocks`, by id.
    std::size_t _nbNumbered = 0;
    std::size_t _size = 0;
};

} // namespace Kiv_v4::memory
