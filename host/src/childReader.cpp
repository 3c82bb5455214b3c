#include "childReader.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <string>

#include "kiv/host/outline.h"
#include "kiv/log.h"
#include "kiv/runTimeMgr.h"

namespace Kiv_v4::host::detail {

namespace {

/// The run-time's answer; `std::nullopt` if it throws.
template <class Ask>
auto answer(Ask ask) -> decltype(ask())
{
    try {
        return ask();
    } catch (const std::exception& error) {
        log("children", "host/src/childReader", __LINE__,
            std::string("A run-time that was asked for children threw ") + error.what() + "\n");
        return {};
    }
}

Hierarchy::Ptr hierarchyOf(const SceneItem::Ptr& item)
{
    return item && RunTimeMgr::instance().hierarchyHandler(item->runTimeId())
               ? answer([&] { return Hierarchy::hierarchy(item); })
               : nullptr;
}

} // namespace

ChildReader::ChildReader(const SceneItem::Ptr& item, const ChildFilter& filter)
    : _filter(filter), _hierarchy(hierarchyOf(item)),
      _rows(filter.empty() ? std::dynamic_pointer_cast<Hierarchy_v4_2>(_hierarchy) : nullptr)
{}

ChildReader::ChildReader(const ChildFilter& filter) : _filter(filter), _isTop(true) {}

bool ChildReader::hasAny() const
{
    return _isTop || answer([&] {
               return _hierarchy && (_filter.empty() ? _hierarchy->hasChildren()
                                                     : _hierarchy->hasFilteredChildren(_filter));
           });
}

std::vector<SceneItem::Ptr> ChildReader::children(std::size_t first, std::size_t count) const
{
    if (_rows) {
        auto items = answer([&] { return _rows->childRange(first, count); });
        items.remove(nullptr);
        return {items.begin(), items.end()};
    }
    const auto items = all();
    const auto from = std::min(first, items.size());
    const auto to = from + std::min(count, items.size() - from);
    return {std::next(items.begin(), static_cast<std::ptrdiff_t>(from)),
            std::next(items.begin(), static_cast<std::ptrdiff_t>(to))};
}

std::optional<std::size_t> ChildReader::count() const
{
    return answer([&] { return _rows ? std::optional(_rows->nbChildren()) : std::nullopt; });
}

std::optional<std::size_t> ChildReader::rowOf(const Path& child) const
{
    return answer([&] { return _rows ? _rows->row(child) : std::nullopt; });
}

SceneItemList ChildReader::all() const
{
    if (_isTop) {
        return topItems();
    }
    auto items = answer([&] {
        return !_hierarchy       ? SceneItemList()
               : _filter.empty() ? _hierarchy->children()
                                 : _hierarchy->filteredChildren(_filter);
    });
    items.remove(nullptr);
    return items;
}

} // namespace Kiv_v4::host::detail
