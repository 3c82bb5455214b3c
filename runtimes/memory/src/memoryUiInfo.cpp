#include "memoryUiInfo.h"

#include <stdexcept>
#include <utility>

#include "kiv/pathString.h"

namespace Kiv_v4::memory {

namespace {

void requireItem(const SceneItem::Ptr& item)
{
    if (!item) {
        throw std::invalid_argument("null item");
    }
}

class MemoryUIInfoHandler : public UIInfoHandler
{
public:
    explicit MemoryUIInfoHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

    [[nodiscard]] CellInfo treeViewCellInfo(const SceneItem::Ptr& item,
                                            const CellInfo& hostLook) const override
    {
        requireItem(item);
        auto look = hostLook;
        const auto* node = _tree->find(*item);
        look.fontItalic = look.fontItalic || (node && node->gateway != 0);
        return look;
    }

    [[nodiscard]] Icon treeViewIcon(const SceneItem::Ptr& item) const override
    {
        requireItem(item);
        return {item->nodeType(), "", NoBadge};
    }

    [[nodiscard]] std::string treeViewTooltip(const SceneItem::Ptr& item) const override
    {
        requireItem(item);
        return PathString::string(item->path());
    }

    [[nodiscard]] std::string runTimeLabel() const override { return "In memory"; }

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace

UIInfoHandler::Ptr makeUIInfoHandler(const std::shared_ptr<Tree>& tree)
{
    return std::make_shared<MemoryUIInfoHandler>(tree);
}

} // namespace Kiv_v4::memory
