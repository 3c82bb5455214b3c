#pragma once

#include <string>
#include <utility>

#include "kiv/compositeUndoableCommand.h"

namespace Kiv_v4::host::detail {

/// Commands that have been executed, as one that undo menus show by name.
class Step : public CompositeUndoableCommand
{
public:
    Step(std::string name, const Commands& commands)
        : CompositeUndoableCommand(commands), _name(std::move(name))
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }

    void execute() override {}

private:
    const std::string _name;
};

/// Says that a command is running for as long as it lives.
class Running
{
public:
    explicit Running(bool& flag) : _flag(flag), _before(std::exchange(flag, true)) {}
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { _flag = _before; }

private:
    bool& _flag;
    const bool _before;
};

} // namespace Kiv_v4::host::detail
