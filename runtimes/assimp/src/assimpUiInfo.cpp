#include "assimpUiInfo.h"

#include <stdexcept>
#include <utility>

namespace Kiv_v4::assimp {

namespace {

void requireItem(const SceneItem::Ptr& item)
{
    if (!item) {
        throw std::invalid_argument("null item");
    }
}

class AssimpUIInfoHandler : public UIInfoHandler
{
public:
    explicit AssimpUIInfoHandler(std::shared_ptr<const Mounts> mounts) : _mounts(std::move(mounts))
    {}

    [[nodiscard]] CellInfo treeViewCellInfo(const SceneItem::Ptr&,
                                            const CellInfo& hostLook) const override
    {
        return hostLook;
    }

    [[nodiscard]] Icon treeViewIcon(const SceneItem::Ptr& item) const override
    {
        requireItem(item);
        return {item->nodeType(), "", NoBadge};
    }

    [[nodiscard]] std::string treeViewTooltip(const SceneItem::Ptr& item) const override
    {
        requireItem(item);
        const auto node = _mounts->nodeOrMaterial(item);
        return node ? node->file().originalName(node->index()) + "\n" + node->file().name()
                    : std::string();
    }

    [[nodiscard]] std::string runTimeLabel() const override { return "Scene files"; }

private:
    const std::shared_ptr<const Mounts> _mounts;
};

} // namespace

UIInfoHandler::Ptr makeUIInfoHandler(const std::shared_ptr<const Mounts>& mounts)
{
    return std::make_shared<AssimpUIInfoHandler>(mounts);
}

} // namespace Kiv_v4::assimp
