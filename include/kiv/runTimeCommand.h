#pragma once

#include "kiv/export.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

/// What a command derives from, beside `UndoableCommand`, to tell whose it is, so that a host can
/// let go of the commands of a run-time that leaves and keep all others. Commands that know the
/// path of their item (`BaseUndoableCommand`) need it only when they are about more than that path.
class KIV_EXPORT RunTimeCommand
{
public:
    RunTimeCommand();
    RunTimeCommand(const RunTimeCommand&) = delete;
    RunTimeCommand& operator=(const RunTimeCommand&) = delete;
    virtual ~RunTimeCommand();

    /// Whether the command cannot do without the run-time.
    [[nodiscard]] virtual bool belongsTo(Rtid runTimeId) const = 0;
};

} // namespace Kiv_v4
