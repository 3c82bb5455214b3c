#include "kiv/host/childName.h"

#include <unordered_set>

#include "kiv/hierarchy.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/uniqueName.h"

namespace Kiv_v4::host {

std::string freeName(const SceneItem::Ptr& parent, const std::string& name)
{
    const auto hierarchy = Hierarchy::hierarchy(parent);
    if (!hierarchy || !SceneSegmentHandler::isGateway(parent->path())) {
        return name;
    }
    std::unordered_set<std::string> names;
    auto isForeign = false;
    for (const auto& child : hierarchy->children()) {
        const auto [taken, isNew] = names.insert(child->nodeName());
        isForeign |= *taken == name && child->runTimeId() != parent->runTimeId();
    }
    return isForeign ? uniqueName(name, [&](const auto& other) { return names.contains(other); })
                     : name;
}

} // namespace Kiv_v4::host
