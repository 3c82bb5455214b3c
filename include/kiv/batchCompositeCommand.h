#pragma once

#include <memory>
#include <string>

#include "kiv/codeWrapper.h"
#include "kiv/compositeUndoableCommand.h"
#include "kiv/export.h"

namespace Kiv_v4 {

/// A composite command over a selection. The run-times of the selected items may wrap each of its
/// runs in a prelude and a clean-up (`CodeWrapper`).
class KIV_EXPORT BatchCompositeCommand : public CompositeUndoableCommand
{
public:
    using Ptr = std::shared_ptr<BatchCompositeCommand>;

    /// The names of the runs for the wrappers: "execute", "undo", "redo".
    static const std::string execSubOp;
    static const std::string undoSubOp;
    static const std::string redoSubOp;

    /// Asks the run-times that `selection` touches for their wrappers of `operationName`.
    BatchCompositeCommand(const Selection& selection, const std::string& operationName);
    ~BatchCompositeCommand() override;

    /// Returns a new command, made as by the constructor.
    [[nodiscard]] static Ptr create(const Selection& selection, const std::string& operationName);

    void execute() override;
    void undo() override;
    void redo() override;

private:
    const CodeWrapperContainer _wrappers;
};

} // namespace Kiv_v4
