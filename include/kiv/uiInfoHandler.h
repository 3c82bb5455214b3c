#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "kiv/cellInfo.h"
#include "kiv/export.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// A run-time installs this handler to describe the look of its items in a user interface. Items
/// must not be null: a run-time that uses a null item throws `std::invalid_argument`.
class KIV_EXPORT UIInfoHandler
{
public:
    using Ptr = std::shared_ptr<UIInfoHandler>;

    /// The place of a badge on an icon.
    enum BadgePosition : std::uint32_t {
        NoBadge = 0,
        UpperLeft = 1,
        UpperRight = 2,
        LowerLeft = 3,
        LowerRight = 4
    };

    /// An icon by name, which the host looks up among its own; empty if the run-time has none of
    /// its own.
    struct Icon
    {
        std::string base;                      ///< The icon itself.
        std::string badge;                     ///< A smaller one on top of it.
        BadgePosition badgePosition = NoBadge; ///< The badge's place.
    };

    /// The handler of a run-time; null if it has none.
    [[nodiscard]] static Ptr uiInfoHandler(Rtid runTimeId);

    UIInfoHandler();
    UIInfoHandler(const UIInfoHandler&) = delete;
    UIInfoHandler& operator=(const UIInfoHandler&) = delete;
    virtual ~UIInfoHandler();

    /// The look of the item's cell in a tree view: `hostLook`, the host's default, with the
    /// run-time's changes.
    [[nodiscard]] virtual CellInfo treeViewCellInfo(const SceneItem::Ptr& item,
                                                    const CellInfo& hostLook) const = 0;

    /// The item's icon in a tree view. By default empty; the host then chooses by node type.
    [[nodiscard]] virtual Icon treeViewIcon(const SceneItem::Ptr& item) const;

    /// The text shown while the pointer rests on the item. By default empty, for no text.
    [[nodiscard]] virtual std::string treeViewTooltip(const SceneItem::Ptr& item) const;

    /// The run-time's name as a user interface shows it.
    [[nodiscard]] virtual std::string runTimeLabel() const = 0;
};

} // namespace Kiv_v4
