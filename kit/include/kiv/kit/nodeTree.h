#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/kit/names.h"
#include "kiv/kit/tree.h"
#include "kiv/path.h"
#include "kiv/pathString.h"

namespace Kiv_v4::kit {

/// A `Tree` over the author's own nodes, with one root item: a derived class answers by node what
/// `Tree` asks by path. `Node` is a pointer or another small handle that converts to false when
/// it refers to no node, as `Node()` must.
template <class Node>
class NodeTree : public Tree
{
public:
    using Tree::Tree;

    /// Returns the node of the item at `path`; `Node()` if there is none. Cost: one `child` for
    /// each component after those of the root.
    [[nodiscard]] Node find(const Path& path) const
    {
        auto node = covers(path) ? rootNode() : Node();
        const auto below = static_cast<std::ptrdiff_t>(root().size());
        for (auto name = path.begin() + below; node && name != path.end(); ++name) {
            node = child(node, name->string());
        }
        return node;
    }

    /// Returns the node of the item at `path`. Throws `std::invalid_argument` if there is none.
    [[nodiscard]] Node existing(const Path& path) const
    {
        if (const auto node = find(path)) {
            return node;
        }
        throw std::invalid_argument("no such item '" + PathString::string(path) + "'");
    }

    [[nodiscard]] std::string nodeType(const Path& path) const override
    {
        const auto node = find(path);
        return node ? described(node).nodeType : std::string();
    }

    [[nodiscard]] std::vector<Child> children(const Path& path) const override
    {
        std::vector<Child> children;
        if (const auto node = find(path)) {
            for (const auto child : childNodes(node)) {
                children.push_back(described(child));
            }
        }
        return children;
    }

protected:
    /// Gives each node below the root a name that is valid for paths and unique among its siblings:
    /// calls `setName(node, name)` for each, parents first. `reserved` are the characters that
    /// names must not contain, as for `fitName`. For data that come from elsewhere.
    template <class SetName>
    void fitNames(const std::string& reserved, SetName setName)
    {
        std::vector<Node> parents{rootNode()};
        while (!parents.empty()) {
            NameIndex names;
            const auto children = childNodes(parents.back());
            parents.pop_back();
            for (const auto child : children) {
                const auto name = names.uniqueName(fitName(described(child).name, reserved));
                names.insert(name);
                setName(child, name);
                parents.push_back(child);
            }
        }
    }

    /// Returns the node of the root item; `Node()` if there is no root item now.
    [[nodiscard]] virtual Node rootNode() const = 0;

    /// Returns the children of a node, in order.
    [[nodiscard]] virtual std::vector<Node> childNodes(Node node) const = 0;

    /// Returns the name of a node, which must be unique among its siblings, and its type.
    [[nodiscard]] virtual Child described(Node node) const = 0;

    /// Returns the child of that name; `Node()` if there is none. By default searches all children:
    /// override it if there are many.
    [[nodiscard]] virtual Node child(Node node, const std::string& name) const
    {
        for (const auto child : childNodes(node)) {
            if (described(child).name == name) {
                return child;
            }
        }
        return Node();
    }
};

} // namespace Kiv_v4::kit
