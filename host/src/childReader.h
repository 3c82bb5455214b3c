#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "kiv/childFilter.h"
#include "kiv/hierarchy_v4_2.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host::detail {

/// Reads the children of an item, or the top items of all run-times, in the cheapest way that the
/// run-time offers. Exceptions of a run-time are written to the log and read as no children.
class ChildReader
{
public:
    /// A null item has no children.
    ChildReader(const SceneItem::Ptr& item, const ChildFilter& filter);

    /// The top items.
    explicit ChildReader(const ChildFilter& filter);

    [[nodiscard]] bool hasAny() const;

    /// Whether it costs less to read some of the children than all.
    [[nodiscard]] bool readsRanges() const { return _rows != nullptr; }

    /// At most `count` children from `first` on.
    [[nodiscard]] std::vector<SceneItem::Ptr> children(std::size_t first, std::size_t count) const;

    /// The number of children, if that costs less than listing them.
    [[nodiscard]] std::optional<std::size_t> count() const;

    /// The row of the child of that path, under the same condition.
    [[nodiscard]] std::optional<std::size_t> rowOf(const Path& child) const;

private:
    [[nodiscard]] SceneItemList all() const;

    const ChildFilter& _filter;
    const Hierarchy::Ptr _hierarchy; ///< Null if there is none.
    const Hierarchy_v4_2::Ptr _rows; ///< The same, if it can read rows.
    const bool _isTop = false;
};

} // namespace Kiv_v4::host::detail
