#include <unordered_set>

#include "kiv/attributes.h"
#include "kiv/hierarchy.h"
#include "kiv/object3d.h"
#include "kiv/sceneItemOps.h"

#include "edits.h"
#include "interfaces.h"
#include "probes.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

namespace {

const char* const kStalePaths = "stale.paths";
const char* const kItems = "stale.items";

/// Paths and items that an edit left out of date must name nothing.
void checkOldPath(Checking& checking, const std::string& after, const Path& path)
{
    checking.at(kStalePaths, "createItem of the old path, after " + after, path);
    Checking::answers([&] {
        if (Hierarchy::createItem(path)) {
            checking.found("null", "an item");
        }
    });
}

void checkOldItem(Checking& checking, const std::string& after, const Interfaces& old)
{
    const auto& path = old.item()->path();
    checking.at(kItems, "children of the old item, after " + after, path);
    Checking::answers([&] {
        const auto hierarchy = Hierarchy::hierarchy(old.item());
        for (const auto& child : hierarchy ? hierarchy->children() : SceneItemList{}) {
            if (child && !Hierarchy::createItem(child->path())) {
                checking.found("no children, or such as are there", textOf(child->path()));
            }
        }
    });
    old.use([&](const char* doing) {
        checking.at(kItems, std::string(doing) + " of the old item, after " + after, path);
    });
    Interfaces::of(old.item()).use([&](const char* doing) {
        checking.at(kItems, std::string(doing) + " asked of the old item, after " + after, path);
    });
}

std::vector<Interfaces> interfacesOf(const std::vector<SceneItem::Ptr>& items)
{
    std::vector<Interfaces> all;
    for (const auto& item : items) {
        all.push_back(Interfaces::of(item));
    }
    return all;
}

} // namespace

void checkStale(Checking& checking)
{
    const auto most = checking.options().maxItems;
    unsigned nbStale = 0;
    for (unsigned step = 0; step < checking.options().nbSteps; ++step) {
        checking.at(kItems, "before an edit");
        const auto items = walk(checking.running().roots, most);
        const auto old = interfacesOf(items);
        const auto edit = randomEdit(checking);
        if (!edit.command) {
            break;
        }
        if (!Checking::answers([&] { edit.command->execute(); }) || !edit.renames) {
            continue;
        }
        std::unordered_set<Path> present;
        for (const auto& item : walk(checking.running().roots, 2 * most)) {
            present.insert(item->path());
        }
        const auto before = snapshot(checking.running().roots, most);
        const auto nbFindings = checking.nbFindings();
        for (const auto& one : old) {
            if (present.count(one.item()->path()) == 0) {
                ++nbStale;
                checkOldPath(checking, edit.text, one.item()->path());
                checkOldItem(checking, edit.text, one);
            }
        }
        checking.at(kItems, "using what is out of date, after " + edit.text);
        if (const auto found = difference(before, snapshot(checking.running().roots, most))) {
            checking.found(kItems, found->item, found->expected, found->seen);
        }
        if (checking.nbFindings() > nbFindings + 3) {
            return;
        }
    }
    if (nbStale == 0) {
        checking.skip(kStalePaths, "nothing can be renamed, moved or deleted");
        checking.skip(kItems, "nothing can be renamed, moved or deleted");
    }
}

} // namespace Kiv_v4::conformance
