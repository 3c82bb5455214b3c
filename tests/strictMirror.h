#pragma once

#include <functional>
#include <unordered_map>
#include <vector>

#include "kiv/hierarchy.h"
#include "kiv/host/sceneTree.h"
#include "kiv/pathString.h"

#include "require.h"

namespace test {

/// Rows as in an item model, built only from a tree's notifications; each call is compared with the
/// tree before and after.
class StrictMirror : public Kiv_v4::host::SceneTree::Listener
{
public:
    using Node = Kiv_v4::host::SceneTree::Node;

    explicit StrictMirror(Kiv_v4::host::SceneTree& tree) : _tree(tree) { _tree.addListener(*this); }
    ~StrictMirror() override { _tree.removeListener(*this); }

    void beginInsert(const Node& parent, std::size_t first, std::size_t count) override
    {
        begin();
        demand(first <= rows(parent).size(), "rows are inserted between rows");
        _end = [this, &parent, first, count] {
            auto& all = rows(parent);
            for (auto row = first; row < first + count; ++row) {
                all.insert(all.begin() + static_cast<long>(row), &parent.child(row));
            }
            same(parent);
            nbInserted += count;
        };
    }
    void endInsert() override { end(); }

    void beginRemove(const Node& parent, std::size_t first, std::size_t count) override
    {
        begin();
        demand(count > 0 && first + count <= rows(parent).size(), "what goes is there");
        _end = [this, &parent, first, count] {
            auto& all = rows(parent);
            const auto from = all.begin() + static_cast<long>(first);
            std::vector<const Node*> gone(from, from + static_cast<long>(count));
            all.erase(from, from + static_cast<long>(count));
            same(parent);
            while (!gone.empty()) { // later nodes may reuse their addresses
                const auto under = _rows.extract(gone.back());
                gone.pop_back();
                if (under) {
                    gone.insert(gone.end(), under.mapped().begin(), under.mapped().end());
                }
            }
            nbRemoved += count;
        };
    }
    void endRemove() override { end(); }

    void beginMove(const Node& node, const Node& newParent, std::size_t newRow) override
    {
        begin();
        const auto* before = node.parent();
        const auto row = node.row();
        demand(before != &newParent || row != newRow, "a move changes something");
        for (const auto* at = &newParent; at; at = at->parent()) {
            demand(at != &node, "nothing moves into itself");
        }
        _end = [this, &node, &newParent, newRow, before, row] {
            auto& from = rows(*before);
            demand(from.at(row) == &node, "it was there");
            from.erase(from.begin() + static_cast<long>(row));
            auto& to = rows(newParent);
            demand(newRow <= to.size(), "it arrives between rows");
            to.insert(to.begin() + static_cast<long>(newRow), &node);
            same(*before);
            same(newParent);
            ++nbMoved;
        };
    }
    void endMove() override { end(); }

    void changed(const Node& node) override
    {
        demand(!_end && rows(*node.parent()).at(node.row()) == &node, "what changed is a row");
    }

    /// The whole tree against the mirror and against the scene.
    void compareWithScene(bool areNamesOnly = false)
    {
        require(fault == nullptr, fault);
        std::vector<const Node*> open{&_tree.root()};
        while (!open.empty()) {
            const auto& node = *open.back();
            open.pop_back();
            same(node);
            if (&node != &_tree.root() && !areNamesOnly) {
                compareChildren(node);
            }
            for (std::size_t row = 0; row < node.nbRows(); ++row) {
                const auto& child = node.child(row);
                demand(child.parent() == &node && child.row() == row, "rows are consistent");
                demand(_tree.find(child.path()) == &child, "nodes are found by their paths");
                open.push_back(&child);
            }
        }
    }

    const char* fault = nullptr; ///< The first fault; exceptions in a notification are swallowed.
    std::size_t nbInserted = 0;
    std::size_t nbRemoved = 0;
    std::size_t nbMoved = 0;

private:
    void demand(bool condition, const char* complaint)
    {
        fault = condition || fault ? fault : complaint;
        require(condition, complaint);
    }

    std::vector<const Node*>& rows(const Node& node) { return _rows[&node]; }

    void begin() { require(!_end, "changes do not overlap"); }

    void end()
    {
        demand(_end != nullptr, "what ends has begun");
        const auto last = std::exchange(_end, nullptr);
        last();
    }

    void same(const Node& node)
    {
        const auto& all = rows(node);
        demand(all.size() == node.nbRows(), "as many rows");
        for (std::size_t row = 0; row < all.size(); ++row) {
            demand(all[row] == &node.child(row), "the same nodes in the same rows");
        }
    }

    void compareChildren(const Node& node)
    {
        const auto item = Kiv_v4::Hierarchy::createItem(node.path());
        demand(item && node.item() && node.item()->path() == node.path(), "an item of that path");
        const auto hierarchy = Kiv_v4::Hierarchy::hierarchy(item);
        const auto children = !hierarchy ? Kiv_v4::SceneItemList()
                              : _tree.filter().empty()
                                  ? hierarchy->children()
                                  : hierarchy->filteredChildren(_tree.filter());
        demand(node.nbRows() == children.size() ||
                   (_tree.canFetch(node) && node.nbRows() < children.size()),
               "all children are rows, or the first of them");
        auto child = children.begin();
        for (std::size_t row = 0; row < node.nbRows(); ++row, ++child) {
            demand(node.child(row).path() == (*child)->path(),
                   "rows are in the order of the children");
        }
    }

    Kiv_v4::host::SceneTree& _tree;
    std::unordered_map<const Node*, std::vector<const Node*>> _rows;
    std::function<void()> _end;
};

} // namespace test
