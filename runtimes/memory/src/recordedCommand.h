#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/runTimeCommand.h"

#include "announcements.h"
#include "memoryItem.h"
#include "steps.h"

namespace Kiv_v4::memory {

/// The item that a command made or changed; null unless the command is executed.
[[nodiscard]] inline SceneItem::Ptr itemAt(Tree& tree, const std::optional<Path>& path)
{
    auto* node = path ? tree.find(*path) : nullptr;
    return node ? makeItem(tree, *path, *node) : nullptr;
}

/// A command of any of the result-returning kinds: its first execution chooses the steps for the
/// scene as it is then and records them; later it undoes and redoes them. If a step fails, the
/// steps before it are undone.
///
/// `Result` identifies the object that the command makes or changes; for an item it is the path.
template <class Base, class Result = Path>
class RecordedCommand : public Base, public RunTimeCommand
{
public:
    /// Makes the change, step by step, and returns the result.
    using Change = std::function<Result(ChangeLog&)>;

    RecordedCommand(std::shared_ptr<Tree> tree, std::string name, Change change)
        : _tree(std::move(tree)), _name(std::move(name)), _change(std::move(change))
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }

    [[nodiscard]] bool belongsTo(Rtid runTimeId) const override
    {
        return runTimeId == _tree->runTimeId();
    }

    void execute() override
    {
        ChangeLog log;
        try {
            _result = _change(log);
        } catch (...) {
            log.revert();
            throw;
        }
        _log = std::move(log);
    }

    void undo() override
    {
        const AnnouncementBatch batch(_log.size() > 1);
        _log.revert();
    }

    void redo() override
    {
        const AnnouncementBatch batch(_log.size() > 1);
        _log.apply();
    }

protected:
    /// The result of the change; empty before the command has run.
    [[nodiscard]] const std::optional<Result>& result() const { return _result; }

    const std::shared_ptr<Tree> _tree;

private:
    const std::string _name;
    const Change _change;
    ChangeLog _log;
    std::optional<Result> _result;
};

using EditCommand = RecordedCommand<UndoableCommand>;

class ItemCommand : public RecordedCommand<SceneItemResultUndoableCommand>
{
public:
    using RecordedCommand::RecordedCommand;

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return itemAt(*_tree, result()); }
};

class ChildCommand : public RecordedCommand<InsertChildCommand>
{
public:
    using RecordedCommand::RecordedCommand;

    [[nodiscard]] SceneItem::Ptr insertedChild() const override { return itemAt(*_tree, result()); }
};

} // namespace Kiv_v4::memory
