#include "kiv/host/sceneWatch.h"

#include <limits>
#include <utility>

#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/globalSelection.h"
#include "kiv/hierarchy.h"
#include "kiv/host/outline.h"
#include "kiv/light.h"
#include "kiv/object3d.h"
#include "kiv/observableSelection.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"
#include "kiv/transform3d.h"
#include "kiv/trie.h"

namespace Kiv_v4::host {

namespace {

/// Stands for the item that was at a path, which may be gone.
class Place : public SceneItem
{
public:
    using SceneItem::SceneItem;
    [[nodiscard]] std::string nodeType() const override { return {}; }
};

class Teller : public Observer, public std::enable_shared_from_this<Teller>
{
public:
    explicit Teller(SceneWatch::Tell tell) : _tell(std::move(tell)) {}

    void operator()(const Notification& notification) override
    {
        _tell(notification);
        if (const auto* const change = dynamic_cast<const SceneChanged*>(&notification)) {
            forEachOp(*change, [this](const SceneCompositeNotification::Op& op) { follow(op); });
        }
    }

    void watchBelow(const SceneItem::Ptr& top)
    {
        const auto self = shared_from_this();
        walk(top, std::numeric_limits<std::size_t>::max(), [&](const SceneItem::Ptr& item, auto) {
            Transform3d::addObserver(item, self);
            if (Camera::camera(item)) {
                Camera::addObserver(item, self);
            }
            if (Light::light(item)) {
                Light::addObserver(item, self);
            }
            _watched.add(item->path(), item->path());
            return true;
        });
    }

    /// Leaves the items at and below the path, or all for an empty one.
    void leave(const Path& top)
    {
        const auto self = shared_from_this();
        for (const auto& path : _watched.dataUnder(top)) {
            if (top.empty() || path.isAtOrBelow(top)) {
                const auto place = std::make_shared<Place>(path);
                Transform3d::removeObserver(place, self);
                Camera::removeObserver(place, self);
                Light::removeObserver(place, self);
                _watched.remove(path);
            }
        }
    }

private:
    void follow(const SceneCompositeNotification::Op& op)
    {
        if (op.opType == SceneChanged::Deleted && op.subOpType == ObjectDelete::PreDelete) {
            return; // the item is still there, and may still change
        }
        if (op.opType != SceneChanged::Added && !op.path.empty() &&
            !(op.opType == SceneChanged::PathChanged &&
              op.subOpType == ObjectPathChange::PathAdded)) {
            leave(op.path);
        }
        const auto item = op.opType == SceneChanged::Deleted
                              ? nullptr
                              : Hierarchy::createItem(op.item ? op.item->path() : op.path);
        if (item) {
            watchBelow(item);
        }
    }

    const SceneWatch::Tell _tell;
    Trie<Path> _watched; ///< The paths of the items that are observed.
};

} // namespace

SceneWatch::SceneWatch(Tell tell, const SceneItem::Ptr& root)
    : _observer(std::make_shared<Teller>(std::move(tell)))
{
    Scene::instance().addObserver(_observer);
    GlobalSelection::get()->addObserver(_observer);
    Attributes::addObserver(_observer);
    Object3d::addObserver(_observer);
    static_cast<Teller&>(*_observer).watchBelow(root);
}

SceneWatch::~SceneWatch()
{
    static_cast<Teller&>(*_observer).leave(Path());
    if (Scene::hasInstance()) {
        Scene::instance().removeObserver(_observer);
    }
    if (const auto& selection = GlobalSelection::get()) {
        selection->removeObserver(_observer);
    }
    Attributes::removeObserver(_observer);
    Object3d::removeObserver(_observer);
}

} // namespace Kiv_v4::host
