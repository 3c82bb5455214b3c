#include "kiv/batchCompositeCommand.h"

namespace Kiv_v4 {

const std::string BatchCompositeCommand::execSubOp = "execute";
const std::string BatchCompositeCommand::undoSubOp = "undo";
const std::string BatchCompositeCommand::redoSubOp = "redo";

namespace {

template <class Work>
void wrapped(const CodeWrapperContainer& wrappers, const std::string& subOperation, Work work)
{
    CodeWrapperContext context(wrappers, subOperation);
    context.prelude();
    work();
    context.cleanup();
}

} // namespace

BatchCompositeCommand::BatchCompositeCommand(const Selection& selection,
                                             const std::string& operationName)
    : _wrappers(selection, operationName)
{}

BatchCompositeCommand::~BatchCompositeCommand() = default;

BatchCompositeCommand::Ptr BatchCompositeCommand::create(const Selection& selection,
                                                         const std::string& operationName)
{
    return std::make_shared<BatchCompositeCommand>(selection, operationName);
}

void BatchCompositeCommand::execute()
{
    wrapped(_wrappers, execSubOp, [this] { CompositeUndoableCommand::execute(); });
}

void BatchCompositeCommand::undo()
{
    wrapped(_wrappers, undoSubOp, [this] { CompositeUndoableCommand::undo(); });
}

void BatchCompositeCommand::redo()
{
    wrapped(_wrappers, redoSubOp, [this] { CompositeUndoableCommand::redo(); });
}

} // namespace Kiv_v4
