#pragma once

#include <cstddef>

#include "kiv/host/sceneTree.h"

namespace Kiv_v4::host {

/// The rows of a node: a treap whose nodes are the children, in which a place is a row. All
/// operations are logarithmic in the number of rows.
class Rows
{
public:
    using Node = SceneTree::Node;

    [[nodiscard]] static std::size_t rowOf(const Node& node) noexcept;
    [[nodiscard]] static Node* at(const Node& parent, std::size_t row) noexcept;

    /// Inserts `node`, which has no parent, at `row`, which is at most the number of rows.
    static void insert(Node& parent, std::size_t row, Node& node) noexcept;

    /// Leaves the node without parent, with the rows of its own.
    static void erase(Node& node) noexcept;

private:
    static std::size_t countOf(const Node* node) noexcept { return node ? node->_count : 0; }
    static void recount(Node& node) noexcept;
    static void replace(Node& node, Node* by) noexcept;
    static void rotateUp(Node& node) noexcept;
};

} // namespace Kiv_v4::host
