#include "kiv/host/comparison.h"

#include <algorithm>
#include <array>

#include "itemPairs.h"
#include "itemValues.h"

namespace Kiv_v4::host {

namespace {

using Kind = Difference::Kind;
using Node = TreeImage::Node;
/// Whether the item has no partner, and its parent has one: it stands for all below it.
bool isTopOfFree(const TreeImage& tree, const Node& node)
{
    return node.partner == kNoNode &&
           (node.parent == kNoNode || tree.nodes[node.parent].partner != kNoNode);
}

/// Whether the children that stayed under the item stand in another order.
bool isReordered(const TreeImage& before, const TreeImage& after, const Node& node)
{
    std::size_t last = 0;
    for (const auto child : node.children) {
        const auto partner = before.nodes[child].partner;
        if (partner == kNoNode || after.nodes[partner].parent != node.partner) {
            continue;
        }
        if (partner < last) {
            return true;
        }
        last = partner;
    }
    return false;
}

void comparePlaces(const TreeImage& before, const TreeImage& after, const Node& was, const Node& is,
                   std::vector<Difference>& differences)
{
    const auto tell = [&](Kind kind) {
        differences.push_back({kind, was.item->path(), is.item->path()});
    };
    if (was.parent != kNoNode) {
        const auto isMoved = is.parent == kNoNode || before.nodes[was.parent].partner != is.parent;
        if (isMoved) {
            tell(Kind::Moved);
        }
        if (was.name != is.name) {
            tell(Kind::Renamed);
        }
    }
    if (isReordered(before, after, was)) {
        tell(Kind::Reordered);
    }
}

} // namespace

std::vector<Difference> compare(const SceneItem::Ptr& before, const SceneItem::Ptr& after,
                                const ComparisonOptions& options)
{
    TreeImage old(before, options);
    TreeImage now(after, options);
    pairItems(old, now, options);
    std::vector<Difference> differences;
    for (const auto& node : old.nodes) {
        visit(options);
        if (node.partner != kNoNode) {
            const auto& partner = now.nodes[node.partner];
            comparePlaces(old, now, node, partner, differences);
            compareValues(node.item, partner.item, options, differences);
        } else if (isTopOfFree(old, node)) {
            differences.push_back({Kind::Removed, node.item->path(), {}});
        }
    }
    for (const auto& node : now.nodes) {
        if (isTopOfFree(now, node)) {
            differences.push_back({Kind::Added, {}, node.item->path()});
        }
    }
    return differences;
}

const char* textOf(Difference::Kind kind) noexcept
{
    constexpr std::array<const char*, 6> texts{"added",   "removed",   "moved",
                                               "renamed", "reordered", "changed"};
    return texts[static_cast<std::size_t>(kind)];
}

} // namespace Kiv_v4::host
