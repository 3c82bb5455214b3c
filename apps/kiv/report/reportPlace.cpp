#include "kiv/hierarchy.h"
#include "kiv/pathString.h"
#include "kiv/sceneSegmentHandler.h"

#include "report/itemReport.h"

namespace app {

using namespace Kiv_v4;

Json pathOf(const SceneItem::Ptr& item)
{
    return item ? Json(PathString::string(item->path())) : Json();
}

Section place(const SceneItem::Ptr& item)
{
    Section section{"", ""};
    if (const auto hierarchy = Hierarchy::hierarchy(item)) {
        section.facts = {
            {"parent", "parent", pathOf(hierarchy->parent())},
            {"defaultParent", "default parent", pathOf(hierarchy->defaultParent())},
            {"children", "children", hierarchy->children().size()},
            {"gateway", "gateway", SceneSegmentHandler::isGateway(item->path())},
        };
    }
    return section;
}

} // namespace app
