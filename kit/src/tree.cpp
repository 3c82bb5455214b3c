#include "kiv/kit/tree.h"

#include <unordered_set>
#include <utility>

#include "kiv/kit/bases.h"
#include "kiv/kit/handlers.h"
#include "kiv/kit/names.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/uniqueName.h"

#include "treeCommands.h"

namespace Kiv_v4::kit {

namespace {

/// An item as it was when it was made.
class TreeItem : public SceneItem
{
public:
    TreeItem(const Path& path, std::string type) : SceneItem(path), _type(std::move(type)) {}

    [[nodiscard]] std::string nodeType() const override { return _type; }

private:
    const std::string _type;
};

bool isRoot(const Path& path)
{
    return path.pop().nbSegments() < path.nbSegments();
}

/// Takes each child and puts it last; puts the one at hand back if that throws.
void inOrder(Tree& tree, const Path& parent, const std::vector<std::string>& names)
{
    for (const auto& name : names) {
        const auto path = parent + name;
        const auto row = rowOf(tree, parent, name);
        const auto part = tree.take(path);
        try {
            tree.put(path, part, Tree::kLast);
        } catch (...) {
            tree.put(path, part, row);
            throw;
        }
    }
}

class TreeHierarchy : public HierarchyBase
{
public:
    TreeHierarchy(Tree::Ptr tree, SceneItem::Ptr item)
        : HierarchyBase(std::move(item)), _tree(std::move(tree))
    {}

    [[nodiscard]] bool hasChildren() const override { return !_tree->children(path()).empty(); }

    [[nodiscard]] SceneItemList children() const override
    {
        SceneItemList items;
        for (auto& child : _tree->children(path())) {
            items.push_back(
                std::make_shared<TreeItem>(path() + child.name, std::move(child.nodeType)));
        }
        return items;
    }

    [[nodiscard]] SceneItem::Ptr defaultParent() const override
    {
        for (auto place = path(); place.nbSegments() == path().nbSegments(); place = place.pop()) {
            if (accepts(place, {})) {
                return _tree->item(place);
            }
        }
        return nullptr;
    }

    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    createChildCmd(const std::string& nodeType, const PathComponent& name) override
    {
        return !nodeType.empty() && accepts(path(), nodeType)
                   ? addCmd(_tree, path(), name.string(), "Add " + nodeType,
                            [tree = _tree, nodeType] { return tree->make(nodeType); })
                   : nullptr;
    }

    [[nodiscard]] InsertChildCommand::Ptr insertChildCmd(const SceneItem::Ptr& child,
                                                         const SceneItem::Ptr& before) override
    {
        const auto isSettled = child && _tree->item(child->path()) && !isRoot(child->path());
        if (!isSettled || path().isAtOrBelow(child->path()) || !_tree->isEditable(child->path()) ||
            !accepts(path(), _tree->nodeType(child->path()))) {
            return nullptr;
        }
        if (!before) {
            return moveCmd(_tree, child->path(), path(), {});
        }
        const auto isPlace = before->path() != child->path() && _tree->item(before->path()) &&
                             !isRoot(before->path()) && before->path().pop() == path();
        return isPlace ? moveCmd(_tree, child->path(), path(), before->nodeName()) : nullptr;
    }

    [[nodiscard]] UndoableCommand::Ptr reorderCmd(const SceneItemList& orderedList) override
    {
        std::unordered_set<std::string> missing;
        for (auto& child : _tree->children(path())) {
            missing.insert(std::move(child.name));
        }
        std::vector<std::string> names;
        for (const auto& item : orderedList) {
            if (!item || isRoot(item->path()) || item->path().pop() != path() ||
                missing.erase(item->nodeName()) == 0) {
                return nullptr;
            }
            names.push_back(item->nodeName());
        }
        return missing.empty() && accepts(path(), {})
                   ? kit::reorderCmd(_tree, path(), std::move(names))
                   : nullptr;
    }

private:
    [[nodiscard]] bool accepts(const Path& parent, const std::string& nodeType) const
    {
        return !_tree->nodeType(parent).empty() && _tree->accepts(parent, nodeType);
    }

    const Tree::Ptr _tree;
};

class TreeItemOps : public SceneItemOpsBase
{
public:
    TreeItemOps(Tree::Ptr tree, SceneItem::Ptr item)
        : SceneItemOpsBase(std::move(item)), _tree(std::move(tree))
    {}

