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

/// Where in a list the item of a path stands: open addressing with linear probing. Paths count as
/// equal when their components are, whatever their segments, as in a trie.
///
/// Invariants:
/// - the number of slots is 0 or a power of two, and at least a quarter of them are free;
/// - no free slot lies between an entry's home slot (the top bits of its mixed hash) and its own
///   slot, which erasing keeps by shifting later entries back;
/// - the items keep the components that the slots point at.
class PathTable
{
public:
    using Position = SelectedItems::const_iterator;

    struct Slot
    {
        /// The hash that no path has.
        static constexpr std::uint32_t kFree = 0xFFFFFFFF;

        std::uint32_t hash = kFree;
        std::uint32_t size = 0;                    ///< The number of components.
        const PathComponent* components = nullptr; ///< Those of the item's path and its copies.
        Position position;

        [[nodiscard]] bool free() const noexcept { return hash == kFree; }
    };

    PathTable() = default;
    PathTable(const PathTable&) = delete;
    PathTable(PathTable&& other) noexcept;
    ~PathTable() = default;
    PathTable& operator=(const PathTable&) = delete;
    PathTable& operator=(PathTable&& other) noexcept;

    /// The slot of that path, or null; good until the next change.
    [[nodiscard]] const Slot* find(const Path& path) const noexcept;

    /// Makes room for so many entries in all. Strong guarantee.
    void reserve(std::size_t count);

    /// The slot of that path, or the free one that it belongs in, in the room reserved.
    [[nodiscard]] Slot& slot(const Path& path) noexcept;

    /// Enters the item at `position` in the free slot of its path.
    void fill(Slot& slot, Position position) noexcept;

    void erase(const Slot& slot) noexcept;

    /// Erases everything and lets the memory go.
    void clear() noexcept;

private:
    [[nodiscard]] std::size_t home(std::uint32_t hash) const noexcept;
    [[nodiscard]] std::size_t mask() const noexcept;
    [[nodiscard]] std::size_t indexOf(const Path& path) const noexcept;
    void moveIn(const Slot& slot) noexcept;

    std::vector<Slot> _slots;
    std::size_t _size = 0;
    unsigned _shift = 64; ///< 64 minus the logarithm of the number of slots.
};

} // namespace Kiv_v4::detail
