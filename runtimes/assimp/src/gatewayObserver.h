#pragma once

#include <memory>

#include "kiv/observer.h"
#include "kiv/sceneNotification.h"

#include "mounts.h"

namespace Kiv_v4::assimp {

/// Lets mounts follow their gateways when the scene says that these, or ancestors of theirs, were
/// renamed or reparented, leave with them when they are deleted, and come back with them.
class GatewayObserver : public Observer
{
public:
    explicit GatewayObserver(std::shared_ptr<Mounts> mounts);

    void operator()(const Notification& notification) override;

private:
    void apply(const SceneCompositeNotification::Op& op);
    void move(const Path& oldPath, const Path& newPath);
    void resume(const Path& path);

    const std::shared_ptr<Mounts> _mounts;
};

/// Tells the observers of the installed scene, if there is one, that what lies under the gateway
/// changed.
void announceInvalidated(const Path& gateway);

} // namespace Kiv_v4::assimp
