#include "childIndex.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "memoryTree.h"

namespace Kiv_v4::memory {

namespace {

constexpr std::size_t kFewestSlots = 16;

std::uint64_t hashOf(const Node& parent, const PathComponent& name) noexcept
{
    // Nodes and records of names lie at regular distances: products scatter them. The record itself
    // is not read.
    const auto above = reinterpret_cast<std::uintptr_t>(&parent);
    const auto record = reinterpret_cast<std::uintptr_t>(&name.string());
    const auto mixed = (above * 0x9E3779B97F4A7C15U) ^ (record * 0xC2B2AE3D27D4EB4FU);
    return (mixed ^ (mixed >> 32U)) * 0x9E3779B97F4A7C15U;
}

} // namespace

Node* ChildIndex::find(const Node& parent, const PathComponent& name) const noexcept
{
    if (_size == 0) {
        return nullptr;
    }
    const auto hash = hashOf(parent, name);
    for (auto i = home(hash); _slots[i].node; i = next(i)) {
        const auto& [slotHash, node] = _slots[i];
        if (slotHash == hash && node->parent == &parent && node->name == name) {
            return node;
        }
    }
    return nullptr;
}

void ChildIndex::reserve(std::size_t count)
{
    auto wanted = std::max(_slots.size(), kFewestSlots);
    while ((_size + count) * 8 > wanted * 5) {
        wanted *= 2;
    }
    if (wanted == _slots.size()) {
        return;
    }
    auto old = std::exchange(_slots, std::vector<Slot>(wanted));
    _shift = 65U - static_cast<unsigned>(std::bit_width(wanted));
    for (const auto& entry : old) {
        if (entry.node) {
            place(entry);
        }
    }
}

void ChildIndex::insert(Node& node, const Node& parent) noexcept
{
    place({hashOf(parent, node.name), &node});
    ++_size;
}

void ChildIndex::erase(const Node& node) noexcept
{
    auto hole = home(hashOf(*node.parent, node.name));
    while (_slots[hole].node != &node) {
        hole = next(hole);
    }
    const auto distance = [this](std::size_t from, std::size_t to) {
        return (to - from) & (_slots.size() - 1);
    };
    for (auto i = next(hole); _slots[i].node; i = next(i)) {
        if (distance(home(_slots[i].hash), i) >= distance(hole, i)) {
            _slots[hole] = _slots[i];
            hole = i;
        }
    }
    _slots[hole] = {};
    --_size;
}

std::size_t ChildIndex::home(std::uint64_t hash) const noexcept
{
    return static_cast<std::size_t>(hash >> _shift);
}

void ChildIndex::place(Slot entry) noexcept
{
    auto i = home(entry.hash);
    while (_slots[i].node) {
        i = next(i);
    }
    _slots[i] = entry;
}

} // namespace Kiv_v4::memory
