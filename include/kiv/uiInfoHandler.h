#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "kiv/cellInfo.h"
#include "kiv/export.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// What a run-time has to say about how its items look in a user interface. Items are not null:
/// run-times throw `std::invalid_argument` when they have to look at one that is.
class KIV_EXPORT UIInfoHandler
{
public:
    using Ptr = std::shared_ptr<UIInfoHandler>;

    /// Where a badge sits on an icon.
    enum BadgePosition : std::uint32_t {
        NoBadge = 0,
        UpperLeft = 1,
        UpperRight = 2,
        LowerLeft = 3,
        LowerRight = 4
    };

    /// An icon by name, which the host looks up among its own; empty for none of the run-time's
    /// own.
    struct Icon
    {
        std::string base;                      ///< The icon itself.
        std::string badge;                     ///< A smaller one on top of it.
        BadgePosition badgePosition = NoBadge; ///< Where the badge sits.
    };

    /// The handler of a run-time, or null.
    [[nodiscard]] static Ptr uiInfoHandler(Rtid runTimeId);

    UIInfoHandler();
    UIInfoHandler(const UIInfoHandler&) = delete;
    UIInfoHandler& operator=(const UIInfoHandler&) = delete;
    virtual ~UIInfoHandler();

    /// The look of the item's cell in a tree view: `hostLook`, which the host would use, with what
    /// the run-time changes in it.
    [[nodiscard]] virtual CellInfo treeViewCellInfo(const SceneItem::Ptr& item,
                                                    const CellInfo& hostLook) const = 0;

    /// The item's icon in a tree view. By default empty: the host chooses by node type.
    [[nodiscard]] virtual Icon treeViewIcon(const SceneItem::Ptr& item) const;

    /// The text shown while the pointer rests on the item. By default empty: none.
    [[nodiscard]] virtual std::string treeViewTooltip(const SceneItem::Ptr& item) const;

    /// The run-time's name as a user interface shows it.
    [[nodiscard]] virtual std::string runTimeLabel() const = 0;
};

} // namespace Kiv_v4
