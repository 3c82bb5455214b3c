#include "report/itemSearch.h"

#include <algorithm>
#include <fnmatch.h>
#include <limits>
#include <set>

#include "kiv/cameraHandler.h"
#include "kiv/host/outline.h"
#include "kiv/light.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "report/itemLines.h"
#include "report/table.h"
#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// Whether the item meets the criteria that are asked of each item.
bool matches(const SceneItem::Ptr& item, const Criteria& criteria)
{
    return (!criteria.nodeType || item->nodeType() == *criteria.nodeType) &&
           (!criteria.name ||
            ::fnmatch(criteria.name->c_str(), item->nodeName().c_str(), 0) == 0) &&
           (!criteria.lights || Light::light(item));
}

/// Told of one item; the search ends when it returns false.
using Finder = std::function<bool(const SceneItem::Ptr&)>;

/// Tells of the items among which to look: the cameras when only those are wanted.
void forEachCandidate(const SceneItem::Ptr& root, bool onlyCameras, const Finder& found)
{
    if (onlyCameras) {
        const auto cameras = CameraHandler::findAll(root->path());
        std::ranges::all_of(cameras, found);
    } else {
        host::walk(root, std::numeric_limits<std::size_t>::max(),
                   [&found](const SceneItem::Ptr& item, std::size_t) { return found(item); });
    }
}

/// The paths last, since they may be long.
Table newTable()
{
    return Table({{"", false, &Paint::nodeType}, {"", false, &Paint::runTime}, {}, {}});
}

/// Calls `write` for each item found, and gives their number.
std::size_t search(const SceneItemList& roots, const Criteria& criteria, const Output& output,
                   const Found& write)
{
    std::size_t count = 0;
    for (const auto& root : roots) {
        forEachCandidate(root, criteria.cameras, [&](const SceneItem::Ptr& item) {
            if (matches(item, criteria)) {
                write(item);
                ++count;
            }
            return output.isRead();
        });
    }
    return count;
}

} // namespace

void complainOfMissingType(const SceneItemList& roots, const std::string& type, Output& output)
{
    if (type.empty()) {
        return;
    }
    std::set<std::string> types;
    for (const auto& root : roots) {
        host::walk(root, std::numeric_limits<std::size_t>::max(),
                   [&](const SceneItem::Ptr& item, std::size_t) {
                       types.insert(item->nodeType());
                       return true;
                   });
    }
    if (types.contains(type)) {
        return;
    }
    output.flush();
    complain("no item is of type '" + type + "'" +
             alternatives(type, {types.begin(), types.end()}));
}

std::size_t find(const document::Workspace& scene, const SceneItemList& roots,
                 const Criteria& criteria, FindForm form, Output& output, const Found& found)
{
    auto table = newTable();
    JsonItems items(scene, output);
    const auto tellsFile = form == FindForm::Table && scene.mounts().size() > 1;
    const auto count = search(roots, criteria, output, [&](const SceneItem::Ptr& item) {
        if (found) {
            found(item);
        }
        switch (form) {
        case FindForm::Table:
            return table.add({item->nodeType(), RunTimeMgr::instance().getName(item->runTimeId()),
                              tellsFile ? scene.fileOf(*item) : "",
                              PathString::string(item->path())});
        case FindForm::Paths:
            return writePath(*item, output);
        case FindForm::JsonText:
            return items.add(*item);
        }
    });
    table.write(output);
    if (form == FindForm::JsonText) {
        items.end();
    }
    if (count == 0 && criteria.nodeType) {
        complainOfMissingType(roots, *criteria.nodeType, output);
    }
    return count;
}

} // namespace app
