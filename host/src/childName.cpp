#include "kiv/host/childName.h"

#include <stdexcept>
#include <unordered_set>

#include "kiv/hierarchy.h"
#include "kiv/host/transaction.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/sceneItemOps.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/uniqueName.h"

namespace Kiv_v4::host {

namespace {

/// Runs what the run-time of `asked` made, which is null when that refuses, and returns it.
template <class Command>
std::shared_ptr<Command> run(Transaction& edits, const SceneItem::Ptr& item,
                             const SceneItem::Ptr& asked, const std::shared_ptr<Command>& command)
{
    if (!command) {
        throw std::runtime_error(PathString::string(item->path()) + ": run-time " +
                                 RunTimeMgr::instance().getName(asked->runTimeId()) + " refuses");
    }
    return edits.runFor(command);
}

SceneItem::Ptr renamed(Transaction& edits, const SceneItem::Ptr& item, const std::string& name)
{
    if (name == item->nodeName()) {
        return item;
    }
    const auto operations = SceneItemOps::sceneItemOps(item);
    return run(edits, item, item, operations ? operations->renameItemCmd(name) : nullptr)
        ->sceneItem();
}

} // namespace

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

SceneItem::Ptr moveUnder(Transaction& edits, const SceneItem::Ptr& item,
                         const SceneItem::Ptr& parent, const SceneItem::Ptr& before)
{
    const auto isThere = item->path().size() > 1 && item->path().pop() == parent->path();
    const auto named = isThere ? item : renamed(edits, item, freeName(parent, item->nodeName()));
    const auto hierarchy = Hierarchy::hierarchy(parent);
    return run(edits, named, parent, hierarchy ? hierarchy->insertChildCmd(named, before) : nullptr)
        ->insertedChild();
}

} // namespace Kiv_v4::host
