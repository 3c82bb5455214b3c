#pragma once

#include <functional>
#include <memory>

#include "kiv/export.h"
#include "kiv/observer.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/subject.h"

namespace Kiv_v4 {

/// Stands for one scene item named by its path, and follows it: its observers hear what the item
/// and each of its ancestors announce on their own subjects, also after the item or an ancestor was
/// renamed or reparented. When one of them is deleted, it follows nothing any more.
///
/// Of a rename above a gateway it may hear before the run-time behind the gateway does. Then that
/// run-time's items cannot be found, and only their ancestors are followed from there on; a host
/// that must not miss their changes makes the path subject anew on `SubtreeInvalidate`.
///
/// What the items' subjects are is up to two functions that attach an observer to an item and
/// detach it from the item at a path, such as the registry of transforms.
///
/// **Lifetime.** A scene must be installed when it is made; it hears of renames, reparents and
/// deletes from that scene. When it dies, nothing of it stays attached.
///
/// **Errors.** Items that are not there when the path subject attaches to them are skipped, and not
/// tried again when they are added later. An empty function throws `std::bad_function_call` when it
/// is used; in the destructor that is written to the log instead.
class KIV_EXPORT PathSubject : public Subject
{
public:
    /// Attaches an observer to an item; detaches one from the item at a path.
    using AddObserverFn = std::function<bool(const SceneItem::Ptr&, const Observer::Ptr&)>;
    using RemoveObserverFn = std::function<bool(const Path&, const Observer::Ptr&)>;

    /// Hears of the scene's changes on behalf of a path subject.
    class SceneChangedObserver;

    /// Follows the item at `path`: attaches along its ancestry. When that throws, what was attached
    /// is detached again.
    PathSubject(const Path& path, AddObserverFn addObserverFn, RemoveObserverFn removeObserverFn);
    PathSubject(const PathSubject&) = delete;
    PathSubject& operator=(const PathSubject&) = delete;

    /// Detaches along the ancestry.
    ~PathSubject() override;

    /// Where the item is now; empty after it was deleted.
    [[nodiscard]] const Path& path() const noexcept { return _path; }

    using Subject::addObserver;
    using Subject::removeObserver;

    // The steps of following, public for tools that know of changes before the scene does.

    /// Attaches to the item at `p`, if there is one.
    void addObserver(const Path& p);
    /// Detaches from the item at `p`.
    void removeObserver(const Path& p);
    /// Attaches to the item at `from` and to each ancestor below `stop`.
    void addObservers(const Path& from, const Path& stop);
    /// Detaches from the item at `from` and from each ancestor below `stop`.
    void removeObservers(const Path& from, const Path& stop);

    /// Follows a change of the item or of an ancestor; those of other items are ignored.
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
