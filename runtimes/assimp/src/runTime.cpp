#include "kiv/assimp/runTime.h"

#include <stdexcept>

#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"

#include "gatewayObserver.h"
#include "hierarchyHandler.h"
#include "itemInterfaces.h"
#include "mounts.h"

namespace Kiv_v4::assimp {

RunTime::RunTime(const std::string& name)
    : _registration(name, kSeparator), _mounts(std::make_shared<Mounts>(_registration.id())),
      _gatewayObserver(std::make_shared<GatewayObserver>(_mounts))
{
    RunTimeMgr::instance().setHierarchyHandler(id(),
                                               std::make_shared<AssimpHierarchyHandler>(_mounts));
    installItemInterfaces(id(), _mounts);
}

RunTime::~RunTime() = default;

Rtid RunTime::id() const noexcept
{
    return _registration.id();
}

SceneItem::Ptr RunTime::mount(const std::shared_ptr<const SceneFile>& file, const Path& gateway)
{
    _mounts->add(file, gateway);
    if (Scene::hasInstance()) {
        Scene::instance().addObserver(_gatewayObserver);
    }
    announceInvalidated(gateway);
    return _mounts->rootItem(gateway);
}

bool RunTime::unmount(const Path& gateway)
{
    const auto removed = _mounts->remove(gateway);
    if (removed) {
        announceInvalidated(gateway);
    }
    return removed;
}

bool RunTime::moveMount(const Path& gateway, const Path& newGateway)
{
    return _mounts->move(gateway, newGateway);
}

std::size_t RunTime::nbItems(const Path& gateway) const
{
    const auto file = _mounts->file(gateway);
    return file ? file->size() : 0;
}

std::string RunTime::originalName(const Path& item) const
{
    const auto found = _mounts->item(item);
    if (!found) {
        throw std::invalid_argument("There is no item of a scene file at '" +
                                    PathString::string(item) + "'.");
    }
    return found->file()->originalName(found->index());
}

} // namespace Kiv_v4::assimp
