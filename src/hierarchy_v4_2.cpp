#include "kiv/hierarchy_v4_2.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "kiv/compositeUndoableCommand.h"

namespace Kiv_v4 {

namespace {

/// Adapts any hierarchy to the later interface.
class DefaultHierarchy : public Hierarchy_v4_2
{
public:
    explicit DefaultHierarchy(Hierarchy::Ptr wrapped) : _wrapped(std::move(wrapped)) {}

    SceneItem::Ptr sceneItem() const override { return _wrapped->sceneItem(); }
    bool hasChildren() const override { return _wrapped->hasChildren(); }
    SceneItemList children() const override { return _wrapped->children(); }
    bool hasFilteredChildren(const ChildFilter& filter) const override
    {
        return _wrapped->hasFilteredChildren(filter);
    }
    SceneItemList filteredChildren(const ChildFilter& filter) const override
    {
        return _wrapped->filteredChildren(filter);
    }
    ChildFilter defaultChildFilter() const override { return _wrapped->defaultChildFilter(); }
    SceneItem::Ptr parent() const override { return _wrapped->parent(); }
    SceneItem::Ptr defaultParent() const override { return _wrapped->defaultParent(); }
    SceneItemResultUndoableCommand::Ptr createChildCmd(const std::string& nodeType,
                                                       const PathComponent& name) override
    {
        return _wrapped->createChildCmd(nodeType, name);
    }
    InsertChildCommand::Ptr insertChildCmd(const SceneItem::Ptr& child,
                                           const SceneItem::Ptr& before) override
    {
        return _wrapped->insertChildCmd(child, before);
    }
    SceneItemResultUndoableCommand::Ptr createGroupCmd(const SceneItemList& members,
                                                       const PathComponent& name) override
    {
        return _wrapped->createGroupCmd(members, name);
    }
    UndoableCommand::Ptr reorderCmd(const SceneItemList& orderedList) override
    {
        return _wrapped->reorderCmd(orderedList);
    }
    bool reorder(const SceneItemList& orderedList) override
    {
        return _wrapped->reorder(orderedList);
    }
    UndoableCommand::Ptr ungroupCmd() override { return _wrapped->ungroupCmd(); }
    bool ungroup() override { return _wrapped->ungroup(); }

private:
    const Hierarchy::Ptr _wrapped;
};

/// Lists the children of each item on the way.
class ChildListWalk : public SegmentWalk
{
public:
    explicit ChildListWalk(SceneItem::Ptr top) : _runTimeId(top->runTimeId()), _item(std::move(top))
    {}

    bool next() override
    {
        if (!_begun) {
            _begun = true;
        } else {
            listChildren();
            while (!_left.empty() && _left.back().empty()) {
                _left.pop_back();
            }
            if (_left.empty()) {
                return false;
            }
            _item = std::move(_left.back().front());
            _left.back().pop_front();
        }
        _mayDescend = true;
        _name = _item->path().back();
        _nodeType = _item->nodeType();
        return true;
    }

    void skipSubtree() override { _mayDescend = false; }

    std::size_t depth() const override { return _left.size(); }
    Rtid runTimeId() const override { return _item->runTimeId(); }
    const PathComponent& name() const override { return _name; }
    const std::string& nodeType() const override { return _nodeType; }
    Path path() const override { return _item->path(); }
    SceneItem::Ptr item() const override { return _item; }

private:
    void listChildren()
    {
        if (!std::exchange(_mayDescend, false) || _item->runTimeId() != _runTimeId) {
            return;
        }
        if (const auto hierarchy = Hierarchy::hierarchy(_item)) {
            _left.push_back(hierarchy->children());
        }
    }

    const Rtid _runTimeId;
    SceneItem::Ptr _item;
    PathComponent _name;
    std::string _nodeType;
    std::vector<SceneItemList> _left; ///< The remaining siblings on each level.
    bool _begun = false;
    bool _mayDescend = false;
};

} // namespace

Hierarchy_v4_2::Ptr Hierarchy_v4_2::hierarchy(const SceneItem::Ptr& item)
{
    return std::dynamic_pointer_cast<Hierarchy_v4_2>(Hierarchy::hierarchy(item));
}

Hierarchy_v4_2::Ptr Hierarchy_v4_2::hierarchyOrDefault(const SceneItem::Ptr& item)
{
    auto found = Hierarchy::hierarchy(item);
    auto extended = std::dynamic_pointer_cast<Hierarchy_v4_2>(found);
    return extended || !found ? extended : std::make_shared<DefaultHierarchy>(std::move(found));
}

Hierarchy_v4_2::~Hierarchy_v4_2() = default;

std::size_t Hierarchy_v4_2::nbChildren() const
{
    return children().size();
}

SceneItem::Ptr Hierarchy_v4_2::child(std::size_t row) const
{
    auto found = childRange(row, 1);
    return found.empty() ? nullptr : std::move(found.front());
}

std::optional<std::size_t> Hierarchy_v4_2::row(const Path& child) const
{
    const auto list = children();
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const auto& item) { return item->path() == child; });
    return found == list.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(std::distance(list.begin(), found)));
}

SceneItemList Hierarchy_v4_2::childRange(std::size_t first, std::size_t count) const
{
    auto list = children();
    const auto begin = std::min(first, list.size());
    const auto from = std::next(list.begin(), static_cast<std::ptrdiff_t>(begin));
    const auto to =
        std::next(from, static_cast<std::ptrdiff_t>(std::min(count, list.size() - begin)));
    SceneItemList range;
    range.splice(range.end(), list, from, to);
    return range;
}

std::vector<ChildInfo> Hierarchy_v4_2::childInfos(std::size_t first, std::size_t count) const
{
    std::vector<ChildInfo> infos;
    for (const auto& item : childRange(first, count)) {
        infos.push_back({item->path().back(), item->nodeType(), item->runTimeId()});
    }
    return infos;
}

UndoableCommand::Ptr Hierarchy_v4_2::createChildrenCmd(const std::string& nodeType,
                                                       const std::vector<PathComponent>& names)
{
    auto all = std::make_shared<CompositeUndoableCommand>();
    for (const auto& name : names) {
        const auto one = createChildCmd(nodeType, name);
        if (!one) {
            return nullptr;
        }
        all->append(one);
    }
    return all;
}

SegmentWalk::Ptr Hierarchy_v4_2::segmentWalk() const
{
    return std::make_unique<ChildListWalk>(sceneItem());
}

} // namespace Kiv_v4
