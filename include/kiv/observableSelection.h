#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/selection.h"
#include "kiv/subject.h"

namespace Kiv_v4 {

class SelectionCompositeNotification;

/// A selection that tells its observers of every change, each with a notification of
/// `selectionNotification.h` once the change is complete.
///
///     const auto selection = std::make_shared<ObservableSelection>();
///     selection->addObserver(outliner);
///     selection->append(item); // the outliner receives a SelectionItemAppended
///
/// Operations that fail or change nothing send nothing, but for `clear` and the replacements, which
/// always send. The steps `do...` never send. A `NotificationGuard` on the selection gathers the
/// changes of a batch; observers receive one `SelectionCompositeNotification` when it closes, even
/// if nothing was gathered.
///
/// **Lifetime.** Observers and an open guard belong to one object: a copy, or what was moved to,
/// starts without. A selection destroyed under a guard delivers nothing.
///
/// **Reentrancy.** As told at `Subject`. An observer may change the selection.
///
/// **Errors.** As told at `Selection`. But a change stays when an allocation fails while observers
/// are told of it, and a removal, untold, when it fails while that is gathered under a guard.
class KIV_EXPORT ObservableSelection : public Selection, public Subject
{
public:
    using Ptr = std::shared_ptr<ObservableSelection>;

    ObservableSelection();

    ObservableSelection(const Selection& other);
    ObservableSelection(const ObservableSelection& other);

    /// Takes the items of `other`, whose observers, if it can have any, are told of a clear.
    ObservableSelection(Selection&& other);
    ObservableSelection(ObservableSelection&& other);

    ~ObservableSelection() override;

    /// Tells the observers of a replacement.
    ObservableSelection& operator=(const Selection& other);
    ObservableSelection& operator=(const ObservableSelection& other);

    /// Takes the items of `other`, whose observers, if it can have any, are told of a clear; then
    /// tells the own ones of a replacement.
    ObservableSelection& operator=(Selection&& other);
    ObservableSelection& operator=(ObservableSelection&& other);

    [[nodiscard]] bool inCompositeNotification() const override;

    /// Begins a composite; one that is open already is lost. See `NotificationGuard`, which never
    /// loses one.
    void beginNotificationGuard() override;

    /// Delivers the composite begun before.
    void endNotificationGuard() override;

protected:
    /// Tells the observers, or gathers under a guard.
    void postAppend(const SceneItem::Ptr& item) override;
    void postRemove(const SceneItem::Ptr& item) override;
    void postInsert(const SceneItem::Ptr& position, const SceneItem::Ptr& item) override;
    void postClear() override;
    void postReplaceWith() override;

private:
    std::unique_ptr<SelectionCompositeNotification> _compositeNotification; ///< Null: no guard.
};

} // namespace Kiv_v4
