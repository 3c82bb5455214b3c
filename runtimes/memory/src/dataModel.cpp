#include "kiv/memory/dataModel.h"

#include <stdexcept>
#include <utility>

#include "kiv/pathString.h"
#include "kiv/uniqueName.h"

#include "item.h"
#include "itemNames.h"
#include "tree.h"

namespace Kiv_v4::memory {

namespace {

[[noreturn]] void refuse(const Path& path, const std::string& reason)
{
    throw std::invalid_argument("'" + PathString::string(path) + "' " + reason);
}

Node& existing(Tree& tree, const Path& path)
{
    auto* node = tree.find(path);
    if (!node) {
        refuse(path, "names no item.");
    }
    return *node;
}

/// An item that is not the root.
Node& editable(Tree& tree, const Path& path)
{
    auto& node = existing(tree, path);
    if (!node.parent) {
        refuse(path, "is the root item, which stays as it is.");
    }
    return node;
}

void requireFree(Tree& tree, const Node& parent, const PathComponent& name)
{
    if (tree.child(parent, name)) {
        refuse(tree.pathOf(parent), "has a child '" + name.string() + "' already.");
    }
}

PathComponent freeName(Tree& tree, const Node& parent, const std::string& name)
{
    requireValidName(name);
    requireFree(tree, parent, name);
    return name;
}

SceneItem::Ptr itemOf(const Tree& tree, const Node& node)
{
    return makeItem(tree.pathOf(node), node);
}

} // namespace

DataModel::DataModel(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

DataModel::~DataModel() = default;

const Path& DataModel::root() const noexcept
{
    return _tree->rootPath();
}

SceneItem::Ptr DataModel::item(const Path& path) const
{
    const auto* node = _tree->find(path);
    return node ? makeItem(path, *node) : nullptr;
}

std::size_t DataModel::size() const noexcept
{
    std::size_t size = 0;
    for (auto* node = &_tree->root(); node; node = nextInSubtree(&_tree->root(), node)) {
        ++size;
    }
    return size;
}

SceneItem::Ptr DataModel::make(const Path& parent, const std::string& nodeType,
                               const std::string& name)
{
    auto& parentNode = existing(*_tree, parent);
    auto made = _tree->make(nodeType, freeName(*_tree, parentNode, name));
    return itemOf(*_tree, _tree->attach(std::move(made), parentNode, nullptr));
}

SceneItem::Ptr DataModel::rename(const Path& item, const std::string& name)
{
    auto& node = editable(*_tree, item);
    if (node.name.string() != name) {
        _tree->rename(node, freeName(*_tree, *node.parent, name));
    }
    return itemOf(*_tree, node);
}

SceneItem::Ptr DataModel::move(const Path& item, const Path& parent)
{
    auto& node = editable(*_tree, item);
    auto& newParent = existing(*_tree, parent);
    if (parent.startsWith(item)) {
        refuse(item, "cannot move under itself.");
    }
    if (node.parent != &newParent) {
        requireFree(*_tree, newParent, node.name);
    }
    return itemOf(*_tree, _tree->attach(_tree->detach(node), newParent, nullptr));
}

void DataModel::remove(const Path& item)
{
    const auto removed = _tree->detach(editable(*_tree, item));
}

std::string DataModel::uniqueName(const Path& parent, const std::string& name) const
{
    const auto& node = existing(*_tree, parent);
    return Kiv_v4::uniqueName(validName(name), [&](const std::string& candidate) {
        return _tree->child(node, candidate) != nullptr;
    });
}

void DataModel::setGateway(const Path& item, Rtid nestedRunTimeId)
{
    existing(*_tree, item).gateway = nestedRunTimeId;
}

Rtid DataModel::gateway(const Path& item) const
{
    return existing(*_tree, item).gateway;
}

} // namespace Kiv_v4::memory
