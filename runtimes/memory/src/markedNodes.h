#pragma once

#include <unordered_set>
#include <vector>

namespace Kiv_v4::memory {

class Tree;
struct Node;

/// Nodes of a rare kind, found without a search of the scene.
class MarkedNodes
{
public:
    void insert(Node& node) { _nodes.insert(&node); }
    void erase(Node& node) noexcept { _nodes.erase(&node); }

    /// The marked nodes at and below `top`, in the order of the hierarchy.
    ///
    /// Cost: that of a walk over the subtree or, where that is less, of one climb to `top` per
    /// marked node of the tree.
    [[nodiscard]] std::vector<Node*> under(Tree& tree, Node& top) const;

private:
    [[nodiscard]] std::vector<Node*> climbing(Tree& tree, const Node& top) const;

    std::unordered_set<Node*> _nodes;
};

} // namespace Kiv_v4::memory
