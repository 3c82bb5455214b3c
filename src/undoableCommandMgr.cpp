#include "kiv/undoableCommandMgr.h"

#include "detail/singleton.h"

namespace Kiv_v4 {

UndoableCommandMgr::UndoableCommandMgr() = default;

UndoableCommandMgr::~UndoableCommandMgr() = default;

void UndoableCommandMgr::initializeInstance(const Ptr& manager)
{
    detail::installSingleton(installed(), manager,
                             "Cannot initialize the command manager instance more than once.");
}

UndoableCommandMgr& UndoableCommandMgr::instance()
{
    return *installed();
}

void UndoableCommandMgr::executeCmd(const UndoableCommand::Ptr& command) const
{
    command->execute();
}

void UndoableCommandMgr::registerCmd(const UndoableCommand::Ptr&) const {}

UndoableCommandMgr::Ptr& UndoableCommandMgr::installed()
{
    static detail::NoDestructor<Ptr> manager;
    static const detail::EmptiedAtExit<Ptr> emptied(manager);
    return *manager;
}

} // namespace Kiv_v4
