#include "sceneSegment.h"

#include <utility>

#include "kiv/selection.h"

#include "memoryItem.h"

namespace Kiv_v4::memory {

namespace {

/// The items under `path` whose gateway `wanted` accepts, in the order of the hierarchy.
template <class Wanted>
Selection gateways(Tree& tree, const Path& path, Wanted wanted)
{
    Selection found;
    auto* top = tree.find(path);
    if (!top) {
        return found;
    }
    for (auto* node : tree.gatewaysUnder(*top)) {
        if (node != top && wanted(node->gateway)) {
            found.append(makeItem(tree, tree.pathOf(*node), *node));
        }
    }
    return found;
}

} // namespace

MemorySceneSegmentHandler::MemorySceneSegmentHandler(std::shared_ptr<Tree> tree)
    : _tree(std::move(tree)), _owner(_tree->runTimeId(), [known = _tree](const Path& path) {
          const auto* node = known->find(path);
          return node ? node->gateway : Rtid{0};
      })
{}

bool MemorySceneSegmentHandler::isGatewayItem(const Path& path)
{
    const auto* node = _tree->find(path);
    return node && node->gateway != 0;
}

Selection MemorySceneSegmentHandler::gatewayItems(const Path& path)
{
    return gateways(*_tree, path, [](Rtid) { return true; });
}

Selection MemorySceneSegmentHandler::gatewayItems(const Path& path, Rtid nestedRuntimeId)
{
    return gateways(*_tree, path, [=](Rtid nested) { return nested == nestedRuntimeId; });
}

} // namespace Kiv_v4::memory
