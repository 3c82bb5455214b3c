#pragma once

#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"

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

/// The names of items of any container.
template <class Items>
std::vector<std::string> namesOf(const Items& items)
{
    std::vector<std::string> names;
    for (const auto& item : items) {
        names.push_back(item->nodeName());
    }
    return names;
}

/// The paths, as text, of items of any container.
template <class Items>
std::vector<std::string> pathsOf(const Items& items)
{
    std::vector<std::string> paths;
    for (const auto& item : items) {
        paths.push_back(Kiv_v4::PathString::string(item->path()));
    }
    return paths;
}

/// Expects each path to be the same after writing and reading its text, and to name an equal item.
inline void expectReachable(const std::vector<Kiv_v4::SceneItem::Ptr>& items)
{
    for (const auto& item : items) {
        const auto text = Kiv_v4::PathString::string(item->path());
        ASSERT_EQ(Kiv_v4::PathString::path(text), item->path()) << text;
        const auto again = Kiv_v4::Hierarchy::createItem(item->path());
        ASSERT_TRUE(again) << text;
        ASSERT_EQ(*again, *item);
        ASSERT_EQ(again->nodeType(), item->nodeType());
    }
}

} // namespace test
