#include "kiv/undoableCommandMgr.h"

#include "processWide.h"

namespace Kiv_v4 {

UndoableCommandMgr::UndoableCommandMgr() = default;

UndoableCommandMgr::~UndoableCommandMgr() = default;

void UndoableCommandMgr::initializeInstance(const Ptr& manager)
{
    detail::install(manager, "Cannot initialize the command manager instance more than once.");
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
    return detail::processWide<Ptr>();
}

} // namespace Kiv_v4
