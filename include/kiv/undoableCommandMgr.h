#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// Client code executes commands through this class, so that the host can route them into its undo
/// system: a host installs a subclass that runs each command and adds it to its undo history.
///
///     UndoableCommandMgr::initializeInstance(std::make_shared<MyUndoQueue>());
///     if (const auto command = hierarchy->createChildCmd("mesh", name)) { // null: refused
///         UndoableCommandMgr::instance().executeCmd(command);
///     }
class KIV_EXPORT UndoableCommandMgr
{
public:
    using Ptr = std::shared_ptr<UndoableCommandMgr>;

    UndoableCommandMgr();
    UndoableCommandMgr(const UndoableCommandMgr&) = delete;
    UndoableCommandMgr& operator=(const UndoableCommandMgr&) = delete;
    virtual ~UndoableCommandMgr();

    /// Installs the process-wide manager; null clears it. Throws `std::invalid_argument` and keeps
    /// the installed manager if there is one and `manager` is not null.
    static void initializeInstance(const Ptr& manager);

    /// The installed manager. There must be one; the function does not check this.
    [[nodiscard]] static UndoableCommandMgr& instance();

    /// Executes `command`, which must not be null. By default does nothing else.
    virtual void executeCmd(const UndoableCommand::Ptr& command) const;

    /// Registers a command that was executed already. By default does nothing.
    virtual void registerCmd(const UndoableCommand::Ptr& command) const;

private:
    friend class UndoableCommandGuard;

    KIV_HIDDEN static Ptr& installed();
};

} // namespace Kiv_v4
