#include "memoryContextOps.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "editCommands.h"
#include "nodeTypes.h"

namespace Kiv_v4::memory {

namespace {

/// An operation without arguments.
struct Operation
{
    const char* key;
    const char* label;
    UndoableCommand::Ptr (*makeCommand)(const TreePtr&, const Path&);
};

constexpr auto kMake = "make";

const Operation kOperations[] = {
    {"duplicate", "Duplicate",
     [](const TreePtr& tree, const Path& item) -> UndoableCommand::Ptr {
         return duplicateItemCmd(tree, item);
     }},
    {"ungroup", "Ungroup", &ungroupCmd},
    {"delete", "Delete", &deleteItemCmd},
};

} // namespace

MemoryContextOps::MemoryContextOps(std::shared_ptr<Tree> tree, SceneItem::Ptr item)
    : _tree(std::move(tree)), _item(std::move(item))
{}

SceneItem::Ptr MemoryContextOps::sceneItem() const
{
    return _item;
}

std::vector<ContextItem> MemoryContextOps::items(const ItemPath& itemPath) const
{
    std::vector<ContextItem> entries;
    if (itemPath.empty()) {
        entries.emplace_back(kMake, "Make", true, false, false, false, true);
        entries.emplace_back(ContextItem::SeparatorTag(), "");
        for (const auto& operation : kOperations) {
            const auto allowed = operation.makeCommand(_tree, _item->path()) != nullptr;
            entries.emplace_back(operation.key, operation.label, false, false, false, false,
                                 allowed);
        }
    } else if (itemPath == ItemPath{kMake}) {
        for (const auto& known : nodeTypes()) {
            entries.emplace_back(known.type, known.displayName, false, false, false, false, true);
        }
    }
    return entries;
}

UndoableCommand::Ptr MemoryContextOps::doOpCmd(const ItemPath& itemPath)
{
    if (itemPath.size() == 2 && itemPath.front() == kMake) {
        const auto* known = findNodeType(itemPath.back());
        return known ? createChildCmd(_tree, _item->path(), known->type, {}) : nullptr;
    }
    for (const auto& operation : kOperations) {
        if (itemPath == ItemPath{operation.key}) {
            return operation.makeCommand(_tree, _item->path());
        }
    }
    return nullptr;
}

MemoryContextOpsHandler::MemoryContextOpsHandler(std::shared_ptr<Tree> tree)
    : _tree(std::move(tree))
{}

ContextOps::Ptr MemoryContextOpsHandler::contextOps(const SceneItem::Ptr& item)
{
    return std::make_shared<MemoryContextOps>(_tree, item);
}

} // namespace Kiv_v4::memory
