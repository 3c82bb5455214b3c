#include "steps.h"

#include <stdexcept>
#include <unordered_set>
#include <utility>

#include "kiv/pathString.h"

#include "announcements.h"
#include "itemNames.h"
#include "memoryItem.h"

namespace Kiv_v4::memory {

namespace {

void requireFree(Tree& tree, const Node& parent, const PathComponent& name)
{
    if (tree.child(parent, name)) {
        refuse(tree.pathOf(parent), "already has a child '" + name.string() + "'.");
    }
}

Node& required(Node* node, const Path& path)
{
    if (!node) {
        refuse(path, "names no item.");
    }
    return *node;
}

/// The sibling to insert before; null for the null component, which means last.
Node* sibling(Tree& tree, const Path& parentPath, const Node& parent, const PathComponent& name)
{
    auto* found = name ? tree.child(parent, name) : nullptr;
    if (name && !found) {
        refuse(parentPath, "has no child '" + name.string() + "'.");
    }
    return found;
}

/// A subtree at its place.
class PlacedItem
{
public:
    PlacedItem(std::shared_ptr<Tree> tree, Detached&& outside, Place place)
        : _tree(std::move(tree)), _outside(std::move(outside)), _place(std::move(place))
    {}

    void enter()
    {
        if (std::exchange(_wasTaken, false)) {
            return;
        }
        if (!_outside.get()) {
            refuse(_place.path(), "was taken out of the scene by another edit.");
        }
        auto& parent = existing(*_tree, _place.parent);
        requireFree(*_tree, parent, _place.name);
        auto* before = sibling(*_tree, _place.parent, parent, _place.before);
        auto& node = *_outside.get();
        node.name = _place.name;
        const auto item = makeItem(*_tree, _place.path(), node);
        _tree->attach(std::move(_outside), parent, before);
        _tree->remember(item->path(), node);
        announceAdd(item);
    }

    void leave()
    {
        auto& node = editable(*_tree, _place.path());
        const NodeWatch watch(_tree, node);
        auto item = makeItem(*_tree, _place.path(), node);
        announcePreDelete(item);
        if (!watch.get()) {
            _wasTaken = true;
            return;
        }
        if (_tree->find(*item) != &node) {
            item = makeItem(*_tree, _tree->pathOf(node), node);
        }
        _place = placeOf(node, item->path());
        auto& parent = *node.parent;
        _outside = _tree->detach(node);
        _tree->remember(_place.parent, parent);
        announcePostDelete(item);
    }

private:
    std::shared_ptr<Tree> _tree;
    Detached _outside;
    Place _place;
    bool _wasTaken = false; ///< Whether an observer removed it before this step did.
};

class Relocation : public Step
{
public:
    Relocation(std::shared_ptr<Tree> tree, Place from, Place to)
        : _tree(std::move(tree)), _from(std::move(from)), _to(std::move(to))
    {}

    void apply() override { relocate(_from, _to); }
    void revert() override { relocate(_to, _from); }

private:
    void relocate(const Place& from, const Place& to)
    {
        const auto path = from.path();
        auto& node = editable(*_tree, path);
        auto& parent = existing(*_tree, to.parent);
        if (isUnder(node, parent)) {
            refuse(path, "cannot move under itself.");
        }
        const auto sameParent = &parent == node.parent;
        if (!sameParent || from.name != to.name) {
            requireFree(*_tree, parent, to.name);
        }
        auto* before = sibling(*_tree, to.parent, parent, to.before);
        const auto item = sameParent && from.name == to.name ? makeItem(*_tree, to.parent, parent)
                                                             : makeItem(to.path(), node);
        _tree->move(node, parent, before == &node ? node.next : before, to.name);
        if (!sameParent) {
            announceReparent(item, path);
        } else if (from.name != to.name) {
            announceRename(item, path);
        } else {
            announceInvalidate(item);
        }
    }

    const std::shared_ptr<Tree> _tree;
    const Place _from;
    const Place _to;
};

class Reordering : public Step
{
public:
    Reordering(std::shared_ptr<Tree> tree, Path parent, std::vector<PathComponent> before,
               std::vector<PathComponent> after)
        : _tree(std::move(tree)), _parent(std::move(parent)), _before(std::move(before)),
          _after(std::move(after))
    {}

