#include <algorithm>

#include "kiv/attributes.h"
#include "kiv/hierarchy.h"
#include "kiv/object3d.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"

#include "interfaces.h"
#include "probes.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

namespace {

const char* const kEnds = "registration.ends";
const char* const kAgain = "registration.again";

/// The numbers of observers of subjects that the whole process shares.
struct Listeners
{
    std::size_t scene = Scene::instance().nbObservers();
    std::size_t attributes = Attributes::nbObservers();
    std::size_t objects = Object3d::nbObservers();
};

/// A scene as text without run-time ids.
std::vector<std::string> inWords(const Snapshot& states)
{
    std::vector<std::string> lines;
    for (const auto& state : states) {
        auto line = textOf(state.path);
        for (const auto& [fact, text] : state.facts) {
            line += "; " + fact + ": " + text;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

void checkNothingStays(Checking& checking, Rtid id, const std::string& name, char separator,
                       const Listeners& before)
{
    auto& manager = RunTimeMgr::instance();
    const auto ids = manager.getIds();
    if (manager.hasId(id) || std::count(ids.begin(), ids.end(), id) > 0) {
        checking.found("the run-time '" + name + "' is no longer registered",
                       "it is: RunTimeMgr still knows it");
    }
    const auto users = PathString::pathComponentSeparatorRunTimeIds(separator);
    if (std::count(users.begin(), users.end(), id) > 0) {
        checking.found("its separator is free again",
                       std::string("'") + separator + "' is still registered for it");
    }
    const Listeners now;
    const auto compare = [&](const char* what, std::size_t was, std::size_t is) {
        if (is > was) {
            checking.found(std::string("no observer of ") + what + " stays",
                           std::to_string(is - was) + " of its observers is still there");
        }
    };
    compare("the scene", before.scene, now.scene);
    compare("attributes", before.attributes, now.attributes);
    compare("objects", before.objects, now.objects);
}

} // namespace

void checkRegistration(Checking& checking)
{
    const auto most = checking.options().maxItems;
    const Listeners before;
    checking.at(kAgain, "the first life");
    const auto first = inWords(snapshot(checking.running().roots, most));
    const auto id = checking.id();
    const auto name = RunTimeMgr::instance().getName(id);
    const auto separator = checking.running().roots.front().getSegments().back().separator();
    std::vector<Interfaces> kept;
    for (const auto& item : walk(checking.running().roots, 50)) {
        kept.push_back(Interfaces::of(item));
    }
    checking.at(kEnds, "taking the run-time back");
    checking.end();
    checkNothingStays(checking, id, name, separator, before);
    for (const auto& one : kept) {
        one.use([&](const char* doing) {
            checking.at(kEnds, std::string(doing) + " after the run-time has gone");
        });
    }
    kept.clear();
    checking.at(kAgain, "the second life");
    const auto second = inWords(snapshot(checking.running().roots, most));
    const auto differs = std::mismatch(first.begin(), first.end(), second.begin(), second.end());
    if (differs.first != first.end() || differs.second != second.end()) {
        checking.found(differs.first == first.end() ? "no more items" : *differs.first,
                       differs.second == second.end() ? "no more items" : *differs.second);
    }
    checking.end();
}

} // namespace Kiv_v4::conformance
