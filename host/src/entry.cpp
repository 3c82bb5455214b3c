#include "entry.h"

#include <algorithm>
#include <memory>
#include <typeinfo>

#include "kiv/baseUndoableCommand.h"
#include "kiv/compositeUndoableCommand.h"

#include "executedCommands.h"

namespace Kiv_v4::host::detail {

namespace {

using Commands = CompositeUndoableCommand::Commands;

/// Null for a command that is not a composite.
const Commands* partsOf(const UndoableCommand::Ptr& command)
{
    const auto* composite = dynamic_cast<const CompositeUndoableCommand*>(command.get());
    return composite ? &composite->cmdsList() : nullptr;
}

/// The first and the last of consecutive value edits. Values are absolute, so the edits between the
/// two do not matter.
class MergedEdits : public UndoableCommand
{
public:
    MergedEdits(Ptr first, Ptr last) : _first(std::move(first)), _last(std::move(last)) {}

    [[nodiscard]] const Ptr& first() const { return _first; }

    [[nodiscard]] std::string commandString() const override { return _first->commandString(); }

    void undo() override
    {
        _last->undo();
        _first->undo();
    }

    void redo() override
    {
        _first->redo();
        _last->redo();
    }

private:
    const Ptr _first;
    const Ptr _last;
};

bool haveSameTarget(const UndoableCommand::Ptr& one, const UndoableCommand::Ptr& other)
{
    if (!one || !other) {
        return one == other;
    }
    const auto* some = partsOf(one);
    const auto* others = partsOf(other);
    if (some && others) {
        return std::equal(some->begin(), some->end(), others->begin(), others->end(),
                          haveSameTarget);
    }
    const auto& left = *one;
    const auto& right = *other;
    const auto* leftBase = dynamic_cast<const BaseUndoableCommand*>(&left);
    const auto* rightBase = dynamic_cast<const BaseUndoableCommand*>(&right);
    return leftBase && rightBase && typeid(left) == typeid(right) &&
           leftBase->path() == rightBase->path() && left.commandString() == right.commandString();
}

} // namespace

bool doesNothing(const UndoableCommand::Ptr& command)
{
    const auto* parts = partsOf(command);
    return !command || (parts && std::all_of(parts->begin(), parts->end(), doesNothing));
}

UndoableCommand::Ptr without(const UndoableCommand::Ptr& command,
                             const std::function<bool(const UndoableCommand&)>& goes)
{
    if (!command || goes(*command)) {
        return nullptr;
    }
    if (const auto* merge = dynamic_cast<const MergedEdits*>(command.get())) {
        return without(merge->first(), goes) == merge->first() ? command : nullptr;
    }
    const auto* parts = partsOf(command);
    if (!parts) {
        return command;
    }
    Commands left;
    auto isWhole = true;
    for (const auto& part : *parts) {
        const auto stays = without(part, goes);
        isWhole = isWhole && stays == part;
        if (stays) {
            left.push_back(stays);
        }
    }
    if (isWhole) {
        return command;
    }
    return left.empty() ? nullptr
                        : std::make_shared<ExecutedCommands>(command->commandString(), left);
}

UndoableCommand::Ptr merged(const UndoableCommand::Ptr& first, const UndoableCommand::Ptr& next)
{
    const auto* before = dynamic_cast<const MergedEdits*>(first.get());
    const auto& origin = before ? before->first() : first;
    return haveSameTarget(origin, next) ? std::make_shared<MergedEdits>(origin, next) : nullptr;
}

} // namespace Kiv_v4::host::detail
