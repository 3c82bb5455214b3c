#include "edits.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "kiv/undoableCommandMgr.h"

#include "diagnostics.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// A composite that undo menus show by name.
class Step : public CompositeUndoableCommand
{
public:
    Step(std::string name, const Commands& commands)
        : CompositeUndoableCommand(commands), _name(std::move(name))
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }

    /// Its commands have been executed one by one when the manager gets it.
    void execute() override {}

private:
    const std::string _name;
};

} // namespace

Edits::Edits(std::string name) : _name(std::move(name)) {}

Edits::~Edits()
{
    try {
        CompositeUndoableCommand(_done).undo();
    } catch (const std::exception& error) {
        complain(_name, std::string("cannot be taken back: ") + error.what());
    }
}

void Edits::run(const UndoableCommand::Ptr& command)
{
    if (!command) {
        throw std::runtime_error("the run-time refuses");
    }
    auto& place = _done.emplace_back(); // first, so that nothing can fail behind the command
    command->execute();
    place = command;
}

void Edits::commit()
{
    if (!_done.empty()) {
        // Executed, not registered: that is what a command guard gathers.
        UndoableCommandMgr::instance().executeCmd(std::make_shared<Step>(_name, _done));
        _done.clear();
    }
}

} // namespace app
