#pragma once

#include <memory>
#include <string>

#include "kiv/export.h"
#include "kiv/undoableCommandMgr.h"

namespace Kiv_v4 {

/// Makes one undo step of all commands that are executed through the installed command manager
/// while it lives.
///
///     {
///         UndoableCommandGuard guard("Tidy up");
///         UndoableCommandMgr::instance().executeCmd(renameCmd);
///         UndoableCommandMgr::instance().executeCmd(moveCmd);
///         UndoableCommandGuard::setSuccess();
///     } // the host learns of one command, "Tidy up"
///
/// When the guard ends, the manager that was installed before is installed again and is handed the
/// composite of the commands as one that was executed already (`registerCmd`), if `setSuccess` was
/// called and no exception that came up under the guard is on its way, also when there are no
/// commands. Otherwise the commands have run, but the host does not learn of them. A command that
/// throws is not part of the composite, nor is one that is handed to `registerCmd` while the guard
/// lives.
///
/// Guards nest: an inner guard's composite becomes one entry of the outer one's, whether it
/// succeeded or not, and an inner failure makes the outer guard fail unless `setSuccess` is called
/// for it afterwards.
///
/// A guard under which the manager is cleared ends without effect, whatever is installed by then.
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

    /// Lets the innermost guard succeed. Throws `AssertionException` when there is none.
    static void setSuccess();

private:
    const int _nbExceptions; ///< On their way when the guard began.
    const UndoableCommandMgr::Ptr _previous;
};

} // namespace Kiv_v4
