#include "treeCommands.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "kiv/baseUndoableCommand.h"
#include "kiv/kit/announce.h"
#include "kiv/pathString.h"
#include "kiv/runTimeCommand.h"

namespace Kiv_v4::kit {

namespace {

void requireItem(const Tree& tree, const Path& path)
{
    if (tree.nodeType(path).empty()) {
        throw std::invalid_argument("no such item '" + PathString::string(path) + "'");
    }
}

void requireFree(const Tree& tree, const Path& path)
{
    requireItem(tree, path.pop());
    if (!tree.nodeType(path).empty()) {
        throw std::invalid_argument("'" + PathString::string(path) + "' already exists");
    }
}

/// Puts an item into the tree and takes it out, and keeps it while it is out.
class Insertion
{
public:
    Insertion(Tree::Ptr tree, std::size_t row) : _tree(std::move(tree)), _row(row) {}

    void enter(const Path& path)
    {
        requireFree(*_tree, path);
        _tree->put(path, _part, _row);
        _part.reset();
        announced([&] { announce(ObjectAdd(_tree->item(path))); });
    }

    void enter(const Path& path, Tree::Part part)
    {
        if (!part) {
            throw std::runtime_error("'" + PathString::string(path) + "' cannot be made");
        }
        _part = std::move(part);
        enter(path);
    }

    void leave(const Path& path)
    {
        requireItem(*_tree, path);
        const auto item = _tree->item(path);
        _part = _tree->take(path);
        announced([&] { announce(ObjectPostDelete(item)); });
    }

    /// Remembers the row of an item that is about to leave.
    void remember(const Path& path) { _row = rowOf(*_tree, path.pop(), path.back().string()); }

private:
    const Tree::Ptr _tree;
    std::size_t _row;
    Tree::Part _part;
};

/// A command of the tree that involves more than one path.
template <class Base>
class TreeCommand : public Base, public RunTimeCommand
{
public:
    [[nodiscard]] bool belongsTo(Rtid runTimeId) const override
    {
        return runTimeId == _tree->root().runTimeId();
    }

protected:
    explicit TreeCommand(Tree::Ptr tree) : _tree(std::move(tree)) {}

    const Tree::Ptr _tree;
};

class AddCommand : public TreeCommand<SceneItemResultUndoableCommand>
{
public:
    AddCommand(Tree::Ptr tree, Path parent, std::string name, std::string text,
               std::function<Tree::Part()> make)
        : TreeCommand(std::move(tree)), _parent(std::move(parent)), _name(std::move(name)),
          _text(std::move(text)), _make(std::move(make)), _presence(_tree, Tree::kLast)
    {}

    [[nodiscard]] std::string commandString() const override { return _text; }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _tree->item(_path); }

    void execute() override
    {
        requireItem(*_tree, _parent);
        _path = _parent + _tree->freeName(_parent, _name, {});
        _presence.enter(_path, _make());
    }

    void undo() override { _presence.leave(_path); }
    void redo() override { _presence.enter(_path); }

private:
    const Path _parent;
    const std::string _name;
    const std::string _text;
    const std::function<Tree::Part()> _make;
    Insertion _presence;
    Path _path; // empty before the first run
};

class RemoveCommand : public BaseUndoableCommand
{
public:
    RemoveCommand(Tree::Ptr tree, const Path& path)
        : BaseUndoableCommand(path), _presence(std::move(tree), Tree::kLast)
    {}

    [[nodiscard]] std::string commandString() const override
    {
        return "Delete " + path().back().string();
    }

    void undo() override { _presence.enter(path()); }

    void redo() override
    {
        _presence.remember(path());
        _presence.leave(path());
    }

private:
    Insertion _presence;
};

class RenameCommand : public TreeCommand<SceneItemResultUndoableCommand>
{
public:
    RenameCommand(Tree::Ptr tree, Path path, std::string name)
        : TreeCommand(std::move(tree)), _oldPath(std::move(path)), _name(std::move(name))
    {}

    [[nodiscard]] std::string commandString() const override
    {
        return "Rename " + _oldPath.back().string();
    }

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _tree->item(_newPath); }

    void execute() override
    {
        requireItem(*_tree, _oldPath);
        _newPath =
            _oldPath.sibling(_tree->freeName(_oldPath.pop(), _name, _oldPath.back().string()));
        redo();
    }

    void undo() override { rename(_newPath, _oldPath); }
    void redo() override { rename(_oldPath, _newPath); }

private:
    void rename(const Path& from, const Path& to)
    {
        if (from == to) {
            return;
        }
        requireItem(*_tree, from);
        requireFree(*_tree, to);
        _tree->rename(from, to.back().string());
        announced([&] { announce(ObjectRename(_tree->item(to), from)); });
    }

    const Path _oldPath;
    const std::string _name;
    Path _newPath; // empty before the first run
};

