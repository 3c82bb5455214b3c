#include "kiv/memory/runTime.h"

#include "batchOps.h"
#include "itemNames.h"
#include "memoryAttributes.h"
#include "memoryConnections.h"
#include "memoryContextOps.h"
#include "memoryHierarchy.h"
#include "memoryItemInterfaces.h"
#include "memorySceneItemOps.h"
#include "memoryTree.h"
#include "sceneSegment.h"

namespace Kiv_v4::memory {

namespace {

const std::string& valid(const std::string& name)
{
    requireValidName(name);
    return name;
}

} // namespace

RunTime::RunTime(const std::string& name, const std::string& rootName)
    : _registration(name, DataModel::kSeparator),
      _tree(std::make_shared<Tree>(_registration.id(), valid(rootName))),
      _model(std::make_unique<DataModel>(_tree))
{
    auto& manager = RunTimeMgr::instance();
    manager.setHierarchyHandler(id(), std::make_shared<MemoryHierarchyHandler>(_tree));
    manager.setSceneItemOpsHandler(id(), std::make_shared<MemorySceneItemOpsHandler>(_tree));
    manager.setAttributesHandler(id(), std::make_shared<MemoryAttributesHandler>(_tree));
    manager.setConnectionHandler(id(), std::make_shared<MemoryConnectionHandler>(_tree));
    manager.setContextOpsHandler(id(), std::make_shared<MemoryContextOpsHandler>(_tree));
    manager.setSceneSegmentHandler(id(), std::make_shared<MemorySceneSegmentHandler>(_tree));
    manager.setBatchOpsHandler(id(), std::make_shared<MemoryBatchOpsHandler>(_tree));
    installItemInterfaces(_tree);
}

RunTime::~RunTime()
{
    _tree->close();
}

Rtid RunTime::id() const noexcept
{
    return _registration.id();
}

DataModel& RunTime::model() const noexcept
{
    return *_model;
}

} // namespace Kiv_v4::memory
