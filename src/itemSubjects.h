#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/subject.h"

#include "processWide.h"

namespace Kiv_v4::detail {

/// What the observers of one item are registered on when they are told with the item itself.
struct ItemSubject : Subject
{
    explicit ItemSubject(SceneItem::Ptr observed) : item(std::move(observed)) {}

    const SceneItem::Ptr item; ///< The one given to the first observer.
};

/// The observers of single items: one subject per observed path, made by the first observer and
/// erased with the last, and the run-times that were ever observed.
///
/// A template so that each kind of change has a registry of its own, found by its notification.
template <class Changed, class SubjectOfItem = ItemSubject>
class ItemSubjects
{
public:
    using SubjectPtr = std::shared_ptr<SubjectOfItem>;

    static ItemSubjects& instance() { return processWide<ItemSubjects>(); }

    bool add(const SceneItem::Ptr& item, const Observer::Ptr& observer)
    {
        if (!item) {
            return false;
        }
        const auto [entry, isNew] = _subjects.try_emplace(item->path());
        try {
            if (isNew) {
                entry->second = std::make_shared<SubjectOfItem>(item);
            }
            const auto added = entry->second->addObserver(observer);
            if (added) {
                _observed.insert(item->runTimeId()); // allocates, if ever, for a new subject
            }
            return added;
        } catch (...) {
            if (isNew) {
                _subjects.erase(entry);
            }
            throw;
        }
    }

    bool remove(const Path& path, const Observer::Ptr& observer)
    {
        const auto subject = find(path);
        if (!subject || !subject->removeObserver(observer)) {
            return false;
        }
        if (subject->nbObservers() == 0) {
            _subjects.erase(path);
        }
        return true;
    }

    bool remove(const SceneItem::Ptr& item, const Observer::Ptr& observer)
    {
        return item && remove(item->path(), observer);
    }

    [[nodiscard]] std::size_t count(const SceneItem::Ptr& item) const
    {
        const auto subject = item ? find(item->path()) : nullptr;
        return subject ? subject->nbObservers() : 0;
    }

    [[nodiscard]] bool has(const SceneItem::Ptr& item, const Observer::Ptr& observer) const
    {
        const auto subject = item ? find(item->path()) : nullptr;
        return subject && subject->hasObserver(observer);
    }

    [[nodiscard]] bool hasAny(const Path& path) const { return _subjects.count(path) != 0; }

    /// Whether the run-time was ever observed.
    [[nodiscard]] bool hasAny(Rtid runTimeId) const { return _observed.count(runTimeId) != 0; }

    /// The subject of the path, or null. The share keeps it alive while its observers are notified.
    [[nodiscard]] SubjectPtr find(const Path& path) const
    {
        const auto found = _subjects.find(path);
        return found == _subjects.end() ? nullptr : found->second;
    }

    /// Tells the observers of the item at `path` with a notification that carries the item.
    void notify(const Path& path) const
    {
        if (const auto subject = find(path)) {
            subject->notify(Changed(subject->item));
        }
    }

private:
    std::unordered_map<Path, SubjectPtr> _subjects;
    std::unordered_set<Rtid> _observed;
};

} // namespace Kiv_v4::detail
