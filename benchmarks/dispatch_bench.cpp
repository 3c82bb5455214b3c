#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#ifdef KIV_BENCH_ABSL
#include <absl/container/flat_hash_map.h>
#endif

#include "kiv/hierarchyHandler.h"
#include "kiv/runTimeMgr.h"

#include "rows.h"

namespace {

using namespace kivBench;
using Kiv_v4::HierarchyHandler;
using Kiv_v4::Rtid;
using Kiv_v4::RunTimeMgr;

class Handler : public HierarchyHandler
{
public:
    Kiv_v4::Hierarchy::Ptr hierarchy(const Kiv_v4::SceneItem::Ptr&) override { return nullptr; }
    Kiv_v4::SceneItem::Ptr createItem(const Kiv_v4::Path&) override { return nullptr; }
    Kiv_v4::SceneItemList rootItems(const Kiv_v4::Path&) override { return {}; }
};

/// The ids of eight run-times with a handler.
const std::vector<Rtid>& runTimes()
{
    static const auto ids = [] {
        std::vector<Rtid> made;
        for (int i = 0; i < 8; ++i) {
            RunTimeMgr::Handlers handlers;
            handlers.hierarchyHandler = std::make_shared<Handler>();
            made.push_back(RunTimeMgr::instance().register_(std::to_string(i), handlers));
        }
        return made;
    }();
    return ids;
}

template <class Lookup>
void addLookup(const char* who, Lookup lookup)
{
    addRow("handler lookup", "hot", who, [lookup](benchmark::State& state) {
        RandomWalk walk(runTimes());
        for (auto _ : state) {
            benchmark::DoNotOptimize(lookup(walk.next()));
        }
    });
}

template <class Map>
void addMap(const char* who)
{
    addLookup(who, [](Rtid id) {
        static const auto handlers = [] {
            Map made;
            for (const auto each : runTimes()) {
                made.emplace(each, RunTimeMgr::instance().hierarchyHandler(each));
            }
            return made;
        }();
        const auto found = handlers.find(id);
        return found == handlers.end() ? HierarchyHandler::Ptr() : found->second;
    });
}

[[maybe_unused]] const bool registered = [] {
    addLookup("kiv", [](Rtid id) { return RunTimeMgr::instance().hierarchyHandler(id); });
    addMap<std::unordered_map<Rtid, HierarchyHandler::Ptr>>("std::unordered_map");
#ifdef KIV_BENCH_ABSL
    addMap<absl::flat_hash_map<Rtid, HierarchyHandler::Ptr>>("absl::flat_hash_map");
#endif
    return true;
}();

} // namespace