    void apply() override { order(_after); }
    void revert() override { order(_before); }

private:
    void order(const std::vector<PathComponent>& names)
    {
        auto& parent = existing(*_tree, _parent);
        if (!isOrderOf(parent, names)) {
            refuse(_parent, "has other children than those to put in order.");
        }
        std::vector<Node*> children;
        for (const auto& name : names) {
            children.push_back(_tree->child(parent, name));
        }
        const auto item = makeItem(_parent, parent);
        _tree->reorder(parent, children);
        announceInvalidate(item);
    }

    const std::shared_ptr<Tree> _tree;
    const Path _parent;
    const std::vector<PathComponent> _before;
    const std::vector<PathComponent> _after;
};

} // namespace

StepPtr insertion(const std::shared_ptr<Tree>& tree, Detached&& subtree, const Place& place)
{
    return std::make_unique<Insertion<PlacedItem>>(PlacedItem(tree, std::move(subtree), place));
}

StepPtr removal(const std::shared_ptr<Tree>& tree, const Path& path)
{
    return std::make_unique<Removal<PlacedItem>>(PlacedItem(tree, {}, placeOf(*tree, path)));
}

StepPtr relocation(const std::shared_ptr<Tree>& tree, const Path& from, const Place& to)
{
    return std::make_unique<Relocation>(tree, placeOf(*tree, from), to);
}

StepPtr reordering(const std::shared_ptr<Tree>& tree, const Path& parent,
                   std::vector<PathComponent> names)
{
    return std::make_unique<Reordering>(tree, parent, childNames(existing(*tree, parent)),
                                        std::move(names));
}

void ChangeLog::carryOut(StepPtr step)
{
    // Reserves first, so that an applied step is always recorded; more than one place, so that a
    // thousand steps do not reallocate a thousand times.
    if (_steps.size() == _steps.capacity()) {
        _steps.reserve(2 * _steps.size() + 1);
    }
    step->apply();
    _steps.push_back(std::move(step));
}

Path ChangeLog::carryOut(const std::shared_ptr<Tree>& tree, StepPtr step, Node& node,
                         const Place& place)
{
    const NodeWatch watch(tree, node);
    carryOut(std::move(step));
    auto path = place.path();
    const auto* now = watch.get();
    return now && tree->find(path) != now ? tree->pathOf(*now) : path;
}

void ChangeLog::apply()
{
    std::size_t done = 0;
    try {
        for (; done < _steps.size(); ++done) {
            _steps[done]->apply();
        }
    } catch (...) {
        while (done > 0) {
            _steps[--done]->revert();
        }
        throw;
    }
}

void ChangeLog::revert()
{
    auto left = _steps.size();
    try {
        for (; left > 0; --left) {
            _steps[left - 1]->revert();
        }
    } catch (...) {
        for (; left < _steps.size(); ++left) {
            _steps[left]->apply();
        }
        throw;
    }
}

void refuse(const Path& path, const std::string& reason)
{
    throw std::invalid_argument("'" + PathString::string(path) + "' " + reason);
}

Node& existing(Tree& tree, const Path& path)
{
    return required(tree.find(path), path);
}

Node& existing(Tree& tree, const SceneItem& item)
{
    return required(tree.find(item), item.path());
}

Node& editable(Tree& tree, const Path& path)
{
    auto& node = existing(tree, path);
    if (!node.parent) {
        refuse(path, "is the root item, which stays as it is.");
    }
    return node;
}

Place placeOf(Tree& tree, const Path& path)
{
    return placeOf(editable(tree, path), path);
}

Place placeOf(const Node& node, const Path& path)
{
    return {path.pop(), node.name, node.next ? node.next->name : PathComponent()};
}

std::vector<PathComponent> childNames(const Node& parent)
{
    std::vector<PathComponent> names;
    for (const auto* child = parent.firstChild; child; child = child->next) {
        names.push_back(child->name);
    }
    return names;
}

bool isOrderOf(const Node& parent, const std::vector<PathComponent>& names)
{
    const auto children = childNames(parent);
    const std::unordered_set<PathComponent> known(children.begin(), children.end());
    const std::unordered_set<PathComponent> given(names.begin(), names.end());
    return names.size() == children.size() && given == known;
}

PathComponent requireFreeName(Tree& tree, const Node& parent, const std::string& name)
{
    requireValidName(name);
    requireFree(tree, parent, name);
    return name;
}

} // namespace Kiv_v4::memory
