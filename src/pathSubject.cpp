#include "kiv/pathSubject.h"

#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"

#include "detail/dispatch.h"

namespace Kiv_v4 {

namespace {

/// Passes the notifications of an item or an ancestor to the observers of the path subject.
class Forwarder : public Observer
{
public:
    explicit Forwarder(PathSubject& subject) : _subject(subject) {}

    void operator()(const Notification& notification) override { _subject.notify(notification); }

private:
    PathSubject& _subject;
};

} // namespace

class PathSubject::SceneChangedObserver : public Observer
{
public:
    explicit SceneChangedObserver(PathSubject& subject) : _subject(subject) {}

    void operator()(const Notification& notification) override
    {
        const auto concerns = [this](const Path& changed) {
            return _subject.path().isAtOrBelow(changed);
        };
        forEachOp(notification, concerns, [this](const auto& op) { apply(op); });
    }

private:
    void apply(const SceneCompositeNotification::Op& op)
    {
        if (op.opType == SceneChanged::Deleted) {
            _subject.objectDelete(op.path);
        } else if (op.opType == SceneChanged::PathChanged && op.item) {
            if (op.subOpType == ObjectPathChange::Renamed) {
                _subject.rename(op.path, op.item->path());
            } else if (op.subOpType == ObjectPathChange::Reparented) {
                _subject.reparent(op.path, op.item->path());
            }
        }
    }

    PathSubject& _subject;
};

PathSubject::PathSubject(const Path& path, AddObserverFn addObserverFn,
                         RemoveObserverFn removeObserverFn)
    : _path(path), _addObserverFn(std::move(addObserverFn)),
      _removeObserverFn(std::move(removeObserverFn)),
      _forwarder(std::make_shared<Forwarder>(*this)),
      _sceneObserver(std::make_shared<SceneChangedObserver>(*this))
{
    Scene::instance().addObserver(_sceneObserver);
    try {
        addObservers(_path, Path());
    } catch (...) {
        detachAll();
        throw;
    }
}

PathSubject::~PathSubject()
{
    detachAll();
}

void PathSubject::detachAll() noexcept
{
    try {
        detail::logAndRethrow("~PathSubject", "src/pathSubject",
                              [this] { removeObservers(_path, Path()); });
    } catch (...) {
        // Logged; a destructor must not throw.
    }
}

void PathSubject::addObserver(const Path& p)
{
    // The items of an unregistered run-time cannot be queried.
    const auto canAsk = RunTimeMgr::instance().hierarchyHandler(p.runTimeId()) != nullptr;
    if (const auto item = canAsk ? Hierarchy::createItem(p) : nullptr) {
        _addObserverFn(item, _forwarder);
    }
}

void PathSubject::removeObserver(const Path& p)
{
    _removeObserverFn(p, _forwarder);
}

void PathSubject::addObservers(const Path& from, const Path& stop)
{
    for (auto path = from; !path.empty() && path != stop; path = path.pop()) {
        addObserver(path);
    }
}

void PathSubject::removeObservers(const Path& from, const Path& stop)
{
    for (auto path = from; !path.empty() && path != stop; path = path.pop()) {
        removeObserver(path);
    }
}

void PathSubject::rename(const Path& oldPath, const Path& newPath)
{
    if (_path.empty() || !_path.isAtOrBelow(oldPath)) {
        return;
    }
    const auto parent = newPath.pop(); // nothing changed above it
    auto renamed = _path.replaceComponent(static_cast<int>(oldPath.size()) - 1, newPath.back());
    removeObservers(_path, parent);
    _path = std::move(renamed);
    addObservers(_path, parent);
}

void PathSubject::reparent(const Path& oldPath, const Path& newPath)
{
    if (_path.empty() || !_path.isAtOrBelow(oldPath)) {
        return;
    }
    auto reparented = _path.reparent(oldPath, newPath);
    removeObservers(_path, Path());
    _path = std::move(reparented);
    addObservers(_path, Path());
}

void PathSubject::objectDelete(const Path& deletedPath)
{
    if (!_path.isAtOrBelow(deletedPath)) {
        return;
    }
    removeObservers(_path, Path());
    _path = Path();
}

} // namespace Kiv_v4
