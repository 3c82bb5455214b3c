#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <vector>

#include "kiv/detail/poolAllocator.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::detail {

using SelectedItems = std::list<SceneItem::Ptr, PoolAllocator<SceneItem::Ptr>>;

/// The positions in a list of the items of paths: open addressing with linear probing. Paths count
/// as equal if their components are, whatever their segments, as in a trie.
///
/// Invariants:
/// - the number of entries is 0 or a power of two, and at least a fifth of them are free;
/// - no free entry lies between an entry's home (the top bits of its mixed hash) and its own place,
///   which erasing keeps by shifting later entries back;
/// - the items keep the bodies that the entries point to.
class PathTable
{
public:
    using Position = SelectedItems::const_iterator;

    struct Entry
    {
        const PathBody* body; ///< That of the item's path and its copies; null for the empty path.
        Position position;
    };

    /// A path's place in the table; valid until the next change.
    using Index = std::size_t;
    static constexpr Index kNowhere = ~Index{0};

    PathTable() = default;
    PathTable(const PathTable&) = delete;
    PathTable(PathTable&& other) noexcept;
    ~PathTable() = default;
    PathTable& operator=(const PathTable&) = delete;
    PathTable& operator=(PathTable&& other) noexcept;

    /// The place of the path's entry; `kNowhere` if there is none.
    [[nodiscard]] Index find(const Path& path) const noexcept;

    [[nodiscard]] Position position(Index index) const noexcept { return _entries[index].position; }

    /// Makes room for `count` entries altogether. Strong guarantee.
    void reserve(std::size_t count);

    /// The place of the path's entry or, if there is none, the free place for it in the reserved
    /// room.
    [[nodiscard]] Index place(const Path& path) const noexcept;
    [[nodiscard]] bool free(Index index) const noexcept { return _hashes[index] == kFree; }

    /// Enters the item at `position` in the free place of its path.
    void fill(Index index, Position position) noexcept;

    void erase(Index index) noexcept;

    /// Erases everything and releases the memory.
    void clear() noexcept;

private:
    /// The hash that no path has.
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    [[nodiscard]] std::size_t home(std::uint32_t hash) const noexcept;
    [[nodiscard]] std::size_t next(std::size_t index) const noexcept;
    [[nodiscard]] std::size_t mask() const noexcept;

    // Separate, so that a search reads little more than hashes, side by side.
    std::vector<std::uint32_t> _hashes;
    std::vector<Entry> _entries;
    std::size_t _size = 0;
    unsigned _shift = 64; ///< 64 minus the logarithm of the number of entries.
};

} // namespace Kiv_v4::detail
