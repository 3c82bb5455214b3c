#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "kiv/export.h"
#include "kiv/resultCommands.h"
#include "kiv/value.h"

namespace Kiv_v4 {

class Selection;

/// How to duplicate, by key; a run-time ignores keys that it does not know.
using DuplicateOptions = std::unordered_map<std::string, Value>;

/// Operations on many items of any run-times at once.
class KIV_EXPORT BatchOpsHandler
{
public:
    using Ptr = std::shared_ptr<BatchOpsHandler>;

    /// Returns one command that duplicates the items of `selection`: the commands of all run-times
    /// that offer one, in the order of `RunTimeMgr::getIds`. Does not execute it. Returns null if
    /// no run-time offers one.
    ///
    /// The command is a `SelectionUndoableCommand`, which has each item's duplicate.
    [[nodiscard]] static UndoableCommand::Ptr
    duplicateSelectionCmd(const Selection& selection, const DuplicateOptions& options);

    BatchOpsHandler();
    BatchOpsHandler(const BatchOpsHandler&) = delete;
    BatchOpsHandler& operator=(const BatchOpsHandler&) = delete;
    virtual ~BatchOpsHandler();

    /// Returns a command that duplicates those items of `selection` that belong to this run-time;
    /// null if there are none or the run-time refuses. If it is a `SelectionUndoableCommand`, it
    /// has the duplicates.
    [[nodiscard]] virtual UndoableCommand::Ptr
    duplicateItemsCmd(const Selection& selection, const DuplicateOptions& options) = 0;
};

} // namespace Kiv_v4
