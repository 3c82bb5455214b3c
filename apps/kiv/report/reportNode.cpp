#include <sstream>

#include "kiv/contextOps.h"
#include "kiv/nodeDef.h"
#include "kiv/uiInfoHandler.h"

#include "report/itemReport.h"

namespace app {

using namespace Kiv_v4;

namespace {

const char* nameOf(UIInfoHandler::BadgePosition position)
{
    switch (position) {
    case UIInfoHandler::UpperLeft:
        return "upper left";
    case UIInfoHandler::UpperRight:
        return "upper right";
    case UIInfoHandler::LowerLeft:
        return "lower left";
    case UIInfoHandler::LowerRight:
        return "lower right";
    case UIInfoHandler::NoBadge:
        break;
    }
    return "none";
}

void addUnlessEmpty(std::vector<Fact>& facts, const char* key, const char* label, Json value)
{
    if (!value.empty() && value != "") {
        facts.push_back({key, label, std::move(value)});
    }
}

/// A text that may have several lines.
void addText(std::vector<Fact>& facts, const char* key, const char* label, const std::string& text)
{
    if (text.empty()) {
        return;
    }
    facts.push_back({key, label, text});
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        facts.back().lines.push_back(line);
    }
}

void addLook(std::vector<Fact>& facts, const SceneItem::Ptr& item)
{
    const auto handler = UIInfoHandler::uiInfoHandler(item->runTimeId());
    if (!handler) {
        return;
    }
    const auto icon = handler->treeViewIcon(item);
    addUnlessEmpty(facts, "runTimeLabel", "run-time label", handler->runTimeLabel());
    addUnlessEmpty(facts, "icon", "icon", icon.base);
    if (!icon.badge.empty()) {
        facts.push_back({"badge", "badge", icon.badge});
        facts.push_back({"badgePosition", "badge position", nameOf(icon.badgePosition)});
    }
    addText(facts, "tooltip", "tooltip", handler->treeViewTooltip(item));
}

void addGraphNode(std::vector<Fact>& facts, const SceneItem::Ptr& item)
{
    for (auto& fact : properties(item, host::kGraphNode).facts) {
        fact.key = fact.key == "size" ? "graphSize" : "graphPosition";
        facts.push_back(std::move(fact));
    }
}

void addContextMenu(std::vector<Fact>& facts, const SceneItem::Ptr& item)
{
    auto labels = Json::array();
    if (const auto menu = ContextOps::contextOps(item)) {
        for (const auto& entry : menu->items({})) {
            if (!entry.separator) {
                labels.push_back(entry.label);
            }
        }
    }
    addUnlessEmpty(facts, "contextMenu", "context menu", std::move(labels));
}

} // namespace

Section nodeDefinition(const SceneItem::Ptr& item)
{
    Section section{"nodeDefinition", "node definition"};
    const auto definition = NodeDef::definition(item->runTimeId(), item->nodeType());
    if (definition) {
        auto& facts = section.facts;
        facts.push_back({"displayName", "display name", definition->displayName()});
        addText(facts, "description", "description", definition->description());
        addUnlessEmpty(facts, "classifications", "classifications", definition->classifications());
        addUnlessEmpty(facts, "inputs", "inputs", definition->inputNames());
        addUnlessEmpty(facts, "outputs", "outputs", definition->outputNames());
    }
    return section;
}

Section userInterface(const SceneItem::Ptr& item)
{
    Section section{"userInterface", "user interface"};
    addLook(section.facts, item);
    addGraphNode(section.facts, item);
    addContextMenu(section.facts, item);
    return section;
}

} // namespace app
