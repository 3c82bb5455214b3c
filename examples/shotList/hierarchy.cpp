#include "hierarchy.h"

#include <unordered_set>
#include <utility>

#include "commands.h"

namespace {

/// The structure around one entry, looked up at each call.
class EntryHierarchy : public Kiv::Hierarchy
{
public:
    EntryHierarchy(EntriesPtr entries, Kiv::SceneItem::Ptr item)
        : _entries(std::move(entries)), _item(std::move(item))
    {}

    [[nodiscard]] Kiv::SceneItem::Ptr sceneItem() const override { return _item; }

    [[nodiscard]] bool hasChildren() const override
    {
        const auto* entry = _entries->find(_item->path());
        return entry && !entry->children.empty();
    }

    [[nodiscard]] Kiv::SceneItemList children() const override
    {
        Kiv::SceneItemList items;
        if (const auto* entry = _entries->find(_item->path())) {
            for (const auto& child : entry->children) {
                items.push_back(_entries->item(_item->path() + child.name));
            }
        }
        return items;
    }

    // There is nothing to filter by.

    [[nodiscard]] bool hasFilteredChildren(Kiv::ChildFilter const&) const override
    {
        return hasChildren();
    }

    [[nodiscard]] Kiv::SceneItemList filteredChildren(Kiv::ChildFilter const&) const override
    {
        return children();
    }

    [[nodiscard]] Kiv::ChildFilter defaultChildFilter() const override { return {}; }

    [[nodiscard]] Kiv::SceneItem::Ptr parent() const override
    {
        return _entries->item(_item->path().pop());
    }

    [[nodiscard]] Kiv::SceneItem::Ptr defaultParent() const override
    {
        return childType(_item->nodeType()).empty() ? parent() : _item;
    }

    [[nodiscard]] Kiv::SceneItemResultUndoableCommand::Ptr
    createChildCmd(std::string const& nodeType, Kiv::PathComponent const& name) override
    {
        const auto* entry = _entries->find(_item->path());
        if (!entry || nodeType.empty() || childType(entry->type) != nodeType) {
            return nullptr;
        }
        return addCmd(_entries, _item->path(), [nodeType, name] {
            Entry child;
            child.name = name.string();
            child.type = nodeType;
            return child;
        });
    }

    [[nodiscard]] Kiv::UndoableCommand::Ptr
    reorderCmd(Kiv::SceneItemList const& orderedList) override
    {
        auto* entry = _entries->find(_item->path());
        std::list<std::string> names;
        std::unordered_set<Kiv::Path> seen;
        for (const auto& item : orderedList) {
            if (!item || !_entries->find(item->path()) || item->path().pop() != _item->path() ||
                !seen.insert(item->path()).second) {
                return nullptr;
            }
            names.push_back(item->nodeName());
        }
        return entry && names.size() == entry->children.size()
                   ? ::reorderCmd(_entries, _item->path(), names)
                   : nullptr;
    }

    // A shot stays in its sequence.

    [[nodiscard]] Kiv::InsertChildCommand::Ptr insertChildCmd(Kiv::SceneItem::Ptr const&,
                                                              Kiv::SceneItem::Ptr const&) override
    {
        return nullptr;
    }

    [[nodiscard]] Kiv::SceneItemResultUndoableCommand::Ptr
    createGroupCmd(Kiv::SceneItemList const&, Kiv::PathComponent const&) override
    {
        return nullptr;
    }

    [[nodiscard]] Kiv::UndoableCommand::Ptr ungroupCmd() override { return nullptr; }

private:
    const EntriesPtr _entries;
    const Kiv::SceneItem::Ptr _item;
};

class EntryHierarchyHandler : public Kiv::HierarchyHandler
{
public:
    explicit EntryHierarchyHandler(EntriesPtr entries) : _entries(std::move(entries)) {}

    [[nodiscard]] Kiv::Hierarchy::Ptr hierarchy(Kiv::SceneItem::Ptr const& item) override
    {
        return std::make_shared<EntryHierarchy>(_entries, item);
    }

    [[nodiscard]] Kiv::SceneItem::Ptr createItem(Kiv::Path const& path) override
    {
        return _entries->item(path);
    }

    [[nodiscard]] Kiv::SceneItemList rootItems(Kiv::Path const& gateway) override
    {
        return gateway.empty() ? Kiv::SceneItemList{_entries->item(_entries->rootPath())}
                               : Kiv::SceneItemList{};
    }

private:
    const EntriesPtr _entries;
};

} // namespace

Kiv::HierarchyHandler::Ptr makeHierarchyHandler(const EntriesPtr& entries)
{
    return std::make_shared<EntryHierarchyHandler>(entries);
}
