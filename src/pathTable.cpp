#include "kiv/detail/pathTable.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace Kiv_v4::detail {

PathTable::PathTable(PathTable&& other) noexcept
    : _slots(std::move(other._slots)), _size(other._size), _shift(other._shift)
{
    other.clear();
}

PathTable& PathTable::operator=(PathTable&& other) noexcept
{
    auto taken = std::move(other);
    std::swap(_slots, taken._slots);
    _size = taken._size;
    _shift = taken._shift;
    return *this;
}

const PathTable::Slot* PathTable::find(const Path& path) const noexcept
{
    if (_size == 0) {
        return nullptr;
    }
    const auto& slot = _slots[indexOf(path)];
    return slot.free() ? nullptr : &slot;
}

void PathTable::reserve(std::size_t count)
{
    constexpr std::size_t kLeast = 8;
    if (count * 4 <= _slots.size() * 3) {
        return;
    }
    const auto capacity = std::max(kLeast, std::bit_ceil(count + count / 3 + 1));
    std::vector<Slot> slots(capacity);
    slots.swap(_slots);
    _shift = 64U - static_cast<unsigned>(std::countr_zero(capacity));
    for (const auto& slot : slots) {
        if (!slot.free()) {
            moveIn(slot);
        }
    }
}

PathTable::Slot& PathTable::slot(const Path& path) noexcept
{
    return _slots[indexOf(path)];
}

void PathTable::fill(Slot& slot, Position position) noexcept
{
    const auto& path = (*position)->path();
    slot = {path.hash(), static_cast<std::uint32_t>(path.size()), path.begin(), position};
    ++_size;
}

void PathTable::erase(const Slot& slot) noexcept
{
    auto hole = static_cast<std::size_t>(&slot - _slots.data());
    for (auto i = (hole + 1) & mask(); !_slots[i].free(); i = (i + 1) & mask()) {
        if (((i - home(_slots[i].hash)) & mask()) >= ((i - hole) & mask())) {
            _slots[hole] = _slots[i];
            hole = i;
        }
    }
    _slots[hole] = Slot();
    --_size;
}

void PathTable::clear() noexcept
{
    std::vector<Slot>().swap(_slots);
    _size = 0;
    _shift = 64;
}

std::size_t PathTable::home(std::uint32_t hash) const noexcept
{
    // Hashes of siblings are consecutive; the product's top bits scatter them.
    return static_cast<std::size_t>((hash * std::uint64_t{0x9E3779B97F4A7C15}) >> _shift);
}

std::size_t PathTable::mask() const noexcept
{
    return ~std::uint64_t{0} >> _shift;
}

/// The index of the slot of that path, or of the free one that it belongs in.
std::size_t PathTable::indexOf(const Path& path) const noexcept
{
    const auto hash = path.hash();
    const auto same = [&path](const Slot& slot) {
        return slot.components == path.begin() ||
               std::equal(slot.components, slot.components + slot.size, path.begin(), path.end());
    };
    auto i = home(hash);
    while (!(_slots[i].hash == hash && same(_slots[i])) && !_slots[i].free()) {
        i = (i + 1) & mask();
    }
    return i;
}

void PathTable::moveIn(const Slot& slot) noexcept
{
    auto i = home(slot.hash);
    while (!_slots[i].free()) {
        i = (i + 1) & mask();
    }
    _slots[i] = slot;
}

} // namespace Kiv_v4::detail
