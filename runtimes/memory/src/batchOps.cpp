#include "batchOps.h"

#include <unordered_map>
#include <utility>
#include <vector>

#include "kiv/selection.h"

#include "editCommands.h"
#include "plannedCommand.h"

namespace Kiv_v4::memory {

namespace {

/// Where the duplicates of topmost selected items are.
using Targets = std::unordered_map<Path, Path>;

class DuplicateItemsCommand : public PlannedCommand<SelectionUndoableCommand>
{
public:
    DuplicateItemsCommand(const TreePtr& tree, Selection selection,
                          std::shared_ptr<Targets> targets, Planner planner)
        : PlannedCommand(tree, "Duplicate", std::move(planner)), _selection(std::move(selection)),
          _targets(std::move(targets))
    {}

    [[nodiscard]] SceneItem::Ptr targetItem(Path const& sourcePath) const override
    {
        if (!_selection.contains(sourcePath)) {
            return nullptr;
        }
        for (auto ancestor = sourcePath; !ancestor.empty(); ancestor = ancestor.pop()) {
            const auto found = _targets->find(ancestor);
            if (found != _targets->end()) {
                return itemAt(*_tree, sourcePath.reparent(ancestor, found->second));
            }
        }
        return nullptr;
    }

private:
    const Selection _selection;
    const std::shared_ptr<Targets> _targets;
};

std::vector<Path> topmost(Tree& tree, const Selection& selection)
{
    std::vector<Path> paths;
    for (const auto& item : selection) {
        const auto* node = tree.find(item->path());
        if (node && node->parent && !selection.containsAncestor(item->path())) {
            paths.push_back(item->path());
        }
    }
    return paths;
}

} // namespace

MemoryBatchOpsHandler::MemoryBatchOpsHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

UndoableCommand::Ptr MemoryBatchOpsHandler::duplicateItemsCmd(Selection const& selection,
                                                              DuplicateOptions const&)
{
    auto sources = topmost(*_tree, selection);
    if (sources.empty()) {
        return nullptr;
    }
    const auto targets = std::make_shared<Targets>();
    return std::make_shared<DuplicateItemsCommand>(
        _tree, selection, targets,
        [tree = _tree, sources = std::move(sources), targets](Plan& plan) {
            const AnnouncementBatch batch;
            targets->clear();
            for (const auto& source : sources) {
                targets->emplace(source, duplicate(tree, source, plan));
            }
            return Path();
        });
}

} // namespace Kiv_v4::memory
