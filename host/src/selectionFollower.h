#pragma once

#include <memory>
#include <span>

#include "kiv/host/hostScene.h"
#include "kiv/observer.h"
#include "kiv/selection.h"

#include "ops.h"

namespace Kiv_v4::host::detail {

/// Lets one selection follow the scene.
class SelectionFollower
{
public:
    SelectionFollower(const Selection::Ptr& selection, HostScene::Gone gone);
    SelectionFollower(const SelectionFollower&) = delete;
    SelectionFollower& operator=(const SelectionFollower&) = delete;
    ~SelectionFollower();

    /// The selection; null if it has died.
    [[nodiscard]] Selection::Ptr selection() const { return _selection.lock(); }

    void setGone(HostScene::Gone gone) { _gone = gone; }

    /// The changes of one notification.
    void follow(std::span<const Op> ops, bool isBatch);

    /// Drops the items whose path leads through the run-time.
    void leave(Rtid runTimeId);

private:
    struct Lost;
    struct Memory;

    void bringBack(Selection& selection, std::span<const Op> ops);

    const std::weak_ptr<Selection> _selection;
    HostScene::Gone _gone;
    const std::shared_ptr<Memory> _memory; ///< An observer of the selection, if it can have any.
};

} // namespace Kiv_v4::host::detail
