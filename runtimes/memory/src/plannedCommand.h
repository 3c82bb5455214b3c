#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "kiv/resultCommands.h"

#include "announcements.h"
#include "item.h"
#include "steps.h"

namespace Kiv_v4::memory {

/// A command of any of the result-returning kinds: plans its steps while it is executed for the
/// first time, in the scene as it is then, and takes them back and does them again later. When a
/// step fails, those before it are taken back.
template <class Base>
class PlannedCommand : public Base
{
public:
    /// Carries the plan out, step by step, and returns the path of the item made or changed.
    using Planner = std::function<Path(Plan&)>;

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
    /// The item made or changed, while the command is done.
    [[nodiscard]] SceneItem::Ptr result() const
    {
        const auto* node = _tree->find(_result);
        return node ? makeItem(_result, *node) : nullptr;
    }

private:
    const std::shared_ptr<Tree> _tree;
    const std::string _name;
    const Planner _planner;
    Plan _plan;
    Path _result;
};

using EditCommand = PlannedCommand<UndoableCommand>;

class ItemCommand : public PlannedCommand<SceneItemResultUndoableCommand>
{
public:
    using PlannedCommand::PlannedCommand;

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return result(); }
};

class ChildCommand : public PlannedCommand<InsertChildCommand>
{
public:
    using PlannedCommand::PlannedCommand;

    [[nodiscard]] SceneItem::Ptr insertedChild() const override { return result(); }
};

} // namespace Kiv_v4::memory
