#include "siblingRows.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "memoryTree.h"

namespace Kiv_v4::memory {

namespace {
constexpr std::size_t kLargestBlock = 256;
}

SiblingRows::SiblingRows(const Node& parent)
{
    for (auto* child = parent.firstChild; child; child = child->next) {
        append(*child);
    }
}

Node* SiblingRows::at(std::size_t row) noexcept
{
    numberRows(_blocks.size());
    const auto behind =
        std::upper_bound(_blocks.begin(), _blocks.end(), row,
                         [](std::size_t wanted, const Block& b) { return wanted < b.firstRow; });
    const auto& block = *std::prev(behind);
    return block.children[row - block.firstRow];
}

std::size_t SiblingRows::rowOf(const Node& child) noexcept
{
    const auto place = blockOf(child);
    numberRows(place + 1);
    const auto& [id, firstRow, children] = _blocks[place];
    return firstRow + static_cast<std::size_t>(std::find(children.begin(), children.end(), &child) -
                                               children.begin());
}

void SiblingRows::insert(Node& child, const Node* before)
{
    if (!before) {
        append(child);
        return;
    }
    auto place = blockOf(*before);
    if (_blocks[place].children.size() == kLargestBlock) {
        split(place);
        place = blockOf(*before);
    }
    auto& children = _blocks[place].children;
    children.insert(std::find(children.begin(), children.end(), before), &child);
    child.rowBlock = _blocks[place].id;
    _nbNumbered = std::min(_nbNumbered, place + 1);
    ++_size;
}

void SiblingRows::erase(const Node& child) noexcept
{
    const auto place = blockOf(child);
    auto& children = _blocks[place].children;
    children.erase(std::find(children.begin(), children.end(), &child));
    _nbNumbered = std::min(_nbNumbered, place + 1);
    --_size;
    if (children.empty()) {
        _blocks.erase(_blocks.begin() + static_cast<std::ptrdiff_t>(place));
        renumberBlocks(place);
    }
}

void SiblingRows::append(Node& child)
{
    if (_blocks.empty() || _blocks.back().children.size() == kLargestBlock) {
        _blocks.push_back({static_cast<std::uint32_t>(_places.size()), _size, {}});
        _blocks.back().children.reserve(kLargestBlock);
        _places.push_back(_blocks.size() - 1);
    }
    _blocks.back().children.push_back(&child);
    child.rowBlock = _blocks.back().id;
    ++_size;
}

void SiblingRows::split(std::size_t block)
{
    const auto id = static_cast<std::uint32_t>(_places.size());
    _places.push_back(block + 1);
    Block second{id, 0, {}};
    second.children.reserve(kLargestBlock);
    auto& first = _blocks[block].children;
    const auto half = first.begin() + static_cast<std::ptrdiff_t>(first.size() / 2);
    second.children.assign(half, first.end());
    const auto at = _blocks.begin() + static_cast<std::ptrdiff_t>(block) + 1;
    const auto inserted = _blocks.insert(at, std::move(second));
    for (auto* child : inserted->children) {
        child->rowBlock = id;
    }
    auto& shortened = _blocks[block].children;
    shortened.resize(shortened.size() - inserted->children.size());
    renumberBlocks(block + 1);
}

/// Records the new places of the blocks from `from` on.
void SiblingRows::renumberBlocks(std::size_t from) noexcept
{
    for (auto i = from; i < _blocks.size(); ++i) {
        _places[_blocks[i].id] = i;
    }
    _nbNumbered = std::min(_nbNumbered, from);
}

void SiblingRows::numberRows(std::size_t upTo) noexcept
{
    for (; _nbNumbered < upTo; ++_nbNumbered) {
        auto& block = _blocks[_nbNumbered];
        const auto* previous = _nbNumbered > 0 ? &_blocks[_nbNumbered - 1] : nullptr;
        block.firstRow = previous ? previous->firstRow + previous->children.size() : 0;
    }
}

std::size_t SiblingRows::blockOf(const Node& child) const noexcept
{
    return _places[child.rowBlock];
}

} // namespace Kiv_v4::memory
