#include "memoryCamera.h"

#include <utility>

#include "kiv/kit/cameras.h"
#include "kiv/selection.h"

#include "memoryItem.h"
#include "nodeTypes.h"
#include "propertyCommands.h"

namespace Kiv_v4::memory {

namespace {

struct CameraRecord : kit::CameraValues
{
    CameraRecord()
    {
        fStop = 5.6F;
        focalLength = 35;
        focusDistance = 5;
    }

    static void announce(const Path& path, const Node&) { Camera::notify(path); }
};

using CameraProperties = RecordProperties<CameraRecord>;
using MemoryCamera = kit::CameraOf<CameraProperties>;

class MemoryCameraHandler : public CameraHandler
{
public:
    explicit MemoryCameraHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

    [[nodiscard]] Camera::Ptr camera(const SceneItem::Ptr& item) override
    {
        const auto* node = _tree->find(*item);
        return node && node->type == kCamera
                   ? std::make_shared<MemoryCamera>(CameraProperties(_tree, item))
                   : nullptr;
    }

    [[nodiscard]] Selection findCameras(const Path& path) override
    {
        Selection found;
        auto* top = _tree->find(path);
        if (!top) {
            return found;
        }
        for (auto* node : _tree->camerasUnder(*top)) {
            found.append(makeItem(*_tree, _tree->pathOf(*node), *node));
        }
        return found;
    }

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace

CameraHandler::Ptr makeCameraHandler(const std::shared_ptr<Tree>& tree)
{
    return std::make_shared<MemoryCameraHandler>(tree);
}

} // namespace Kiv_v4::memory
