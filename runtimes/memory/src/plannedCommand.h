#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "kiv/resultCommands.h"

#include "announcements.h"
#include "item.h"
#include "steps.h"

namespace Kiv_v4::memory {

/// The item that a command made or changed, while the command is done; null before and after.
[[nodiscard]] inline SceneItem::Ptr itemAt(Tree& tree, const std::optional<Path>& path)
{
    const auto* node = path ? tree.find(*path) : nullptr;
    return node ? makeItem(*path, *node) : nullptr;
}

/// A command of any of the result-returning kinds: plans its steps while it is executed for the
/// first time, in the scene as it is then, and takes them back and does them again later. When a
/// step fails, those before it are taken back.
///
/// `Result` names what the command makes or changes; for an item it is the path.
template <class Base, class Result = Path>
class PlannedCommand : public Base
{
public:
    /// Carries the plan out, step by step, and returns the result.
    using Planner = std::function<Result(Plan&)>;

    PlannedCommand(std::shared_ptr<Tree> tree, std::string name, Planner planner)
        : _tree(std::move(tree)), _name(std::move(name)), _planner(std::move(planner))
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }

    void execute() override
    {
        Plan plan;
        try {
            _result = _planner(plan);
        } catch (...) {
            plan.revert();
            throw;
        }
        _plan = std::move(plan);
    }

    void undo() override
    {
        const AnnouncementBatch batch(_plan.size() > 1);
        _plan.revert();
    }

    void redo() override
    {
        const AnnouncementBatch batch(_plan.size() > 1);
        _plan.apply();
    }

protected:
    /// What the planner returned; nothing before the command has run.
    [[nodiscard]] const std::optional<Result>& result() const { return _result; }

    const std::shared_ptr<Tree> _tree;

private:
    const std::string _name;
    const Planner _planner;
    Plan _plan;
    std::optional<Result> _result;
};

using EditCommand = PlannedCommand<UndoableCommand>;

class ItemCommand : public PlannedCommand<SceneItemResultUndoableCommand>
{
public:
    using PlannedCommand::PlannedCommand;

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return itemAt(*_tree, result()); }
};

class ChildCommand : public PlannedCommand<InsertChildCommand>
{
public:
    using PlannedCommand::PlannedCommand;

    [[nodiscard]] SceneItem::Ptr insertedChild() const override { return itemAt(*_tree, result()); }
};

} // namespace Kiv_v4::memory
