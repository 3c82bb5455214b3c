#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/selection.h"
#include "kiv/subject.h"

namespace Kiv_v4 {

class SelectionCompositeNotification;

/// A selection that notifies its observers of every change, with a notification of
/// `selectionNotification.h` once the change is complete.
///
///     const auto selection = std::make_shared<ObservableSelection>();
///     selection->addObserver(outliner);
///     selection->append(item); // the outliner receives a SelectionItemAppended
///
/// Operations that fail or change nothing notify nobody, except `clear` and the replacements, which
/// always notify. The steps `do...` never notify. A `NotificationGuard` on the selection gathers
/// the changes of a batch; observers receive one `SelectionCompositeNotification` when it closes,
/// even if nothing was gathered.
///
/// **Lifetime.** Observers and an open guard belong to one object: a new selection made by copying
/// or moving has neither. A selection destroyed under a guard delivers nothing.
///
/// **Reentrancy.** As for `Subject`. An observer may change the selection.
///
/// **Errors.** As for `Selection`, with two exceptions: a change stays if an allocation fails while
/// observers are notified of it; and a removal stays, without a notification, if an allocation
/// fails while a guard gathers it.
class KIV_EXPORT ObservableSelection : public Selection, public Subject
{
public:
    using Ptr = std::shared_ptr<ObservableSelection>;

    ObservableSelection();

    ObservableSelection(const Selection& other);
    ObservableSelection(const ObservableSelection& other);

    /// Takes the items of `other` and notifies the observers of `other`, if it can have any, of a
    /// clear.
    ObservableSelection(Selection&& other);
    ObservableSelection(ObservableSelection&& other);

    ~ObservableSelection() override;

    /// Notifies the observers of a replacement.
    ObservableSelection& operator=(const Selection& other);
    ObservableSelection& operator=(const ObservableSelection& other);

    /// Takes the items of `other` and notifies the observers of `other`, if it can have any, of a
    /// clear; then notifies its own of a replacement.
    ObservableSelection& operator=(Selection&& other);
    ObservableSelection& operator=(ObservableSelection&& other);

    [[nodiscard]] bool inCompositeNotification() const override;

    /// Begins a composite and loses one that is already open. `NotificationGuard` never loses one.
    void beginNotificationGuard() override;

    /// Delivers the composite that was begun.
    void endNotificationGuard() override;

protected:
    /// Notify the observers, or gather under a guard.
    void postAppend(const SceneItem::Ptr& item) override;
    void postRemove(const SceneItem::Ptr& item) override;
    void postInsert(const SceneItem::Ptr& position, const SceneItem::Ptr& item) override;
    void postClear() override;
    void postReplaceWith() override;

private:
    std::unique_ptr<SelectionCompositeNotification> _compositeNotification; ///< Null: no guard.
};

} // namespace Kiv_v4
