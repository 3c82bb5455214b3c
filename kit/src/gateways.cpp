#include "kiv/kit/gateways.h"

#include <exception>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kiv/log.h"

namespace Kiv_v4::kit {

namespace {

struct Registry
{
    std::vector<std::weak_ptr<GatewayFollower>> followers;
    std::unordered_map<Rtid, GatewayOwner::Target> owners;
};

/// Never destroyed, so that static objects may hold owners and followers.
Registry& registry()
{
    static auto& made = *new Registry;
    return made;
}

void logThrown(const char* what)
{
    log("GatewayOwner", "kit/src/gateways", __LINE__,
        std::string("A follower of gateways threw ") + what);
}

/// Followers may be added and removed meanwhile.
template <class Tell>
void tellFollowers(Tell tell)
{
    if (registry().followers.empty()) {
        return;
    }
    const auto followers = registry().followers;
    for (const auto& known : followers) {
        const auto follower = known.lock();
        if (!follower) {
            continue;
        }
        try {
            tell(*follower);
        } catch (const std::exception& thrown) {
            logThrown(thrown.what());
        } catch (...) {
            logThrown("an exception that is not a std::exception");
        }
    }
}

} // namespace

GatewayFollower::GatewayFollower() = default;

/// Erases all references to dead followers: their code may be unloaded next.
GatewayFollower::~GatewayFollower()
{
    std::erase_if(registry().followers, [](const auto& known) { return known.expired(); });
}

void GatewayFollower::add(const std::shared_ptr<GatewayFollower>& follower)
{
    registry().followers.push_back(follower);
}

GatewayOwner::GatewayOwner(Rtid runTimeId, Target target) : _runTimeId(runTimeId)
{
    if (!registry().owners.emplace(runTimeId, std::move(target)).second) {
        throw std::invalid_argument("the run-time " + std::to_string(runTimeId) +
                                    " already has a GatewayOwner");
    }
}

GatewayOwner::~GatewayOwner()
{
    registry().owners.erase(_runTimeId);
}

void GatewayOwner::itemAdded(const Path& path)
{
    tellFollowers([&](GatewayFollower& follower) { follower.itemAdded(path); });
}

void GatewayOwner::itemRemoved(const Path& path)
{
    tellFollowers([&](GatewayFollower& follower) { follower.itemRemoved(path); });
}

void GatewayOwner::itemMoved(const Path& oldPath, const Path& newPath)
{
    tellFollowers([&](GatewayFollower& follower) { follower.itemMoved(oldPath, newPath); });
}

bool GatewayOwner::tells(Rtid runTimeId)
{
    return registry().owners.count(runTimeId) != 0;
}

std::optional<Rtid> GatewayOwner::target(const Path& path)
{
    const auto owner = registry().owners.find(path.runTimeId());
    return owner == registry().owners.end() ? std::nullopt : std::optional(owner->second(path));
}

} // namespace Kiv_v4::kit
