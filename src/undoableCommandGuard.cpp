#include "kiv/undoableCommandGuard.h"

#include <exception>

#include "kiv/compositeUndoableCommand.h"
#include "kiv/handleAssert.h"

namespace Kiv_v4 {

namespace {

class CompositeCommand : public CompositeUndoableCommand
{
public:
    using CompositeUndoableCommand::take;

    explicit CompositeCommand(const std::string& name) : _name(name) {}

    [[nodiscard]] std::string commandString() const override { return _name; }

private:
    const std::string _name;
};

/// The manager while a guard lives: gathers the commands that it executes.
class CompositeMgr : public UndoableCommandMgr
{
public:
    CompositeMgr(const UndoableCommandGuard& owner, const std::string& name)
        : guard(&owner), composite(std::make_shared<CompositeCommand>(name)), entry{composite}
    {}

    void executeCmd(const UndoableCommand::Ptr& command) const override
    {
        CompositeUndoableCommand::Commands executed{command};
        const auto gathered = composite; // the command may clear this manager
        command->execute();
        gathered->take(executed);
    }

    const UndoableCommandGuard* const guard;
    const std::shared_ptr<CompositeCommand> composite;
    CompositeUndoableCommand::Commands entry; ///< For an outer guard.
    bool success = false;
};

} // namespace

UndoableCommandGuard::UndoableCommandGuard(const std::string& name)
    : _nbExceptions(std::uncaught_exceptions()), _previous(UndoableCommandMgr::installed())
{
    UndoableCommandMgr::installed() = std::make_shared<CompositeMgr>(*this, name);
}

UndoableCommandGuard::~UndoableCommandGuard()
{
    const auto own = std::dynamic_pointer_cast<CompositeMgr>(UndoableCommandMgr::installed());
    if (!_previous || !own || own->guard != this) {
        return;
    }
    const auto success = own->success && std::uncaught_exceptions() <= _nbExceptions;
    if (auto* outer = dynamic_cast<CompositeMgr*>(_previous.get())) {
        outer->composite->take(own->entry);
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