    [[nodiscard]] UndoableCommand::Ptr deleteItemCmd() override
    {
        return isEditable() ? removeCmd(_tree, path()) : nullptr;
    }

    [[nodiscard]] SceneItemResultUndoableCommand::Ptr duplicateItemCmd() override
    {
        return isEditable() ? addCmd(_tree, path().pop(), path().back().string(),
                                     "Duplicate " + path().back().string(),
                                     [tree = _tree, source = path()] { return tree->copy(source); })
                            : nullptr;
    }

    [[nodiscard]] PathComponent validName(const PathComponent& name) const override
    {
        return isEditable() ? PathComponent(_tree->freeName(path().pop(), name.string(),
                                                            path().back().string()))
                            : PathComponent();
    }

    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    renameItemCmd(const PathComponent& newName) override
    {
        return isEditable() ? renameCmd(_tree, path(), newName.string()) : nullptr;
    }

private:
    [[nodiscard]] bool isEditable() const
    {
        return _tree->item(path()) && !isRoot(path()) && _tree->isEditable(path());
    }

    const Tree::Ptr _tree;
};

} // namespace

Tree::Tree(Path root) : _root(std::move(root)) {}
Tree::~Tree() = default;

bool Tree::covers(const Path& path) const
{
    return path.nbSegments() == _root.nbSegments() && path.startsWith(_root) &&
           path.runTimeId() == _root.runTimeId();
}

std::vector<Path> Tree::roots(const Path& gateway) const
{
    return gateway == _root.popSegment() ? std::vector{_root} : std::vector<Path>();
}

bool Tree::accepts(const Path&, const std::string&) const
{
    return false;
}

bool Tree::isEditable(const Path& path) const
{
    return accepts(path.pop(), nodeType(path));
}

Tree::Part Tree::make(const std::string&)
{
    return nullptr;
}

Tree::Part Tree::copy(const Path&)
{
    return nullptr;
}

Tree::Part Tree::take(const Path&)
{
    return nullptr;
}

void Tree::put(const Path&, const Part&, std::size_t) {}

void Tree::rename(const Path& path, const std::string& name)
{
    const auto row = rowOf(*this, path.pop(), path.back().string());
    const auto renamed = path.sibling(name);
    const auto part = take(path);
    try {
        put(renamed, part, row);
    } catch (...) {
        put(path, part, row);
        throw;
    }
}

void Tree::reorder(const Path& parent, const std::vector<std::string>& names)
{
    std::vector<std::string> before;
    for (auto& child : children(parent)) {
        before.push_back(std::move(child.name));
    }
    try {
        inOrder(*this, parent, names);
    } catch (...) {
        inOrder(*this, parent, before);
        throw;
    }
}

std::string Tree::freeName(const Path& parent, const std::string& name,
                           const std::string& own) const
{
    std::unordered_set<std::string> taken;
    for (auto& child : children(parent)) {
        taken.insert(std::move(child.name));
    }
    taken.erase(own);
    const auto separator = parent.segment(parent.nbSegments() - 1).separator();
    const auto unfit = PathString::pathSegmentSeparator() + separator;
    return uniqueName(fitName(name, unfit),
                      [&](const auto& candidate) { return taken.count(candidate) != 0; });
}

SceneItem::Ptr Tree::item(const Path& path) const
{
    auto type = path.empty() ? std::string() : nodeType(path);
    return type.empty() ? nullptr : std::make_shared<TreeItem>(path, std::move(type));
}

void registerTree(Rtid runTimeId, const Tree::Ptr& tree)
{
    auto& manager = RunTimeMgr::instance();
    const auto hierarchy = [tree](const SceneItem::Ptr& item) {
        return std::make_shared<TreeHierarchy>(tree, item);
    };
    const auto roots = [tree](const Path& gateway) {
        SceneItemList items;
        for (const auto& path : tree->roots(gateway)) {
            items.push_back(tree->item(path));
        }
        return items;
    };
    manager.setHierarchyHandler(
        runTimeId, hierarchyHandler(
                       hierarchy, [tree](const Path& path) { return tree->item(path); }, roots));
    manager.setSceneItemOpsHandler(runTimeId, sceneItemOpsHandler([tree](const auto& item) {
                                       return std::make_shared<TreeItemOps>(tree, item);
                                   }));
}

} // namespace Kiv_v4::kit
