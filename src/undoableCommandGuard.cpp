#include "kiv/undoableCommandGuard.h"

#include <exception>

#include "kiv/compositeUndoableCommand.h"
#include "kiv/handleAssert.h"

namespace Kiv_v4 {

namespace {

class CompositeCommand : public CompositeUndoableCommand
{
public:
    explicit CompositeCommand(const std::string& name) : _name(name) {}

    [[nodiscard]] std::string commandString() const override { return _name; }

private:
    const std::string _name;
};

/// The manager while a guard lives: gathers what it executes.
class CompositeMgr : public UndoableCommandMgr
{
public:
    explicit CompositeMgr(const std::string& name)
        : composite(std::make_shared<CompositeCommand>(name))
    {}

    void executeCmd(const UndoableCommand::Ptr& command) const override
    {
        command->execute();
        composite->append(command);
    }

    const std::shared_ptr<CompositeCommand> composite;
    bool success = false;
};

} // namespace

UndoableCommandGuard::UndoableCommandGuard(const std::string& name)
    : _previous(UndoableCommandMgr::installed())
{
    UndoableCommandMgr::installed() = std::make_shared<CompositeMgr>(name);
}

UndoableCommandGuard::~UndoableCommandGuard()
{
    if (!_previous) {
        return;
    }
    const auto own = std::static_pointer_cast<CompositeMgr>(UndoableCommandMgr::installed());
    const auto success = own->success && std::uncaught_exceptions() == 0;
    if (auto* outer = dynamic_cast<CompositeMgr*>(_previous.get())) {
        outer->composite->append(own->composite);
        outer->success = outer->success && success;
    } else if (success) {
        _previous->registerCmd(own->composite);
    }
    UndoableCommandMgr::installed() = _previous;
}

void UndoableCommandGuard::setSuccess()
{
    auto* innermost = dynamic_cast<CompositeMgr*>(UndoableCommandMgr::installed().get());
    if (!innermost) {
        handleAssert("setSuccess", "src/undoableCommandGuard", __LINE__, "innermost",
                     "No command guard is active.");
    }
    innermost->success = true;
}

} // namespace Kiv_v4
