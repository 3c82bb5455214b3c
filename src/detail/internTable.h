#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "kiv/pathComponent.h"

namespace Kiv_v4::detail {

/// The records of all names in use, found by name: open addressing with linear probing and the hash
/// beside each pointer, so that a lookup touches one run of slots and, nearly always, one record.
///
/// Invariants:
/// - the number of slots is a power of two and at most three quarters of them are taken;
/// - no free slot lies between a record's home slot (its hash modulo the size) and its own slot,
///   which erasing keeps by shifting later records back instead of leaving tombstones;
/// - a record leaves the table before it dies (`PathComponent::releaseSharedData`).
class InternTable
{
public:
    using Data = PathComponent::Data;

    [[nodiscard]] static std::size_t hashOf(std::string_view name) noexcept;

    [[nodiscard]] std::size_t size() const noexcept { return _size; }

    /// The record of `name`; null if there is none.
    [[nodiscard]] Data* find(std::string_view name, std::size_t hash) const noexcept;

    /// Prefetches the memory at which a search for `hash` begins.
    void prefetch(std::size_t hash) const noexcept { __builtin_prefetch(&_slots[hash & _mask]); }

    /// The first record whose name has that hash; null if there is none. The name may differ from
    /// the one searched for.
    [[nodiscard]] Data* likely(std::size_t hash) const noexcept
    {
        auto i = hash & _mask;
        while (_slots[i].data && _slots[i].hash != hash) {
            i = next(i);
        }
        return _slots[i].data;
    }

    /// Enters a record whose name the table does not have. Strong guarantee.
    void insert(Data& data);

    /// Erases the entry of the name of `data`, whichever record it leads to, if there is one.
    void erase(const Data& data) noexcept;

private:
    struct Slot
    {
        std::size_t hash = 0;
        Data* data = nullptr;
    };

    [[nodiscard]] std::size_t next(std::size_t index) const noexcept { return (index + 1) & _mask; }
    void grow();
    void put(Slot slot) noexcept;

    std::vector<Slot> _slots = std::vector<Slot>(64);
    std::size_t _mask = 63;
    std::size_t _size = 0;
};

/// The table of the process. Never destroyed: components held by other static objects outlive every
/// order of destruction.
[[nodiscard]] InternTable& internTable();

} // namespace Kiv_v4::detail
