#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <new>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace kivBench {

/// The number of items of a row, and its name in the table.
struct Size
{
    const char* name;
    std::size_t count;
};

/// For operations that do not depend on the size of the scene.
inline constexpr Size kHot{"2 k hot", 2'000};

/// From sizes that fit a cache to sizes that fit none.
inline constexpr Size kSizes[] = {
    {"1 k", 1'000}, {"10 k", 10'000}, {"100 k", 100'000}, {"1 M", 1'000'000}};

/// A small generator whose numbers are the same everywhere.
class Random
{
public:
    explicit Random(std::uint64_t seed) : _state(seed) {}

    /// A number from 0 up to, but not including, `end`.
    std::size_t below(std::size_t end)
    {
        _state = _state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::size_t>((_state >> 33U) % end);
    }

private:
    std::uint64_t _state;
};

/// The numbers up to `count` in random order.
inline std::vector<std::uint32_t> shuffledOrder(std::size_t count, std::uint64_t seed = 1)
{
    std::vector<std::uint32_t> order(count);
    std::iota(order.begin(), order.end(), 0U);
    Random random(seed);
    for (auto left = count; left > 1; --left) {
        std::swap(order[left - 1], order[random.below(left)]);
    }
    return order;
}

/// Yields items in random order, again and again. The order is so long that the branch predictor
/// cannot learn it, as it does with a few thousand.
template <class Item>
class RandomWalk
{
public:
    explicit RandomWalk(const std::vector<Item>& items)
        : _items(items), _order(shuffledOrder(std::max(items.size(), kLeastRound)))
    {
        for (auto& index : _order) {
            index %= static_cast<std::uint32_t>(items.size());
        }
    }

    const Item& next()
    {
        const auto& item = _items[_order[_position]];
        _position = _position + 1 == _order.size() ? 0 : _position + 1;
        return item;
    }

private:
    static constexpr std::size_t kLeastRound = 200'000;

    const std::vector<Item>& _items;
    std::vector<std::uint32_t> _order;
    std::size_t _position = 0;
};

/// Makes the heap clean up after the cell before. It delays that until the next allocation that is
/// not small, which can then take a third of a second.
inline void tidyHeap()
{
    void* block = ::operator new(64 * 1024);
    benchmark::DoNotOptimize(block);
    ::operator delete(block);
}

/// One cell of the table; see CMakeLists.txt for its name.
template <class Benchmark>
benchmark::internal::Benchmark* addRow(const std::string& operation, const std::string& size,
                                       const std::string& who, Benchmark run)
{
    const auto name = operation + '|' + size + '|' + who;
    return benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        tidyHeap();
        run(state);
    });
}

/// A cell that measures `work` on one item after another, in random order, from
/// `items(size.count)`, which is made when the cell first runs. The result of `work` is destroyed
/// within the measured time.
template <class Items, class Work>
void addWalk(const std::string& operation, Size size, const std::string& who, Items items,
             Work work)
{
    addRow(operation, size.name, who, [=](benchmark::State& state) {
        RandomWalk walk(items(size.count));
        for (auto _ : state) {
            benchmark::DoNotOptimize(work(walk.next()));
        }
    });
}

} // namespace kivBench
