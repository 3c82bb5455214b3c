#pragma once

#include <memory>

#include "kiv/kit/gateways.h"
#include "kiv/sceneSegmentHandler.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

class MemorySceneSegmentHandler : public SceneSegmentHandler
{
public:
    explicit MemorySceneSegmentHandler(std::shared_ptr<Tree> tree);

    [[nodiscard]] bool isGatewayItem(const Path& path) override;
    [[nodiscard]] Selection gatewayItems(const Path& path) override;
    [[nodiscard]] Selection gatewayItems(const Path& path, Rtid nestedRuntimeId) override;

private:
    const std::shared_ptr<Tree> _tree;
    const kit::GatewayOwner _owner;
};

} // namespace Kiv_v4::memory
