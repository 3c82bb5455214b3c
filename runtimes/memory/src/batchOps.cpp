#include "batchOps.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "kiv/selection.h"

#include "editCommands.h"
#include "recordedCommand.h"

namespace Kiv_v4::memory {

namespace {

/// The paths of the duplicates of topmost selected items.
using Targets = std::unordered_map<Path, Path>;

class DuplicateItemsCommand : public RecordedCommand<SelectionUndoableCommand>
{
public:
    DuplicateItemsCommand(const TreePtr& tree, Selection selection,
                          std::shared_ptr<Targets> targets, Change change)
        : RecordedCommand(tree, "Duplicate", std::move(change)), _selection(std::move(selection)),
          _targets(std::move(targets))
    {}

    [[nodiscard]] SceneItem::Ptr targetItem(const Path& sourcePath) const override
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

/// The selected items to be duplicated: without those under another of them, which are duplicated
/// with it, and without the root, which cannot be duplicated.
std::vector<Path> topmost(Tree& tree, const Selection& selection)
{
    std::vector<std::pair<const Node*, Path>> own;
    std::unordered_set<const Node*> duplicated;
    for (const auto& item : selection) {
        const auto* node = tree.find(*item);
        if (node && node->parent) {
            own.emplace_back(node, item->path());
            duplicated.insert(node);
        }
    }
    const auto comesAlong = [&](const Node* node) {
        do {
            node = node->parent;
        } while (node && duplicated.count(node) == 0);
        return node != nullptr;
    };
    std::vector<Path> paths;
    for (const auto& [node, path] : own) {
        if (!comesAlong(node)) {
            paths.push_back(path);
        }
    }
    return paths;
}

} // namespace

MemoryBatchOpsHandler::MemoryBatchOpsHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

UndoableCommand::Ptr MemoryBatchOpsHandler::duplicateItemsCmd(const Selection& selection,
                                                              const DuplicateOptions&)
{
    auto sources = topmost(*_tree, selection);
    if (sources.empty()) {
        return nullptr;
    }
    const auto targets = std::make_shared<Targets>();
    return std::make_shared<DuplicateItemsCommand>(
        _tree, selection, targets,
        [tree = _tree, sources = std::move(sources), targets](ChangeLog& log) {
            const AnnouncementBatch batch;
            targets->clear();
            for (const auto& source : sources) {
                targets->emplace(source, duplicate(tree, source, log));
            }
            return Path();
        });
}

} // namespace Kiv_v4::memory