class MoveCommand : public TreeCommand<InsertChildCommand>
{
public:
    MoveCommand(Tree::Ptr tree, Path path, Path parent, std::string before)
        : TreeCommand(std::move(tree)), _oldPath(std::move(path)), _parent(std::move(parent)),
          _before(std::move(before))
    {}

    [[nodiscard]] std::string commandString() const override
    {
        return "Move " + _oldPath.back().string();
    }

    [[nodiscard]] SceneItem::Ptr insertedChild() const override { return _tree->item(_newPath); }

    void execute() override
    {
        requireItem(*_tree, _oldPath);
        requireItem(*_tree, _parent);
        const auto& name = _oldPath.back().string();
        _newPath =
            _oldPath.pop() == _parent ? _oldPath : _parent + _tree->freeName(_parent, name, {});
        redo();
    }

    void redo() override
    {
        requireItem(*_tree, _oldPath);
        _oldRow = rowOf(*_tree, _oldPath.pop(), _oldPath.back().string());
        auto row = rowOf(*_tree, _parent, _before);
        if (_oldPath == _newPath && row != Tree::kLast && row > _oldRow) {
            --row; // the rows after it move up
        }
        move(_oldPath, _newPath, row);
    }

    void undo() override { move(_newPath, _oldPath, _oldRow); }

private:
    void move(const Path& from, const Path& to, std::size_t row)
    {
        requireItem(*_tree, from);
        if (from != to) {
            requireFree(*_tree, to);
        }
        const auto rowBefore = rowOf(*_tree, from.pop(), from.back().string());
        const auto part = _tree->take(from);
        try {
            _tree->put(to, part, row);
        } catch (...) {
            _tree->put(from, part, rowBefore);
            throw;
        }
        if (from == to) {
            announced([&] { announce(SubtreeInvalidate(_tree->item(to.pop()))); });
        } else {
            announced([&] { announce(ObjectReparent(_tree->item(to), from)); });
        }
    }

    const Path _oldPath;
    const Path _parent;
    const std::string _before;
    Path _newPath; // empty before the first run
    std::size_t _oldRow = 0;
};

class ReorderCommand : public BaseUndoableCommand
{
public:
    ReorderCommand(Tree::Ptr tree, const Path& parent, std::vector<std::string> names)
        : BaseUndoableCommand(parent), _tree(std::move(tree)), _other(std::move(names))
    {}

    [[nodiscard]] std::string commandString() const override
    {
        return "Reorder " + path().back().string();
    }

    void undo() override { swapOrders(); }
    void redo() override { swapOrders(); }

private:
    /// Exchanges the order of the children with the remembered one.
    void swapOrders()
    {
        requireItem(*_tree, path());
        std::vector<std::string> present;
        for (auto& child : _tree->children(path())) {
            present.push_back(std::move(child.name));
        }
        if (!std::is_permutation(present.begin(), present.end(), _other.begin(), _other.end())) {
            throw std::invalid_argument("the children of '" + PathString::string(path()) +
                                        "' have changed");
        }
        _tree->reorder(path(), _other);
        _other.swap(present);
        announced([&] { announce(SubtreeInvalidate(_tree->item(path()))); });
    }

    const Tree::Ptr _tree;
    std::vector<std::string> _other;
};

} // namespace

SceneItemResultUndoableCommand::Ptr addCmd(Tree::Ptr tree, const Path& parent,
                                           const std::string& name, const std::string& text,
                                           std::function<Tree::Part()> make)
{
    return std::make_shared<AddCommand>(std::move(tree), parent, name, text, std::move(make));
}

UndoableCommand::Ptr removeCmd(Tree::Ptr tree, const Path& path)
{
    return std::make_shared<RemoveCommand>(std::move(tree), path);
}

SceneItemResultUndoableCommand::Ptr renameCmd(Tree::Ptr tree, const Path& path,
                                              const std::string& name)
{
    return std::make_shared<RenameCommand>(std::move(tree), path, name);
}

InsertChildCommand::Ptr moveCmd(Tree::Ptr tree, const Path& path, const Path& parent,
                                const std::string& before)
{
    return std::make_shared<MoveCommand>(std::move(tree), path, parent, before);
}

UndoableCommand::Ptr reorderCmd(Tree::Ptr tree, const Path& parent, std::vector<std::string> names)
{
    return std::make_shared<ReorderCommand>(std::move(tree), parent, std::move(names));
}

std::size_t rowOf(const Tree& tree, const Path& parent, const std::string& name)
{
    const auto children = tree.children(parent);
    const auto found = std::find_if(children.begin(), children.end(),
                                    [&](const auto& child) { return child.name == name; });
    return found == children.end() ? Tree::kLast
                                   : static_cast<std::size_t>(found - children.begin());
}

} // namespace Kiv_v4::kit
