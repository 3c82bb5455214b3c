#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <utility>

#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/subject.h"

#include "singleton.h"

namespace Kiv_v4::detail {

/// The subject for the observers of one item whose notifications carry the item.
struct ItemSubject : Subject
{
    explicit ItemSubject(SceneItem::Ptr observed) : item(std::move(observed)) {}

    const SceneItem::Ptr item; ///< The item that the first observer was added with.
};

/// The same for notifications that carry only the item's path, so that the item is not kept.
struct UnkeptItemSubject : Subject
{
    explicit UnkeptItemSubject(const SceneItem::Ptr&) {}
};

/// The observers of single items, with one subject per observed path. The first observer makes the
/// subject; removing the last one or the run-time erases it. The table of a run-time exists from
/// its first observer on.
///
/// A template so that each kind of change has a registry of its own, found by its notification.
template <class Changed, class SubjectOfItem = ItemSubject>
class ItemObserverRegistry
{
public:
    using SubjectPtr = std::shared_ptr<SubjectOfItem>;

    static ItemObserverRegistry& instance()
    {
        static NoDestructor<ItemObserverRegistry> registry;
        static const EmptiedAtExit<ItemObserverRegistry> emptied(registry);
        return *registry;
    }

    bool add(const SceneItem::Ptr& item, const Observer::Ptr& observer)
    {
        if (!item) {
            return false;
        }
        if (const auto subject = find(item->path())) {
            return subject->addObserver(observer);
        }
        const auto subject = std::make_shared<SubjectOfItem>(item);
        subject->addObserver(observer);
        _subjects[item->runTimeId()].emplace(item->path(), subject);
        return true;
    }

    bool remove(const Path& path, const Observer::Ptr& observer)
    {
        const auto subject = find(path);
        if (!subject || !subject->removeObserver(observer)) {
            return false;
        }
        if (!subject->hasObservers()) {
            _subjects.at(path.runTimeId()).erase(path);
        }
        return true;
    }

    bool remove(const SceneItem::Ptr& item, const Observer::Ptr& observer)
    {
        return item && remove(item->path(), observer);
    }

    /// Removes all observers of the run-time's items, and the items that the subjects keep.
    void forget(Rtid runTimeId) noexcept
    {
        const auto found = _subjects.find(runTimeId);
        if (found != _subjects.end()) {
            // Items may use the registry in their destructors: they must die after it is consistent
            // again.
            const auto forgotten = std::exchange(found->second, {});
        }
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

    [[nodiscard]] bool hasAny(const Path& path) const { return entry(path) != nullptr; }

    /// Whether the run-time was ever observed.
    [[nodiscard]] bool hasAny(Rtid runTimeId) const { return _subjects.count(runTimeId) != 0; }

    /// The subject of the path; null if there is none. The shared pointer keeps it alive while its
    /// observers are notified.
    [[nodiscard]] SubjectPtr find(const Path& path) const
    {
        const auto* const found = entry(path);
        return found ? *found : nullptr;
    }

    /// Notifies the observers of the item at `path` with a notification that carries the item.
    void notify(const Path& path) const
    {
        if (const auto subject = find(path)) {
            subject->notify(Changed(subject->item));
        }
    }

    /// Calls `visit` with each observed path and the number of living observers.
    template <class Visit>
    void forEach(Visit visit) const
    {
        for (const auto& [runTimeId, subjects] : _subjects) {
            for (const auto& [path, subject] : subjects) {
                visit(path, subject->nbObservers());
            }
        }
    }

private:
    [[nodiscard]] const SubjectPtr* entry(const Path& path) const
    {
        const auto ofRunTime = _subjects.find(path.runTimeId());
        if (ofRunTime == _subjects.end()) {
            return nullptr;
        }
        const auto found = ofRunTime->second.find(path);
        return found == ofRunTime->second.end() ? nullptr : &found->second;
    }

    std::unordered_map<Rtid, std::unordered_map<Path, SubjectPtr>> _subjects;
};

} // namespace Kiv_v4::detail
