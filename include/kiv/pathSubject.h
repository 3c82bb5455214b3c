#pragma once

#include <functional>
#include <memory>

#include "kiv/export.h"
#include "kiv/observer.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/subject.h"

namespace Kiv_v4 {

/// Follows one scene item, named by its path: its observers receive the notifications of the
/// subjects of the item and of each of its ancestors, also after the item or an ancestor was
/// renamed or reparented. After one of them was deleted, it follows nothing.
///
/// It may be notified of a rename above a gateway before the run-time behind the gateway is. Then
/// it cannot find that run-time's items and follows only their ancestors from there on; a host that
/// must not miss their changes must make a new path subject on `SubtreeInvalidate`.
///
/// Two functions determine the items' subjects: one attaches an observer to an item, one detaches
/// it from the item at a path. `Transform3d` has such functions.
///
/// **Lifetime.** A scene must be installed when a path subject is made; the path subject follows
/// the renames, reparents and deletes of that scene. Its destructor detaches all its observers.
///
/// **Errors.** The path subject skips items that do not exist when it attaches to them, and does
/// not try again when they are added later. An empty function throws `std::bad_function_call` when
/// it is used; the destructor writes that to the log instead.
class KIV_EXPORT PathSubject : public Subject
{
public:
    /// Attaches an observer to an item; detaches one from the item at a path.
    using AddObserverFn = std::function<bool(const SceneItem::Ptr&, const Observer::Ptr&)>;
    using RemoveObserverFn = std::function<bool(const Path&, const Observer::Ptr&)>;

    /// Observes the scene on behalf of a path subject.
    class SceneChangedObserver;

    /// Follows the item at `path`: attaches along its ancestry. If that throws, it detaches again
    /// what it had attached.
    PathSubject(const Path& path, AddObserverFn addObserverFn, RemoveObserverFn removeObserverFn);
    PathSubject(const PathSubject&) = delete;
    PathSubject& operator=(const PathSubject&) = delete;

    /// Detaches along the ancestry.
    ~PathSubject() override;

    /// The present path of the item; empty after it was deleted.
    [[nodiscard]] const Path& path() const noexcept { return _path; }

    using Subject::addObserver;
    using Subject::removeObserver;

    // The steps of following, public for tools that know of changes before the scene does.

    /// Attaches to the item at `p`, if it exists.
    void addObserver(const Path& p);
    /// Detaches from the item at `p`.
    void removeObserver(const Path& p);
    /// Attaches to the item at `from` and to each ancestor below `stop`.
    void addObservers(const Path& from, const Path& stop);
    /// Detaches from the item at `from` and from each ancestor below `stop`.
    void removeObservers(const Path& from, const Path& stop);

    /// Follow a change of the item or of an ancestor; ignore those of other items.
    void rename(const Path& oldPath, const Path& newPath);
    void reparent(const Path& oldPath, const Path& newPath);
    void objectDelete(const Path& deletedPath);

private:
    KIV_HIDDEN void detachAll() noexcept;

    Path _path;
    const AddObserverFn _addObserverFn;
    const RemoveObserverFn _removeObserverFn;
    const Observer::Ptr _forwarder;
    const std::shared_ptr<SceneChangedObserver> _sceneObserver;
};

} // namespace Kiv_v4
