#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#ifdef KIV_BENCH_BOOST
#include <boost/flyweight.hpp>
#include <boost/flyweight/no_locking.hpp>
#endif
#ifdef KIV_BENCH_OIIO
#include <OpenImageIO/ustring.h>
#endif

#include "kiv/pathComponent.h"

#include "rows.h"

namespace {

using namespace kivBench;

std::vector<std::string> namesFrom(std::size_t first, std::size_t count)
{
    std::vector<std::string> names;
    for (auto number = first; number < first + count; ++number) {
        names.push_back("name" + std::to_string(number));
    }
    return names;
}

template <class Interned>
void internKnown(benchmark::State& state)
{
    const auto names = namesFrom(0, 1'000);
    const std::vector<Interned> held(names.begin(), names.end());
    RandomWalk walk(names);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Interned(walk.next()));
    }
}

constexpr Size kBatch{"100 k", 100'000};

/// Names that are not interned in this process yet.
std::vector<std::string> unknownNames()
{
    static std::size_t next = 1'000'000;
    next += kBatch.count;
    return namesFrom(next, kBatch.count);
}

template <class Interned>
void internNew(benchmark::State& state)
{
    std::vector<Interned> held;
    held.reserve(kBatch.count);
    for (auto _ : state) {
        state.PauseTiming();
        held.clear();
        const auto names = unknownNames();
        state.ResumeTiming();
        for (const auto& name : names) {
            held.emplace_back(name);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kBatch.count));
}

template <class Interned>
void releaseLast(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const auto names = unknownNames();
        std::vector<Interned> held(names.begin(), names.end());
        state.ResumeTiming();
        held.clear();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kBatch.count));
}

template <class Item>
void compareTwo(benchmark::State& state)
{
    const auto names = namesFrom(0, 100'000);
    const std::vector<Item> held(names.begin(), names.end());
    const auto order = shuffledOrder(held.size());
    std::size_t equal = 0;
    std::size_t i = 0;
    for (auto _ : state) {
        equal += held[order[i]] == held[order[held.size() - 1 - i]] ? 1U : 0U;
        benchmark::DoNotOptimize(equal);
        i = i + 1 == held.size() ? 0 : i + 1;
    }
}

template <class Interned>
void addInterned(const char* who)
{
    addRow("intern a known name", "1 k hot", who, internKnown<Interned>);
    // Few rounds, since a peer that never forgets a name keeps all of them.
    addRow("intern a new name", kBatch.name, who, internNew<Interned>)->Iterations(5);
    addRow("compare two components", "100 k", who, compareTwo<Interned>);
}

template <class Interned>
void addReleased(const char* who)
{
    addRow("release a name for good", kBatch.name, who, releaseLast<Interned>)->Iterations(5);
}

[[maybe_unused]] const bool registered = [] {
    addInterned<Kiv_v4::PathComponent>("kiv");
    addReleased<Kiv_v4::PathComponent>("kiv");
#ifdef KIV_BENCH_BOOST
    // Not locked, as the component's table is not.
    using Flyweight = boost::flyweight<std::string, boost::flyweights::no_locking>;
    addInterned<Flyweight>("boost::flyweight");
    addReleased<Flyweight>("boost::flyweight");
#endif
#ifdef KIV_BENCH_OIIO
    addInterned<OIIO::ustring>("OIIO::ustring");
#endif
    addRow("compare two components", "100 k", "std::string", compareTwo<std::string>);
    return true;
}();

} // namespace
