#include "itemPairs.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <unordered_map>
#include <utility>

#include "kiv/host/outline.h"

#include "itemValues.h"

namespace Kiv_v4::host {

namespace {

using Node = TreeImage::Node;
std::size_t mixed(std::size_t seed, std::size_t value)
{
    return (seed ^ value) * 0x9E3779B97F4A7C15U + (seed >> 29U);
}

std::size_t hashOf(const std::string& text)
{
    return std::hash<std::string>()(text);
}

/// Of the value in the digits that any tolerance leaves: texts and counts, numbers coarsely.
std::size_t hashOf(const ItemValue& value)
{
    return mixed(mixed(hashOf(value.group), hashOf(value.name)), hashOf(valueText(value.value)));
}

/// Items that may be the same have the same key; 0 for those that may not be.
using Key = std::function<std::size_t(const TreeImage& tree, const Node& node)>;

class Pairing
{
public:
    Pairing(TreeImage& before, TreeImage& after, const ComparisonOptions& options)
        : _before(before), _after(after), _options(options)
    {}

    void run()
    {
        pair(0, 0);
        while (pairAny()) {
        }
    }

private:
    using Candidates = std::unordered_map<std::size_t, std::vector<std::size_t>>;

    void pair(std::size_t before, std::size_t after)
    {
        std::vector<std::pair<std::size_t, std::size_t>> pending{{before, after}};
        while (!pending.empty()) {
            visit(_options);
            const auto [left, right] = pending.back();
            pending.pop_back();
            _before.nodes[left].partner = right;
            _after.nodes[right].partner = left;
            pairChildren(left, right, pending);
        }
    }

    /// Those of one name and type, the first with the first.
    void pairChildren(std::size_t left, std::size_t right,
                      std::vector<std::pair<std::size_t, std::size_t>>& pending)
    {
        std::unordered_map<std::string, std::vector<std::size_t>> named;
        for (const auto child : _before.nodes[left].children) {
            if (_before.nodes[child].partner == kNoNode) {
                named[_before.nodes[child].name].push_back(child);
            }
        }
        for (const auto child : _after.nodes[right].children) {
            const auto& node = _after.nodes[child];
            const auto same = named.find(node.name);
            if (node.partner != kNoNode || same == named.end()) {
                continue;
            }
            auto& free = same->second;
            const auto found = std::find_if(free.begin(), free.end(), [&](auto other) {
                return _before.nodes[other].type == node.type;
            });
            if (found != free.end()) {
                pending.emplace_back(*found, child);
                free.erase(found);
            }
        }
    }

    /// By the surest sign that still pairs something.
    bool pairAny()
    {
        if (free(_before).empty() || free(_after).empty()) {
            return false;
        }
        _before.readContents();
        _after.readContents();
        const auto parentOf = [](const TreeImage& tree, const Node& node) {
            return node.parent == kNoNode ? kNoNode : tree.nodes[node.parent].partner;
        };
        // The parent is told by its place in the tree before, which both trees know.
        const auto place = [&](const TreeImage& tree, const Node& node) {
            const auto partner = parentOf(tree, node);
            return partner == kNoNode ? kNoNode : &tree == &_before ? node.parent : partner;
        };
        const Key renamed = [&](const TreeImage& tree, const Node& node) {
            const auto parent = place(tree, node);
            return parent == kNoNode ? 0 : mixed(parent + 1, node.contents);
        };
        const Key moved = [](const TreeImage&, const Node& node) {
            return mixed(hashOf(node.name), node.shape);
        };
        const Key sameName = [](const TreeImage&, const Node& node) {
            return mixed(hashOf(node.name), hashOf(node.type));
        };
        const Key renamedAndChanged = [&](const TreeImage& tree, const Node& node) {
            const auto parent = place(tree, node);
            const auto isTelling = parent != kNoNode && !node.children.empty();
            return isTelling ? mixed(parent + 1, node.shape) : 0;
        };
        const Key movedAndRenamed = [](const TreeImage&, const Node& node) {
            return node.children.empty() ? 0 : node.contents;
        };
        return pairBy(renamed, false) || pairBy(moved, false) || pairParents() ||
               pairBy(sameName, true) || pairBy(renamedAndChanged, true) ||
               pairBy(movedAndRenamed, true);
    }

