#include "kiv/detail/pathTable.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace Kiv_v4::detail {

namespace {

bool sameComponents(const PathBody* left, const PathBody* right) noexcept
{
    const auto size = left ? left->size() : 0;
    return left == right || (size == (right ? right->size() : 0) &&
                             (size == 0 || std::equal(left->begin(), left->end(), right->begin())));
}

} // namespace

PathTable::PathTable(PathTable&& other) noexcept
    : _hashes(std::move(other._hashes)), _entries(std::move(other._entries)), _size(other._size),
      _shift(other._shift)
{
    other.clear();
}

PathTable& PathTable::operator=(PathTable&& other) noexcept
{
    auto taken = std::move(other);
    std::swap(_hashes, taken._hashes);
    std::swap(_entries, taken._entries);
    _size = taken._size;
    _shift = taken._shift;
    return *this;
}

PathTable::Index PathTable::find(const Path& path) const noexcept
{
    if (_size == 0) {
        return kNowhere;
    }
    const auto index = place(path);
    return free(index) ? kNowhere : index;
}

void PathTable::reserve(std::size_t count)
{
    constexpr std::size_t kLeast = 8;
    if (count * 5 <= _hashes.size() * 4) {
        return;
    }
    const auto capacity = std::max(kLeast, std::bit_ceil(count + count / 4 + 1));
    std::vector<std::uint32_t> hashes(capacity, kFree);
    std::vector<Entry> entries(capacity);
    hashes.swap(_hashes);
    entries.swap(_entries);
    _shift = 64U - static_cast<unsigned>(std::countr_zero(capacity));
    for (std::size_t from = 0; from != hashes.size(); ++from) {
        if (hashes[from] != kFree) {
            auto to = home(hashes[from]);
            while (!free(to)) {
                to = next(to);
            }
            _hashes[to] = hashes[from];
            _entries[to] = entries[from];
        }
    }
}

PathTable::Index PathTable::place(const Path& path) const noexcept
{
    const auto hash = path.hash();
    const auto* const body = path._body;
    for (auto i = home(hash);; i = next(i)) {
        if (free(i) || (_hashes[i] == hash && sameComponents(_entries[i].body, body))) {
            return i;
        }
    }
}

void PathTable::fill(Index index, Position position) noexcept
{
    const auto& path = (*position)->path();
    _hashes[index] = path.hash();
    _entries[index] = {path._body, position};
    ++_size;
}

void PathTable::erase(Index hole) noexcept
{
    const auto distance = [this](Index from, Index to) { return (to - from) & mask(); };
    for (auto i = next(hole); !free(i); i = next(i)) {
        if (distance(home(_hashes[i]), i) >= distance(hole, i)) {
            _hashes[hole] = _hashes[i];
            _entries[hole] = _entries[i];
            hole = i;
        }
    }
    _hashes[hole] = kFree;
    --_size;
}

void PathTable::clear() noexcept
{
    std::vector<std::uint32_t>().swap(_hashes);
    std::vector<Entry>().swap(_entries);
    _size = 0;
    _shift = 64;
}

std::size_t PathTable::home(std::uint32_t hash) const noexcept
{
    // Hashes of siblings are consecutive; the product's top bits scatter them.
    return static_cast<std::size_t>((hash * std::uint64_t{0x9E3779B97F4A7C15}) >> _shift);
}

std::size_t PathTable::next(std::size_t index) const noexcept
{
    return (index + 1) & mask();
}

std::size_t PathTable::mask() const noexcept
{
    return ~std::uint64_t{0} >> _shift;
}

} // namespace Kiv_v4::detail
