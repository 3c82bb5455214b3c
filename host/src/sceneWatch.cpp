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

namespace Kiv_v4::host {

namespace {

void watchBelow(const SceneItem::Ptr& top, const Observer::Ptr& observer)
{
    walk(top, std::numeric_limits<std::size_t>::max(), [&](const SceneItem::Ptr& item, auto) {
        Transform3d::addObserver(item, observer);
        if (Camera::camera(item)) {
            Camera::addObserver(item, observer);
        }
        if (Light::light(item)) {
            Light::addObserver(item, observer);
        }
        return true;
    });
}

class Teller : public Observer, public std::enable_shared_from_this<Teller>
{
public:
    explicit Teller(SceneWatch::Tell tell) : _tell(std::move(tell)) {}

    void operator()(const Notification& notification) override
    {
        _tell(notification);
        if (const auto* const change = dynamic_cast<const SceneChanged*>(&notification)) {
            forEachOp(*change, [this](const SceneCompositeNotification::Op& op) { include(op); });
        }
    }

private:
    void include(const SceneCompositeNotification::Op& op)
    {
        if (op.opType == SceneChanged::Deleted) {
            return;
        }
        if (const auto item = Hierarchy::createItem(op.item ? op.item->path() : op.path)) {
            watchBelow(item, shared_from_this());
        }
    }

    const SceneWatch::Tell _tell;
};

} // namespace

SceneWatch::SceneWatch(Tell tell, const SceneItem::Ptr& root)
    : _observer(std::make_shared<Teller>(std::move(tell)))
{
    Scene::instance().addObserver(_observer);
    GlobalSelection::get()->addObserver(_observer);
    Attributes::addObserver(_observer);
    Object3d::addObserver(_observer);
    watchBelow(root, _observer);
}

SceneWatch::~SceneWatch() = default; // releases the observer, which ends all its observing

} // namespace Kiv_v4::host
