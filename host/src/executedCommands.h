#pragma once

#include <string>
#include <utility>

#include "kiv/compositeUndoableCommand.h"

namespace Kiv_v4::host::detail {

/// Executed commands as one command with a name for undo menus.
class ExecutedCommands : public CompositeUndoableCommand
{
public:
    ExecutedCommands(std::string name, const Commands& commands)
        : CompositeUndoableCommand(commands), _name(std::move(name))
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }

    void execute() override {}

private:
    const std::string _name;
};

} // namespace Kiv_v4::host::detail
