#include "kiv/host/itemLookup.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"

namespace Kiv_v4::host {

namespace {

char separatorOf(const SceneItem::Ptr& item)
{
    const auto& path = item->path();
    return path.segment(path.nbSegments() - 1).separator();
}

SceneItem::Ptr childNamed(const SceneItem::Ptr& item, const std::string& name)
{
    if (auto own = Hierarchy::createItem(item->path() + name)) {
        return own;
    }
    const auto hierarchy = Hierarchy::hierarchy(item);
    for (const auto& child : hierarchy ? hierarchy->children() : SceneItemList()) {
        if (child->nodeName() == name) {
            return child;
        }
    }
    return nullptr;
}

SceneItem::Ptr step(const SceneItem::Ptr& item, const std::string& name)
{
    if (name == ".") {
        return item;
    }
    if (name == "..") {
        const auto hierarchy = Hierarchy::hierarchy(item);
        const auto parent = hierarchy ? hierarchy->parent() : nullptr;
        return parent ? parent : item;
    }
    return childNamed(item, name);
}

/// Takes the next name off `text`, with the separators before it; empty if there is none left.
std::string takeName(std::string_view& text)
{
    const auto* begin = std::ranges::find_if_not(text, isSeparator);
    const auto* end = std::find_if(begin, text.end(), isSeparator);
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    return {begin, end};
}

/// The result of following the names of a text.
struct Walk
{
    SceneItem::Ptr item;    ///< The last item that was found.
    std::string lostName{}; ///< The first name that was not found; empty if all were.
};

Walk walk(SceneItem::Ptr item, std::string_view text)
{
    for (auto name = takeName(text); !name.empty(); name = takeName(text)) {
        auto next = step(item, name);
        if (!next) {
            return {item, name};
        }
        item = std::move(next);
    }
    return {item};
}

/// The same from above `root`: the first name, if any, must be that of `root`.
Walk walkFromRoot(const SceneItem::Ptr& root, std::string_view text)
{
    const auto name = takeName(text);
    return name.empty() || name == root->nodeName() ? walk(root, text) : Walk{nullptr, name};
}

bool isAbsolute(const SceneItem::Ptr& root, const std::string& text)
{
    return text.front() == separatorOf(root);
}

Walk walkAlong(const SceneItem::Ptr& root, const SceneItem::Ptr& current, const std::string& text)
{
    return isAbsolute(root, text) ? walkFromRoot(root, text) : walk(current, text);
}

std::vector<std::string> namesUnder(const SceneItem::Ptr& item)
{
    std::vector<std::string> names;
    const auto hierarchy = Hierarchy::hierarchy(item);
    for (const auto& child : hierarchy ? hierarchy->children() : SceneItemList()) {
        names.push_back(child->nodeName());
    }
    return names;
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The number of letters to add, leave out, replace, or swap with the next, from one text to the
/// other.
std::size_t distance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> before;
    std::vector<std::size_t> last(to.size() + 1);
    for (std::size_t i = 0; i <= to.size(); ++i) {
        last[i] = i;
    }
    for (std::size_t row = 1; row <= from.size(); ++row) {
        std::vector<std::size_t> now{row};
        for (std::size_t i = 1; i <= to.size(); ++i) {
            const auto same = lower(from[row - 1]) == lower(to[i - 1]);
            now.push_back(std::min({last[i] + 1, now[i - 1] + 1, last[i - 1] + (same ? 0 : 1)}));
            if (row > 1 && i > 1 && from[row - 1] == to[i - 2] && from[row - 2] == to[i - 1]) {
                now[i] = std::min(now[i], before[i - 2] + 1);
            }
        }
        before = std::exchange(last, std::move(now));
    }
    return last.back();
}

} // namespace

Path pathOf(const std::string& text)
{
    try {
        return PathString::path(text);
    } catch (const EmptyPathSegment&) {
    } catch (const InvalidPath&) {
    } catch (const InvalidPathComponentSeparator&) {
    }
    return {};
}

SceneItem::Ptr lookUp(const SceneItem::Ptr& root, const SceneItem::Ptr& current,
                      const std::string& text)
{
    if (text.empty()) {
        return nullptr;
    }
    // Path strings first, since names may contain separators of other run-times.
    const auto here = [&] { return PathString::string(current->path()) + separatorOf(current); };
    if (auto exact = Hierarchy::createItem(pathOf(isAbsolute(root, text) ? text : here() + text))) {
        return exact;
    }
    auto found = walkAlong(root, current, text);
    return found.lostName.empty() ? found.item : nullptr;
}

SceneItem::Ptr requireItem(const SceneItem::Ptr& root, const SceneItem::Ptr& current,
                           const std::string& text)
{
    if (auto found = lookUp(root, current, text)) {
        return found;
    }
    auto message = "no such item '" + text + "'";
    if (!text.empty()) {
        const auto lost = walkAlong(root, current, text);
        const auto names = lost.item ? namesUnder(lost.item) : std::vector{root->nodeName()};
        message += suggestion(lost.lostName, names);
    }
    throw std::runtime_error(message);
}

std::string nearestName(std::string_view word, const std::vector<std::string>& names)
{
    auto limit = word.size() / 3;
    std::string nearest;
    for (const auto& name : names) {
        const auto difference =
            std::max(word.size(), name.size()) - std::min(word.size(), name.size());
        const auto far = difference > limit ? limit + 1 : distance(word, name);
        if (far < limit || (far == limit && nearest.empty())) {
            limit = far;
            nearest = name;
        }
    }
    return nearest;
}

std::string suggestion(std::string_view word, const std::vector<std::string>& names)
{
    const auto nearest = nearestName(word, names);
    return nearest.empty() ? "" : "; did you mean '" + nearest + "'?";
}

bool isSeparator(char c)
{
    return c == '/' || PathString::pathSegmentSeparator().find(c) != std::string::npos ||
           !PathString::pathComponentSeparatorRunTimeIds(c).empty();
}

} // namespace Kiv_v4::host
