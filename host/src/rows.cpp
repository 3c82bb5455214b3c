#include "rows.h"

namespace Kiv_v4::host {

namespace {

/// Priorities only need to differ from each other.
std::uint32_t nextPriority() noexcept
{
    static std::uint32_t state = 2463534242U;
    state ^= state << 13U;
    state ^= state >> 17U;
    state ^= state << 5U;
    return state;
}

} // namespace

std::size_t Rows::rowOf(const Node& node) noexcept
{
    auto row = countOf(node._left);
    for (const auto* at = &node; at->_above; at = at->_above) {
        if (at == at->_above->_right) {
            row += countOf(at->_above->_left) + 1;
        }
    }
    return row;
}

SceneTree::Node* Rows::at(const Node& parent, std::size_t row) noexcept
{
    auto* node = parent._rows;
    while (node) {
        const auto before = countOf(node->_left);
        if (row == before) {
            break;
        }
        if (row < before) {
            node = node->_left;
        } else {
            row -= before + 1;
            node = node->_right;
        }
    }
    return node;
}

void Rows::insert(Node& parent, std::size_t row, Node& node) noexcept
{
    node._parent = &parent;
    node._above = node._left = node._right = nullptr;
    node._count = 1;
    node._priority = nextPriority();
    auto** place = &parent._rows;
    while (*place) {
        auto& above = **place;
        node._above = &above;
        ++above._count;
        const auto before = countOf(above._left);
        if (row <= before) {
            place = &above._left;
        } else {
            row -= before + 1;
            place = &above._right;
        }
    }
    *place = &node;
    while (node._above && node._above->_priority < node._priority) {
        rotateUp(node);
    }
}

void Rows::erase(Node& node) noexcept
{
    while (node._left && node._right) {
        rotateUp(node._left->_priority > node._right->_priority ? *node._left : *node._right);
    }
    auto* only = node._left ? node._left : node._right;
    replace(node, only);
    for (auto* above = node._above; above; above = above->_above) {
        --above->_count;
    }
    node._parent = node._above = node._left = node._right = nullptr;
    node._count = 1;
}

void Rows::recount(Node& node) noexcept
{
    node._count = 1 + countOf(node._left) + countOf(node._right);
}

/// Attaches `by` in the place of `node`.
void Rows::replace(Node& node, Node* by) noexcept
{
    auto*& place = !node._above                  ? node._parent->_rows
                   : node._above->_left == &node ? node._above->_left
                                                 : node._above->_right;
    place = by;
    if (by) {
        by->_above = node._above;
    }
}

void Rows::rotateUp(Node& node) noexcept
{
    auto& above = *node._above;
    replace(above, &node);
    auto*& inner = above._left == &node ? node._right : node._left;
    auto*& outer = above._left == &node ? above._left : above._right;
    outer = inner;
    if (outer) {
        outer->_above = &above;
    }
    inner = &above;
    above._above = &node;
    recount(above);
    recount(node);
}

std::size_t SceneTree::Node::row() const noexcept
{
    return Rows::rowOf(*this);
}

SceneTree::Node& SceneTree::Node::child(std::size_t row) const noexcept
{
    return *Rows::at(*this, row);
}

} // namespace Kiv_v4::host
