#include "kiv/observableSelection.h"

#include <utility>

#include "kiv/selectionNotification.h"

namespace Kiv_v4 {

namespace {

/// Gathers that `item` was added; removes it again if that fails.
template <class Gather>
void gatherAddition(Selection& selection, const SceneItem::Ptr& item, Gather gather)
{
    try {
        gather();
    } catch (...) {
        selection.doRemove(item);
        throw;
    }
}

} // namespace

ObservableSelection::ObservableSelection() = default;

ObservableSelection::ObservableSelection(const Selection& other) : Selection(other) {}

ObservableSelection::ObservableSelection(const ObservableSelection& other)
    : ObservableSelection(static_cast<const Selection&>(other))
{}

ObservableSelection::ObservableSelection(Selection&& other) : Selection(std::move(other)) {}

ObservableSelection::ObservableSelection(ObservableSelection&& other)
    : ObservableSelection(static_cast<Selection&&>(other))
{}

ObservableSelection::~ObservableSelection() = default;

ObservableSelection& ObservableSelection::operator=(const Selection& other)
{
    Selection::operator=(other);
    return *this;
}

ObservableSelection& ObservableSelection::operator=(const ObservableSelection& other)
{
    return *this = static_cast<const Selection&>(other);
}

ObservableSelection& ObservableSelection::operator=(Selection&& other)
{
    Selection::operator=(std::move(other));
    return *this;
}

ObservableSelection& ObservableSelection::operator=(ObservableSelection&& other)
{
    return *this = static_cast<Selection&&>(other);
}

bool ObservableSelection::inCompositeNotification() const
{
    return _compositeNotification != nullptr;
}

void ObservableSelection::beginNotificationGuard()
{
    _compositeNotification = std::make_unique<SelectionCompositeNotification>();
}

void ObservableSelection::endNotificationGuard()
{
    const auto composite = std::move(_compositeNotification);
    notify(*composite);
}

void ObservableSelection::postAppend(const SceneItem::Ptr& item)
{
    if (inCompositeNotification()) {
        gatherAddition(*this, item, [&] { _compositeNotification->appendAppendOp(item); });
    } else {
        notify(SelectionItemAppended(item));
    }
}

void ObservableSelection::postRemove(const SceneItem::Ptr& item)
{
    if (inCompositeNotification()) {
        _compositeNotification->appendRemoveOp(item);
    } else {
        notify(SelectionItemRemoved(item));
    }
}

void ObservableSelection::postInsert(const SceneItem::Ptr& position, const SceneItem::Ptr& item)
{
    if (inCompositeNotification()) {
        gatherAddition(*this, item,
                       [&] { _compositeNotification->appendInsertOp(position, item); });
    } else {
        notify(SelectionItemInserted(position, item));
    }
}

void ObservableSelection::postClear()
{
    if (inCompositeNotification()) {
        _compositeNotification->appendClearOp();
    } else {
        notify(SelectionCleared());
    }
}

void ObservableSelection::postReplaceWith()
{
    if (inCompositeNotification()) {
        _compositeNotification->appendReplaceWithOp();
    } else {
        notify(SelectionReplaced());
    }
}

} // namespace Kiv_v4
