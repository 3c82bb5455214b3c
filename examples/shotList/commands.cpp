#include "commands.h"

#include <stdexcept>
#include <utility>

namespace {

/// An entry that is in the list, or was taken out of it and is kept here.
class Presence
{
public:
    explicit Presence(EntriesPtr entries) : _entries(std::move(entries)) {}

    /// Puts the entry that was taken out to where it was.
    void enter(const Kiv::Path& path)
    {
        auto& parent = _entries->existing(path.pop());
        if (_entries->find(path)) {
            throw std::invalid_argument(Kiv::PathString::string(path) + " is there already.");
        }
        parent.children.splice(childNamed(parent, _next), _out);
        announce<Kiv::ObjectAdd>(_entries->item(path));
    }

    /// Puts a new entry last.
    void enter(const Kiv::Path& path, Entry entry)
    {
        _out.assign(1, std::move(entry));
        enter(path);
    }

    void leave(const Kiv::Path& path)
    {
        (void)_entries->existing(path);
        const auto item = _entries->item(path);
        auto& parent = _entries->existing(path.pop());
        const auto entry = childNamed(parent, path.back().string());
        const auto next = std::next(entry);
        _next = next == parent.children.end() ? std::string() : next->name;
        _out.splice(_out.end(), parent.children, entry);
        announce<Kiv::ObjectPostDelete>(item);
    }

private:
    const EntriesPtr _entries;
    std::list<Entry> _out; // empty, or the entry
    std::string _next;     // the sibling that it stood before; empty for none
};

class AddCommand : public Kiv::SceneItemResultUndoableCommand
{
public:
    AddCommand(EntriesPtr entries, Kiv::Path parent, std::function<Entry()> make)
        : _entries(std::move(entries)), _parent(std::move(parent)), _make(std::move(make)),
          _presence(_entries)
    {}

    [[nodiscard]] std::string commandString() const override { return "Add"; }

    [[nodiscard]] Kiv::SceneItem::Ptr sceneItem() const override { return _entries->item(_path); }

    void execute() override
    {
        auto entry = _make();
        entry.name = freeName(_entries->existing(_parent), entry.name);
        const auto path = _parent + entry.name;
        _presence.enter(path, std::move(entry));
        _path = path;
    }

    void undo() override { _presence.leave(_path); }
    void redo() override { _presence.enter(_path); }

private:
    const EntriesPtr _entries;
    const Kiv::Path _parent;
    const std::function<Entry()> _make;
    Presence _presence;
    Kiv::Path _path; // empty before the first run
};

class RemoveCommand : public Kiv::BaseUndoableCommand
{
public:
    RemoveCommand(const EntriesPtr& entries, const Kiv::Path& path)
        : BaseUndoableCommand(path), _presence(entries)
    {}

    [[nodiscard]] std::string commandString() const override
    {
        return "Remove " + path().back().string();
    }

    void undo() override { _presence.enter(path()); }
    void redo() override { _presence.leave(path()); }

private:
    Presence _presence;
};

class RenameCommand : public Kiv::SceneItemResultUndoableCommand
{
public:
    RenameCommand(EntriesPtr entries, Kiv::Path path, std::string name)
        : _entries(std::move(entries)), _oldPath(std::move(path)), _wanted(std::move(name))
    {}

    [[nodiscard]] std::string commandString() const override
    {
        return "Rename " + _oldPath.back().string();
    }

    [[nodiscard]] Kiv::SceneItem::Ptr sceneItem() const override
    {
        return _entries->item(_newPath);
    }

    void execute() override
    {
        const auto& entry = _entries->existing(_oldPath);
        const auto& parent = _entries->existing(_oldPath.pop());
        _newPath = _oldPath.sibling(freeName(parent, _wanted, &entry));
        redo();
    }

    void undo() override { rename(_newPath, _oldPath); }
    void redo() override { rename(_oldPath, _newPath); }

private:
    void rename(const Kiv::Path& from, const Kiv::Path& to)
    {
        if (from == to) {
            return;
        }
        if (_entries->find(to)) {
            throw std::invalid_argument(Kiv::PathString::string(to) + " is there already.");
        }
        _entries->existing(from).name = to.back().string();
        announce<Kiv::ObjectRename>(_entries->item(to), from);
    }

    const EntriesPtr _entries;
    const Kiv::Path _oldPath;
    const std::string _wanted;
    Kiv::Path _newPath; // empty before the first run
};

class ReorderCommand : public Kiv::BaseUndoableCommand
{
public:
    ReorderCommand(EntriesPtr entries, const Kiv::Path& parent, std::list<std::string> names)
        : BaseUndoableCommand(parent), _entries(std::move(entries)), _other(std::move(names))
    {}

    [[nodiscard]] std::string commandString() const override { return "Reorder"; }

    void undo() override { swapOrders(); }
    void redo() override { swapOrders(); }

private:
    /// Gives the children the other order and keeps theirs.
    void swapOrders()
    {
        auto& parent = _entries->existing(path());
        std::list<std::string> before;
        for (const auto& child : parent.children) {
            before.push_back(child.name);
        }
        for (const auto& name : _other) {
            const auto child = childNamed(parent, name);
            if (child != parent.children.end()) {
                parent.children.splice(parent.children.end(), parent.children, child);
            }
        }
        _other = before;
        announce<Kiv::SubtreeInvalidate>(_entries->item(path()));
    }

    const EntriesPtr _entries;
    std::list<std::string> _other;
};

} // namespace

Kiv::SceneItemResultUndoableCommand::Ptr addCmd(const EntriesPtr& entries, const Kiv::Path& parent,
                                                const std::function<Entry()>& make)
{
    return std::make_shared<AddCommand>(entries, parent, make);
}

Kiv::UndoableCommand::Ptr removeCmd(const EntriesPtr& entries, const Kiv::Path& path)
{
    return std::make_shared<RemoveCommand>(entries, path);
}

Kiv::SceneItemResultUndoableCommand::Ptr renameCmd(const EntriesPtr& entries, const Kiv::Path& path,
                                                   const std::string& name)
{
    return std::make_shared<RenameCommand>(entries, path, name);
}

Kiv::UndoableCommand::Ptr reorderCmd(const EntriesPtr& entries, const Kiv::Path& parent,
                                     const std::list<std::string>& names)
{
    return std::make_shared<ReorderCommand>(entries, parent, names);
}
