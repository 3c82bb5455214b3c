#include "detail/internTable.h"

#include <cstdint>
#include <cstring>

namespace Kiv_v4::detail {

namespace {

template <class Word>
std::uint64_t wordAt(const char* from) noexcept
{
    Word word;
    std::memcpy(&word, from, sizeof(word));
    return word;
}

/// Takes `word` into `hash`: the product carries each bit upwards, the shift brings it back down.
std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) noexcept
{
    hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
    return hash ^ hash >> 32U;
}

} // namespace

// Most names are short: whole words are read, and the last one may overlap the one before.
std::size_t InternTable::hashOf(std::string_view name) noexcept
{
    const auto* begin = name.data();
    const auto* end = begin + name.size();
    std::uint64_t hash = 0;
    if (name.size() >= 8) {
        for (; end - begin > 8; begin += 8) {
            hash = mixed(hash, wordAt<std::uint64_t>(begin));
        }
        hash = mixed(hash, wordAt<std::uint64_t>(end - 8));
    } else if (name.size() >= 4) {
        hash = mixed(hash, wordAt<std::uint32_t>(begin) << 32U | wordAt<std::uint32_t>(end - 4));
    } else if (!name.empty()) {
        hash = mixed(hash, wordAt<std::uint8_t>(begin) << 16U |
                               wordAt<std::uint8_t>(begin + name.size() / 2) << 8U |
                               wordAt<std::uint8_t>(end - 1));
    }
    return static_cast<std::size_t>(mixed(hash, name.size()));
}

InternTable::Data* InternTable::find(std::string_view name, std::size_t hash) const noexcept
{
    for (auto i = hash & _mask; _slots[i].data; i = next(i)) {
        if (_slots[i].hash == hash && _slots[i].data->name == name) {
            return _slots[i].data;
        }
    }
    return nullptr;
}

void InternTable::insert(Data& data)
{
    if ((_size + 1) * 4 > _slots.size() * 3) {
        grow();
    }
    put({data.nameHash, &data});
    ++_size;
}

void InternTable::erase(const Data& data) noexcept
{
    auto hole = data.nameHash & _mask;
    while (_slots[hole].data != &data) {
        if (!_slots[hole].data) {
            return;
        }
        // The name may have been interned anew while a holder kept the old record.
        if (_slots[hole].hash == data.nameHash && _slots[hole].data->name == data.name) {
            break;
        }
        hole = next(hole);
    }
    for (auto i = next(hole); _slots[i].data; i = next(i)) {
        const auto home = _slots[i].hash & _mask;
        const auto fromHome = (i - home) & _mask;
        const auto fromHole = (i - hole) & _mask;
        if (fromHome >= fromHole) {
            _slots[hole] = _slots[i];
            hole = i;
        }
    }
    _slots[hole] = {};
    --_size;
}

void InternTable::grow()
{
    std::vector<Slot> larger(_slots.size() * 2);
    _slots.swap(larger);
    _mask = _slots.size() - 1;
    for (const auto& slot : larger) {
        if (slot.data) {
            put(slot);
        }
    }
}

void InternTable::put(Slot slot) noexcept
{
    auto i = slot.hash & _mask;
    while (_slots[i].data) {
        i = next(i);
    }
    _slots[i] = slot;
}

} // namespace Kiv_v4::detail
