#include "runTime.h"

#include <utility>

#include "attributes.h"
#include "hierarchy.h"
#include "itemOps.h"

ShotListRunTime::ShotListRunTime(Entry show)
    : _registration("shotList", Entries::kSeparator),
      _entries(std::make_shared<Entries>(id(), std::move(show)))
{
    auto& manager = Kiv::RunTimeMgr::instance();
    manager.setHierarchyHandler(id(), makeHierarchyHandler(_entries));
    manager.setSceneItemOpsHandler(id(), makeSceneItemOpsHandler(_entries));
    manager.setAttributesHandler(id(), makeAttributesHandler(_entries));
}

void ShotListRunTime::reload(std::list<Entry> sequences)
{
    _entries->existing(rootPath()).children = std::move(sequences);
    announce<Kiv::SubtreeInvalidate>(_entries->item(rootPath()));
}