    /// Those of one type that have children in common, the most first. Gives whether there were
    /// any.
    bool pairParents()
    {
        std::map<std::pair<std::size_t, std::size_t>, std::size_t> votes;
        for (const auto& node : _before.nodes) {
            const auto left = node.partner == kNoNode ? kNoNode : node.parent;
            const auto right = left == kNoNode ? kNoNode : _after.nodes[node.partner].parent;
            if (right != kNoNode && isFreePair(left, right)) {
                ++votes[{left, right}];
            }
        }
        using Vote = std::pair<std::pair<std::size_t, std::size_t>, std::size_t>;
        std::vector<Vote> ranked(votes.begin(), votes.end());
        std::stable_sort(ranked.begin(), ranked.end(), [](const Vote& one, const Vote& other) {
            return one.second > other.second;
        });
        for (const auto& [nodes, count] : ranked) {
            if (isFreePair(nodes.first, nodes.second)) {
                pair(nodes.first, nodes.second);
            }
        }
        return !ranked.empty();
    }

    [[nodiscard]] bool isFreePair(std::size_t left, std::size_t right) const
    {
        const auto& one = _before.nodes[left];
        const auto& other = _after.nodes[right];
        return one.partner == kNoNode && other.partner == kNoNode && one.type == other.type;
    }

    /// Items without a partner, parents first.
    static std::vector<std::size_t> free(const TreeImage& tree)
    {
        std::vector<std::size_t> indices;
        for (std::size_t i = 0; i < tree.nodes.size(); ++i) {
            if (tree.nodes[i].partner == kNoNode) {
                indices.push_back(i);
            }
        }
        return indices;
    }

    static Candidates candidates(const TreeImage& tree, const Key& key)
    {
        Candidates found;
        for (const auto index : free(tree)) {
            if (const auto sign = key(tree, tree.nodes[index]); sign != 0) {
                found[sign].push_back(index);
            }
        }
        return found;
    }

    /// With `onlyUnique`, those that are the only ones with a key; otherwise the first with the
    /// first. Gives whether there were any.
    bool pairBy(const Key& key, bool onlyUnique)
    {
        auto others = candidates(_after, key);
        auto own = candidates(_before, key);
        auto any = false;
        for (const auto index : free(_before)) {
            const auto sign = key(_before, _before.nodes[index]);
            const auto left = own.find(sign);
            const auto right = others.find(sign);
            if (left == own.end() || right == others.end() ||
                (onlyUnique && (left->second.size() > 1 || right->second.size() > 1))) {
                continue;
            }
            // Children of what was paired meanwhile may have partners already.
            auto& list = right->second;
            const auto other = std::find_if(list.begin(), list.end(), [&](auto candidate) {
                return _after.nodes[candidate].partner == kNoNode;
            });
            if (_before.nodes[index].partner == kNoNode && other != list.end()) {
                pair(index, *other);
                any = true;
            }
        }
        return any;
    }

    TreeImage& _before;
    TreeImage& _after;
    const ComparisonOptions& _options;
};

} // namespace

TreeImage::TreeImage(const SceneItem::Ptr& root, const ComparisonOptions& options)
    : _options(options)
{
    std::vector<std::size_t> above; // the last item seen on each level
    walk(root, std::numeric_limits<std::size_t>::max(),
         [&](const SceneItem::Ptr& item, std::size_t depth) {
             visit(options);
             above.resize(depth);
             Node node{item, item->nodeName(), item->nodeType()};
             if (depth > 0) {
                 node.parent = above.back();
                 nodes[node.parent].children.push_back(nodes.size());
             }
             above.push_back(nodes.size());
             nodes.push_back(std::move(node));
             return true;
         });
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
        node->shape = mixed(1, hashOf(node->type));
        for (const auto child : node->children) {
            node->shape = mixed(mixed(node->shape, hashOf(nodes[child].name)), nodes[child].shape);
        }
    }
}

void TreeImage::readContents()
{
    if (_hasContents) {
        return;
    }
    _hasContents = true;
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
        if (node->partner != kNoNode) {
            continue; // nor will it ever be asked for
        }
        visit(_options);
        node->contents = node->shape;
        for (const auto& value : valuesOf(node->item, _options)) {
            node->contents = mixed(node->contents, hashOf(value));
        }
        for (const auto child : node->children) {
            node->contents = mixed(node->contents, nodes[child].contents);
        }
    }
}

void pairItems(TreeImage& before, TreeImage& after, const ComparisonOptions& options)
{
    Pairing(before, after, options).run();
}

} // namespace Kiv_v4::host
