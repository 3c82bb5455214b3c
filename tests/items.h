#pragma once

#include <vector>

#include "kiv/hierarchy.h"

namespace test {

/// All items under and including `top`, parents before their children.
inline std::vector<Kiv_v4::SceneItem::Ptr> allUnder(const Kiv_v4::SceneItem::Ptr& top)
{
    std::vector<Kiv_v4::SceneItem::Ptr> items{top};
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto children = Kiv_v4::Hierarchy::hierarchy(items[i])->children();
        items.insert(items.end(), children.begin(), children.end());
    }
    return items;
}

} // namespace test
