#pragma once

#include <memory>

#include "kiv/batchOpsHandler.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

class MemoryBatchOpsHandler : public BatchOpsHandler
{
public:
    explicit MemoryBatchOpsHandler(std::shared_ptr<Tree> tree);

    /// Duplicates the topmost selected items; selected descendants are duplicated with them.
    [[nodiscard]] UndoableCommand::Ptr duplicateItemsCmd(const Selection& selection,
                                                         const DuplicateOptions& options) override;

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
