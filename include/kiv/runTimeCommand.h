#pragma once

#include "kiv/export.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

/// A second base class for commands, beside `UndoableCommand`, that tells which run-times a command
/// needs, so that a host can drop the commands of a run-time that is unregistered and keep all
/// others. Commands that know the path of their item (`BaseUndoableCommand`) need it only if they
/// involve more than that path.
class KIV_EXPORT RunTimeCommand
{
public:
    RunTimeCommand();
    RunTimeCommand(const RunTimeCommand&) = delete;
    RunTimeCommand& operator=(const RunTimeCommand&) = delete;
    virtual ~RunTimeCommand();

    /// Whether the command needs the run-time.
    [[nodiscard]] virtual bool belongsTo(Rtid runTimeId) const = 0;
};

} // namespace Kiv_v4
