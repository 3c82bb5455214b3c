#pragma once

#include <memory>
#include <string>

#include "kiv/export.h"
#include "kiv/undoableCommandMgr.h"

namespace Kiv_v4 {

/// Combines all commands that are executed through the installed command manager while it lives
/// into one undo step.
///
///     {
///         UndoableCommandGuard guard("Tidy up");
///         UndoableCommandMgr::instance().executeCmd(renameCmd);
///         UndoableCommandMgr::instance().executeCmd(moveCmd);
///         UndoableCommandGuard::setSuccess();
///     } // the host gets one command, "Tidy up"
///
/// The destructor installs the former manager again. If `setSuccess` was called and no exception
/// from under the guard is in flight, it passes the composite of the commands to that manager as an
/// executed command (`registerCmd`), even if there are no commands. Otherwise the commands have
/// run, but the host does not get them. The composite contains neither commands that threw nor
/// commands that were passed to `registerCmd` while the guard lived.
///
/// Guards nest: an inner guard's composite becomes one entry of the outer one's, whether it
/// succeeded or not. If the inner guard fails, the outer one fails too, unless `setSuccess` is
/// called for it afterwards.
///
/// If the manager is cleared under a guard, the guard ends without effect, whatever is installed by
/// then.
///
/// A manager must be installed before the first guard; without one, the guard ends without effect
/// and leaves its own manager installed. An exception from the host's `registerCmd` terminates the
/// process.
class KIV_EXPORT UndoableCommandGuard
{
public:
    /// `name` is the composite's `commandString()`.
    explicit UndoableCommandGuard(const std::string& name);
    UndoableCommandGuard(const UndoableCommandGuard&) = delete;
    UndoableCommandGuard& operator=(const UndoableCommandGuard&) = delete;
    virtual ~UndoableCommandGuard();

    /// Makes the innermost guard succeed. Throws `AssertionException` if there is none.
    static void setSuccess();

private:
    const int _nbExceptions; ///< The number in flight when the guard began.
    const UndoableCommandMgr::Ptr _previous;
};

} // namespace Kiv_v4
