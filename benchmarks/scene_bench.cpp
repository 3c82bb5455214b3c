// Operations of a user on whole scenes: the cost per item must not grow with the scene.

#include <cstdint>
#include <ctime>

#include "rows.h"
#include "sceneOperations.h"

namespace {

using namespace kivBench;

/// Each run has a scene of its own, whose making is not measured. Small scenes are made many times,
/// so that all sizes work on about as many items.
void addOperation(const SceneOperation& operation, const Size& size)
{
    constexpr std::int64_t kItems = 100'000;
    const auto count = static_cast<std::int64_t>(size.count);
    addRow("scene: " + std::string(operation.name), size.name, "kiv",
           [&operation, size](benchmark::State& state) {
               for (auto _ : state) {
                   const auto work = operation.prepare(size.count);
                   const auto start = std::clock(); // of the process, whatever else runs
                   work->run();
                   const auto ticks = static_cast<double>(std::clock() - start);
                   state.SetIterationTime(ticks / CLOCKS_PER_SEC);
               }
               state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(size.count));
           })
        ->UseManualTime()
        ->Iterations(std::max<std::int64_t>(1, kItems / count));
}

[[maybe_unused]] const bool registered = [] {
    for (const auto& operation : sceneOperations()) {
        for (const auto& size : kSizes) {
            if (size.count <= operation.largest) {
                addOperation(operation, size);
            }
        }
    }
    return true;
}();

} // namespace
