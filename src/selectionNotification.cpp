#include "kiv/selectionNotification.h"

#include <utility>

namespace Kiv_v4 {

SelectionChanged::SelectionChanged(OpType opType) : _opType(opType) {}

SelectionChanged::~SelectionChanged() = default;

SelectionItemAppended::SelectionItemAppended(const SceneItem::Ptr& item)
    : SelectionChanged(Append), _item(item)
{}

SelectionItemAppended::~SelectionItemAppended() = default;

SelectionItemRemoved::SelectionItemRemoved(const SceneItem::Ptr& item)
    : SelectionChanged(Remove), _item(item)
{}

SelectionItemRemoved::~SelectionItemRemoved() = default;

SelectionItemInserted::SelectionItemInserted(const SceneItem::Ptr& position,
                                             const SceneItem::Ptr& item)
    : SelectionChanged(Insert), _position(position), _item(item)
{}

SelectionItemInserted::~SelectionItemInserted() = default;

SelectionCleared::SelectionCleared() : SelectionChanged(Clear) {}

SelectionCleared::~SelectionCleared() = default;

SelectionReplaced::SelectionReplaced() : SelectionChanged(ReplaceWith) {}

SelectionReplaced::~SelectionReplaced() = default;

SelectionCompositeNotification::Op::Op(const SelectionChanged& change) : opType(change.opType())
{
    if (const auto* append = dynamic_cast<const SelectionItemAppended*>(&change)) {
        item = append->item();
    } else if (const auto* remove = dynamic_cast<const SelectionItemRemoved*>(&change)) {
        item = remove->item();
    } else if (const auto* insert = dynamic_cast<const SelectionItemInserted*>(&change)) {
        item = insert->item();
        pos = insert->position();
    }
}

SelectionCompositeNotification::Op::Op(OpType type, SceneItem::Ptr changedItem,
                                       SceneItem::Ptr insertPosition)
    : opType(type), item(std::move(changedItem)), pos(std::move(insertPosition))
{}

SelectionCompositeNotification::SelectionCompositeNotification() : SelectionChanged(Composite) {}

SelectionCompositeNotification::~SelectionCompositeNotification() = default;

void SelectionCompositeNotification::appendAppendOp(const SceneItem::Ptr& item)
{
    _ops.emplace_back(Append, item);
}

void SelectionCompositeNotification::appendRemoveOp(const SceneItem::Ptr& item)
{
    _ops.emplace_back(Remove, item);
}

void SelectionCompositeNotification::appendInsertOp(const SceneItem::Ptr& pos,
                                                    const SceneItem::Ptr& item)
{
    _ops.emplace_back(Insert, item, pos);
}

void SelectionCompositeNotification::appendClearOp()
{
    _ops.emplace_back(Clear);
}

void SelectionCompositeNotification::appendReplaceWithOp()
{
    _ops.emplace_back(ReplaceWith);
}

} // namespace Kiv_v4
