#include "report/itemSearch.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

#include "kiv/cameraHandler.h"
#include "kiv/hierarchy.h"
#include "kiv/host/outline.h"
#include "kiv/material.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "report/itemLines.h"
#include "report/missingNames.h"
#include "report/table.h"
#include "terminal/progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// Told of one item; the search ends when it returns false.
using Finder = std::function<bool(const SceneItem::Ptr&)>;

/// The materials of files, which lie under no item that a walk comes by.
class Materials
{
public:
    /// Notes where those of the item lie.
    void add(const SceneItem::Ptr& item)
    {
        const auto material = Material::material(item);
        for (const auto& bound : material ? material->materials() : std::vector<SceneItem::Ptr>()) {
            const auto hierarchy = Hierarchy::hierarchy(bound);
            const auto top = hierarchy ? hierarchy->parent() : nullptr;
            if (top && _seen.insert(top->path()).second) {
                _tops.push_back(top);
            }
        }
    }

    /// Tells of those at and under the path.
    void tell(const Path& path, const Finder& found) const
    {
        for (const auto& top : _tops) {
            const auto isWithin = top->path().isAtOrBelow(path);
            host::walk(top, isWithin ? 1 : 0, [&](const SceneItem::Ptr& item, std::size_t depth) {
                return !isWithin || depth == 0 || found(item);
            });
        }
    }

private:
    std::vector<SceneItem::Ptr> _tops;
    std::unordered_set<Path> _seen;
};

/// Tells of the items among which to look: the cameras when only those are wanted.
void forEachCandidate(const SceneItem::Ptr& root, const Criteria& criteria, const Finder& found)
{
    if (criteria.cameras) {
        const auto cameras = CameraHandler::findAll(root->path());
        std::ranges::all_of(cameras, found);
        return;
    }
    Materials materials;
    host::walk(root, std::numeric_limits<std::size_t>::max(),
               [&](const SceneItem::Ptr& item, std::size_t) {
                   if (criteria.mayBeMaterial()) {
                       materials.add(item);
                   }
                   return found(item);
               });
    materials.tell(root->path(), found);
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
    const Sieve sieve(criteria);
    std::size_t count = 0;
    ProgressLine progress("searching items");
    for (const auto& root : roots) {
        forEachCandidate(root, criteria, [&](const SceneItem::Ptr& item) {
            progress.count();
            if (sieve.holds(item)) {
                write(item);
                ++count;
            }
            return output.isRead();
        });
    }
    return count;
}

} // namespace

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
    if (count == 0) {
        complainOfMissingNames(roots, criteria, output);
    }
    return count;
}

} // namespace app
