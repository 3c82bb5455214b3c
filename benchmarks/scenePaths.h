#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "kiv/path.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "rows.h"

namespace kivBench {

/// The texts of `count` different paths of a scene, siblings side by side: 4 to 10 components in
/// two segments, about 55 characters, 10 to 100 siblings in a group. Most groups number their
/// children from 1, as instances of an asset do, so that the same names occur under many parents;
/// one in four numbers them through the scene.
inline std::vector<std::string> makeSceneTexts(std::size_t count)
{
    static constexpr std::array<std::string_view, 16> kWords = {
        "arm",  "bolt",  "crate", "door",  "frame", "glass", "hinge", "lamp",
        "leaf", "panel", "pipe",  "shelf", "spoke", "stone", "tire",  "wheel"};
    constexpr std::size_t kRootDepth = 3;
    constexpr std::size_t kMaxDepth = 10;

    Random random(2);
    std::vector<std::string> texts;
    texts.reserve(count);
    // The paths that may still get children, by depth. The roots, one segment each, get them
    // repeatedly.
    std::array<std::vector<std::string>, kMaxDepth> open;
    for (int root = 0; root < 32; ++root) {
        open[kRootDepth].push_back("/world/set" + std::to_string(root % 4) + "/asset" +
                                   std::to_string(root) + ',');
    }
    while (texts.size() < count) {
        auto depth = kRootDepth + random.below(kMaxDepth - kRootDepth);
        while (open[depth].empty()) {
            --depth;
        }
        auto& parents = open[depth];
        std::swap(parents[random.below(parents.size())], parents.back());
        const auto parent = parents.back();
        if (depth > kRootDepth) {
            parents.pop_back();
        }
        const auto group = texts.size();
        const auto numberThrough = depth == kRootDepth || random.below(4) == 0;
        const auto word = kWords[random.below(kWords.size())];
        const auto end = std::min(count, group + 10 + random.below(91));
        for (auto number = numberThrough ? group : 1; texts.size() < end; ++number) {
            texts.push_back(parent + ':' + std::string(word) + std::to_string(number));
            if (depth + 1 < kMaxDepth) {
                open[depth + 1].push_back(texts.back());
            }
        }
    }
    return texts;
}

/// The same, made once per count and kept, after the run-times of the paths were registered.
inline const std::vector<std::string>& sceneTexts(std::size_t count)
{
    [[maybe_unused]] static const bool registered = [] {
        for (const auto separator : {'/', ':'}) {
            const auto id = Kiv_v4::RunTimeMgr::instance().register_({separator}, {});
            Kiv_v4::PathString::registerPathComponentSeparator(id, separator);
        }
        return true;
    }();
    static std::map<std::size_t, std::vector<std::string>> scenes;
    auto& texts = scenes[count];
    if (texts.empty()) {
        texts = makeSceneTexts(count);
    }
    return texts;
}

/// The text in a peer's notation, with `/` before each component.
inline std::string slashed(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), ','), text.end());
    std::replace(text.begin(), text.end(), ':', '/');
    return text;
}

/// The paths of `sceneTexts(count)` as `Item`: `Path`, or a peer that is made of a slashed text.
/// Made once per count and kept.
template <class Item>
const std::vector<Item>& scene(std::size_t count)
{
    static std::map<std::size_t, std::vector<Item>> scenes;
    auto& items = scenes[count];
    if (items.empty()) {
        items.reserve(count);
        for (const auto& text : sceneTexts(count)) {
            if constexpr (std::is_same_v<Item, Kiv_v4::Path>) {
                items.push_back(Kiv_v4::PathString::path(text));
            } else {
                items.emplace_back(slashed(text));
            }
        }
    }
    return items;
}

} // namespace kivBench
