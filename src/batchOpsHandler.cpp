#include "kiv/batchOpsHandler.h"

#include "kiv/compositeUndoableCommand.h"
#include "kiv/path.h"
#include "kiv/runTimeMgr.h"
#include "kiv/selection.h"

namespace Kiv_v4 {

namespace {

/// The run-times' commands for one selection.
class BatchedSelectionUndoableCommand : public SelectionUndoableCommand
{
public:
    void append(const UndoableCommand::Ptr& command) { _composite.append(command); }

    void execute() override { _composite.execute(); }
    void undo() override { _composite.undo(); }
    void redo() override { _composite.redo(); }

    [[nodiscard]] SceneItem::Ptr targetItem(const Path& sourcePath) const override
    {
        for (const auto& command : _composite.cmdsList()) {
            const auto* batch = dynamic_cast<const SelectionUndoableCommand*>(command.get());
            if (auto target = batch ? batch->targetItem(sourcePath) : nullptr) {
                return target;
            }
        }
        return nullptr;
    }

private:
    CompositeUndoableCommand _composite;
};

} // namespace

BatchOpsHandler::BatchOpsHandler() = default;

BatchOpsHandler::~BatchOpsHandler() = default;

UndoableCommand::Ptr BatchOpsHandler::duplicateSelectionCmd(const Selection& selection,
                                                            const DuplicateOptions& options)
{
    std::shared_ptr<BatchedSelectionUndoableCommand> batch;
    for (const auto runTimeId : RunTimeMgr::instance().getIds()) {
        const auto handler = RunTimeMgr::instance().batchOpsHandler(runTimeId);
        // Each gets a copy of the options, since reading a value consumes it.
        const auto command =
            handler ? handler->duplicateItemsCmd(selection, DuplicateOptions(options)) : nullptr;
        if (!command) {
            continue;
        }
        if (!batch) {
            batch = std::make_shared<BatchedSelectionUndoableCommand>();
        }
        batch->append(command);
    }
    return batch;
}

} // namespace Kiv_v4
