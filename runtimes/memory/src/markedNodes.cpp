#include "markedNodes.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "memoryTree.h"

namespace Kiv_v4::memory {

namespace {

/// A node and its place: the rows from the top down to it.
struct Placed
{
    std::vector<std::size_t> rows;
    Node* node;
};

Placed placed(Tree& tree, const Node& top, Node* node)
{
    Placed found{{}, node};
    for (const auto* step = node; step != &top; step = step->parent) {
        found.rows.push_back(tree.rowOf(*step));
    }
    std::reverse(found.rows.begin(), found.rows.end());
    return found;
}

} // namespace

std::vector<Node*> MarkedNodes::under(Tree& tree, Node& top) const
{
    std::vector<Node*> found;
    auto left = _nodes.size();
    for (auto* node = &top; node; node = nextInSubtree(&top, node)) {
        if (left-- == 0) {
            return climbing(tree, top);
        }
        if (_nodes.count(node) != 0) {
            found.push_back(node);
        }
    }
    return found;
}

std::vector<Node*> MarkedNodes::climbing(Tree& tree, const Node& top) const
{
    std::vector<Placed> found;
    for (auto* node : _nodes) {
        if (isUnder(top, *node)) {
            found.push_back(placed(tree, top, node));
        }
    }
    std::sort(found.begin(), found.end(),
              [](const auto& left, const auto& right) { return left.rows < right.rows; });
    std::vector<Node*> nodes(found.size());
    std::transform(found.begin(), found.end(), nodes.begin(),
                   [](const auto& each) { return each.node; });
    return nodes;
}

} // namespace Kiv_v4::memory
