#pragma once

#include <string>
#include <vector>

#include "kiv/host/comparison.h"

namespace Kiv_v4::host {

/// A value of an item by its names.
struct ItemValue
{
    std::string group;
    std::string name;
    PropertyValue value;
};

/// The values of an item that a comparison looks at.
[[nodiscard]] std::vector<ItemValue> valuesOf(const SceneItem::Ptr& item,
                                              const ComparisonOptions& options);

/// Adds what differs in the values of the same item.
void compareValues(const SceneItem::Ptr& before, const SceneItem::Ptr& after,
                   const ComparisonOptions& options, std::vector<Difference>& differences);

} // namespace Kiv_v4::host
