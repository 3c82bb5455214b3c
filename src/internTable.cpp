#include "internTable.h"

#include <functional>

namespace Kiv_v4::detail {

std::size_t InternTable::hashOf(std::string_view name) noexcept
{
    return std::hash<std::string_view>()(name);
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
