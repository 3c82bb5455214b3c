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

/// Operations on many items at once, of whatever run-times.
class KIV_EXPORT BatchOpsHandler
{
public:
    using Ptr = std::shared_ptr<BatchOpsHandler>;

    /// One command that duplicates the items of `selection`: the commands of all run-times that
    /// offer one, in the order of `RunTimeMgr::getIds`. Not executed. Null when none offers one.
    ///
    /// The command is a `SelectionUndoableCommand`: it tells each item's duplicate.
    [[nodiscard]] static UndoableCommand::Ptr
    duplicateSelectionCmd(const Selection& selection, const DuplicateOptions& options);

    BatchOpsHandler();
    BatchOpsHandler(const BatchOpsHandler&) = delete;
    BatchOpsHandler& operator=(const BatchOpsHandler&) = delete;
    virtual ~BatchOpsHandler();

    /// A command that duplicates those items of `selection` that belong to this run-time; null when
    /// there are none or the run-time refuses. A `SelectionUndoableCommand` tells the duplicates.
    [[nodiscard]] virtual UndoableCommand::Ptr
    duplicateItemsCmd(const Selection& selection, const DuplicateOptions& options) = 0;
};

} // namespace Kiv_v4
