#pragma once

#include <memory>
#include <string>

#include "kiv/codeWrapper.h"
#include "kiv/compositeUndoableCommand.h"
#include "kiv/export.h"

namespace Kiv_v4 {

/// A composite over a selection whose run-times may wrap each run of it in a prelude and a clean-up
/// (`CodeWrapper`).
class KIV_EXPORT BatchCompositeCommand : public CompositeUndoableCommand
{
public:
    using Ptr = std::shared_ptr<BatchCompositeCommand>;

    /// What the wrappers are told: "execute", "undo", "redo".
    static const std::string execSubOp;
    static const std::string undoSubOp;
    static const std::string redoSubOp;

    /// Asks the run-times that `selection` touches for their wrappers of `operationName`.
    BatchCompositeCommand(const Selection& selection, const std::string& operationName);
    ~BatchCompositeCommand() override;

    /// A new command, made as by the constructor.
    [[nodiscard]] static Ptr create(const Selection& selection, const std::string& operationName);

    void execute() override;
    void undo() override;
    void redo() override;

private:
    const CodeWrapperContainer _wrappers;
};

} // namespace Kiv_v4
