#include "report/itemReport.h"

#include <exception>
#include <vector>

#include "kiv/runTimeMgr.h"

#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

namespace {

Section identity(const document::Workspace& scene, const SceneItem::Ptr& item)
{
    const auto originalName = scene.originalName(*item);
    return {"",
            "",
            {
                {"path", "path", pathOf(item)},
                {"name", "name", item->nodeName()},
                {"originalName", "original name", originalName ? Json(*originalName) : Json()},
                {"type", "node type", item->nodeType()},
                {"ancestorTypes", "ancestor types", item->ancestorNodeTypes()},
                {"runTime", "run-time", RunTimeMgr::instance().getName(item->runTimeId())},
                {"runTimeId", "run-time id", item->runTimeId()},
            }};
}

/// What there is to know of an item behind its identity, in the order in which it is shown.
constexpr Section (*kSections[])(const SceneItem::Ptr&) = {
    place, transform, camera, light, object, attributes, connections, nodeDefinition, userInterface,
};

} // namespace

bool show(const document::Workspace& scene, const SceneItem::Ptr& item, const std::string& name,
          bool asJson, Output& output)
{
    std::vector sections{identity(scene, item)};
    auto isComplete = true;
    for (const auto section : kSections) {
        try { // What one interface fails to tell does not hide what the others do.
            sections.push_back(section(item));
        } catch (const std::exception& error) {
            complain(name, error.what());
            isComplete = false;
        }
    }
    asJson ? writeJson(sections, output) : writeText(sections, output);
    return isComplete;
}

} // namespace app
