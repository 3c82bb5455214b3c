#include "itemLookup.h"

#include <algorithm>
#include <string_view>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

/// The item of a path string; null for text that is no path.
SceneItem::Ptr itemAt(const std::string& text)
{
    try {
        return Hierarchy::createItem(PathString::path(text));
    } catch (const EmptyPathSegment&) {
    } catch (const InvalidPath&) {
    } catch (const InvalidPathComponentSeparator&) {
    }
    return nullptr;
}

char separatorOf(const SceneItem::Ptr& item)
{
    const auto& path = item->path();
    return path.segment(path.nbSegments() - 1).separator();
}

SceneItem::Ptr childNamed(const SceneItem::Ptr& item, const std::string& name)
{
    if (const auto own = Hierarchy::createItem(item->path() + name)) {
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

/// Takes the next name off `text`, with the separators before it; empty when there is none left.
std::string takeName(std::string_view& text)
{
    const auto* begin = std::ranges::find_if_not(text, isSeparator);
    const auto* end = std::find_if(begin, text.end(), isSeparator);
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    return {begin, end};
}

/// Goes down from `item` name by name.
SceneItem::Ptr walk(SceneItem::Ptr item, std::string_view text)
{
    for (auto name = takeName(text); item && !name.empty(); name = takeName(text)) {
        item = step(item, name);
    }
    return item;
}

/// Goes down from `root`, which the text names first unless it names nothing.
SceneItem::Ptr walkFromRoot(const SceneItem::Ptr& root, std::string_view text)
{
    const auto name = takeName(text);
    return name.empty() || name == root->nodeName() ? walk(root, text) : nullptr;
}

} // namespace

SceneItem::Ptr lookUp(const SceneItem::Ptr& root, const SceneItem::Ptr& current,
                      const std::string& text)
{
    if (text.empty()) {
        return nullptr;
    }
    const auto isAbsolute = text.front() == separatorOf(root);
    // Path strings first, since names may hold what separates the names of other run-times.
    const auto here = PathString::string(current->path());
    const auto exact = isAbsolute ? itemAt(text) : itemAt(here + separatorOf(current) + text);
    if (exact) {
        return exact;
    }
    return isAbsolute ? walkFromRoot(root, text) : walk(current, text);
}

bool isSeparator(char c)
{
    return c == '/' || PathString::pathSegmentSeparator().find(c) != std::string::npos ||
           !PathString::pathComponentSeparatorRunTimeIds(c).empty();
}

} // namespace app::shell
