#include "kiv/kit/handlerBases.h"

#include <algorithm>
#include <utility>

#include "kiv/runTimeMgr.h"

#include "itemWalk.h"

namespace Kiv_v4::kit {

namespace {

std::vector<std::string> namesOf(const std::vector<AttributeDef::Ptr>& definitions)
{
    std::vector<std::string> names;
    for (const auto& definition : definitions) {
        names.push_back(definition->name());
    }
    return names;
}

AttributeDef::Ptr named(const std::vector<AttributeDef::Ptr>& definitions, const std::string& name)
{
    const auto found =
        std::find_if(definitions.begin(), definitions.end(),
                     [&](const auto& definition) { return definition->name() == name; });
    return found == definitions.end() ? nullptr : *found;
}

/// The gateways under `path` for which `isWanted` returns true.
template <class IsWanted>
Selection gatewaysUnder(const SceneSegmentHandlerBase& handler, const Path& path, IsWanted isWanted)
{
    Selection found;
    walkItems(path, [&](const SceneItem::Ptr& item) {
        const auto target = item->path() == path ? 0 : handler.target(item->path());
        if (target != 0 && isWanted(target)) {
            found.append(item);
        }
        return target == 0;
    });
    return found;
}

} // namespace

SceneSegmentHandlerBase::SceneSegmentHandlerBase() = default;
SceneSegmentHandlerBase::~SceneSegmentHandlerBase() = default;

bool SceneSegmentHandlerBase::isGatewayItem(const Path& path)
{
    return target(path) != 0;
}

Selection SceneSegmentHandlerBase::gatewayItems(const Path& path)
{
    return gatewaysUnder(*this, path, [](Rtid) { return true; });
}

Selection SceneSegmentHandlerBase::gatewayItems(const Path& path, Rtid nestedRuntimeId)
{
    return gatewaysUnder(*this, path, [=](Rtid target) { return target == nestedRuntimeId; });
}

UIInfoHandlerBase::UIInfoHandlerBase(Rtid runTimeId) : _runTimeId(runTimeId) {}
UIInfoHandlerBase::~UIInfoHandlerBase() = default;

CellInfo UIInfoHandlerBase::treeViewCellInfo(const SceneItem::Ptr&, const CellInfo& hostLook) const
{
    return hostLook;
}

std::string UIInfoHandlerBase::runTimeLabel() const
{
    return RunTimeMgr::instance().getName(_runTimeId);
}

ContextOpsBase::ContextOpsBase(SceneItem::Ptr item) : _item(std::move(item)) {}
ContextOpsBase::~ContextOpsBase() = default;

std::vector<ContextItem> ContextOpsBase::items(const ItemPath&) const
{
    return {};
}

UndoableCommand::Ptr ContextOpsBase::doOpCmd(const ItemPath&)
{
    return nullptr;
}

NodeDefBase::NodeDefBase(std::string type) : _type(std::move(type)) {}
NodeDefBase::~NodeDefBase() = default;

std::string NodeDefBase::description() const
{
    return {};
}

std::vector<std::string> NodeDefBase::classifications() const
{
    return {};
}

std::vector<AttributeDef::Ptr> NodeDefBase::inputs() const
{
    return {};
}

std::vector<std::string> NodeDefBase::inputNames() const
{
    return namesOf(inputs());
}

bool NodeDefBase::hasInput(const std::string& name) const
{
    return input(name) != nullptr;
}

AttributeDef::Ptr NodeDefBase::input(const std::string& name) const
{
    return named(inputs(), name);
}

std::vector<AttributeDef::Ptr> NodeDefBase::outputs() const
{
    return {};
}

std::vector<std::string> NodeDefBase::outputNames() const
{
    return namesOf(outputs());
}

bool NodeDefBase::hasOutput(const std::string& name) const
{
    return output(name) != nullptr;
}

AttributeDef::Ptr NodeDefBase::output(const std::string& name) const
{
    return named(outputs(), name);
}

Value NodeDefBase::metadata(const std::string&) const
{
    return {};
}

bool NodeDefBase::hasMetadata(const std::string& key) const
{
    return !metadata(key).typeName().empty();
}

SceneItemResultUndoableCommand::Ptr NodeDefBase::createNodeCmd(const SceneItem::Ptr& parent,
                                                               const PathComponent& name) const
{
    const auto hierarchy = parent ? Hierarchy::hierarchy(parent) : nullptr;
    return hierarchy ? hierarchy->createChildCmd(_type, name) : nullptr;
}

} // namespace Kiv_v4::kit
