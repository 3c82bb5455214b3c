#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/stringUtils.h"

namespace test {

/// The run-time whose segments `path` below writes with that separator.
inline Kiv_v4::Rtid runTimeOf(char separator)
{
    return static_cast<Kiv_v4::Rtid>(separator);
}

/// The path that a compact notation writes: segments between bars, each with its separator in
/// front, as in `/a/b|:c`; the separator alone is an empty segment. Each separator has a run-time
/// of its own.
inline Kiv_v4::Path path(const std::string& notation)
{
    std::vector<Kiv_v4::PathSegment> segments;
    for (const auto& text : Kiv_v4::split(notation, '|')) {
        segments.emplace_back(text, runTimeOf(text.front()), text.front());
    }
    return segments;
}

/// The notation of a path whose names contain no bars.
inline std::string notation(const Kiv_v4::Path& path)
{
    std::string text;
    for (const auto& segment : path.getSegments()) {
        text += text.empty() ? "" : "|";
        text += segment.empty() ? std::string(1, segment.separator()) : segment.string();
    }
    return text;
}

/// An item with only a path.
class Item : public Kiv_v4::SceneItem
{
public:
    using SceneItem::SceneItem;

    [[nodiscard]] std::string nodeType() const override { return "item"; }
};

/// An item at the path that the notation of paths.h writes.
inline Kiv_v4::SceneItem::Ptr itemAt(const std::string& notation)
{
    return std::make_shared<Item>(path(notation));
}

} // namespace test
