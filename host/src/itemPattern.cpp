#include "kiv/host/itemPattern.h"

#include <algorithm>
#include <fnmatch.h>
#include <limits>
#include <unordered_set>

#include "kiv/hierarchy.h"
#include "kiv/host/itemLookup.h"

namespace Kiv_v4::host {

namespace {

constexpr std::string_view kAnyLevels = "**";

/// The names between the separators.
std::vector<std::string> namesIn(const std::string& pattern)
{
    std::vector<std::string> names;
    auto begin = pattern.begin();
    while (begin != pattern.end()) {
        const auto end = std::find_if(begin, pattern.end(), isSeparator);
        if (begin != end) {
            names.emplace_back(begin, end);
        }
        begin = end == pattern.end() ? end : end + 1;
    }
    return names;
}

/// Items in the order in which they came, each once.
class Found
{
public:
    explicit Found(const OnVisit& onVisit) : _onVisit(onVisit) {}

    void visit() const
    {
        if (_onVisit) {
            _onVisit();
        }
    }

    void add(const SceneItem::Ptr& item)
    {
        if (item && _paths.insert(item->path()).second) {
            items.push_back(item);
        }
    }

    std::vector<SceneItem::Ptr> items;

private:
    const OnVisit& _onVisit;
    std::unordered_set<Path> _paths;
};

void addBelow(Found& found, const SceneItem::Ptr& top, bool withTop)
{
    walk(top, std::numeric_limits<std::size_t>::max(),
         [&](const SceneItem::Ptr& item, std::size_t depth) {
             found.visit();
             if (withTop || depth > 0) {
                 found.add(item);
             }
             return true;
         });
}

void addStep(Found& found, const SceneItem::Ptr& item, const std::string& name, bool isLast)
{
    const auto hierarchy = Hierarchy::hierarchy(item);
    if (name == ".") {
        found.add(item);
    } else if (name == "..") {
        found.add(hierarchy && hierarchy->parent() ? hierarchy->parent() : item);
    } else if (name == kAnyLevels) {
        addBelow(found, item, !isLast);
    } else {
        for (const auto& child : hierarchy ? hierarchy->children() : SceneItemList()) {
            found.visit();
            if (isLike(child->nodeName(), name)) {
                found.add(child);
            }
        }
    }
}

} // namespace

bool isLike(const std::string& text, const std::string& pattern, bool ignoresCase)
{
    return ::fnmatch(pattern.c_str(), text.c_str(), ignoresCase ? FNM_CASEFOLD : 0) == 0;
}

bool isPattern(std::string_view text) noexcept
{
    return text.find_first_of("*?[") != text.npos;
}

std::vector<SceneItem::Ptr> itemsLike(const SceneItem::Ptr& root, const SceneItem::Ptr& current,
                                      const std::string& pattern, const OnVisit& onVisit)
{
    const auto names = namesIn(pattern);
    auto name = names.begin();
    std::vector<SceneItem::Ptr> items{current};
    if (!pattern.empty() && isSeparator(pattern.front())) { // the first name is the root's own
        items = {root};
        if (name != names.end() && *name != kAnyLevels) {
            if (!isLike(root->nodeName(), *name)) {
                return {};
            }
            ++name;
        }
    }
    for (; name != names.end(); ++name) {
        Found found(onVisit);
        for (const auto& item : items) {
            addStep(found, item, *name, name + 1 == names.end());
        }
        items = std::move(found.items);
    }
    return items;
}

} // namespace Kiv_v4::host
