#include <cstddef>
#include <cstdint>
#include <list>
#include <malloc.h>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kiv/path.h"
#include "kiv/pathString.h"
#include "kiv/sceneItem.h"
#include "kiv/selection.h"

#include "rows.h"
#include "scenePaths.h"

#ifdef KIV_BENCH_BOOST
#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/mem_fun.hpp>
#include <boost/multi_index/sequenced_index.hpp>
#include <boost/multi_index_container.hpp>
#endif
#ifdef KIV_BENCH_TSL
#include <tsl/ordered_set.h>
#endif

namespace {

using namespace kivBench;
using Kiv_v4::Path;
using Kiv_v4::PathString;
using Kiv_v4::SceneItem;
using Kiv_v4::Selection;
using Items = std::vector<SceneItem::Ptr>;

class Item : public SceneItem
{
public:
    using SceneItem::SceneItem;

    [[nodiscard]] std::string nodeType() const override { return "item"; }
};

/// The minimum for items in order that are found by path, without prefix queries.
class ListAndMap
{
public:
    bool append(const SceneItem::Ptr& item)
    {
        const auto [entry, added] = _positions.try_emplace(item->path());
        if (added) {
            entry->second = _items.insert(_items.end(), item);
        }
        return added;
    }

    bool remove(const SceneItem::Ptr& item)
    {
        const auto entry = _positions.find(item->path());
        if (entry == _positions.end()) {
            return false;
        }
        _items.erase(entry->second);
        _positions.erase(entry);
        return true;
    }

    void clear()
    {
        _items.clear();
        _positions.clear();
    }

    [[nodiscard]] bool contains(const Path& path) const
    {
        return _positions.find(path) != _positions.end();
    }

    [[nodiscard]] const std::list<SceneItem::Ptr>& items() const { return _items; }

private:
    std::list<SceneItem::Ptr> _items;
    std::unordered_map<Path, std::list<SceneItem::Ptr>::iterator> _positions;
};

#ifdef KIV_BENCH_BOOST
namespace index = boost::multi_index;

class MultiIndex
{
public:
    bool append(const SceneItem::Ptr& item) { return _items.push_back(item).second; }
    bool remove(const SceneItem::Ptr& item) { return _items.get<1>().erase(item->path()) != 0; }
    void clear() { _items.clear(); }

    [[nodiscard]] bool contains(const Path& path) const
    {
        return _items.get<1>().find(path) != _items.get<1>().end();
    }

    [[nodiscard]] const auto& items() const { return _items; }

private:
    index::multi_index_container<
        SceneItem::Ptr,
        index::indexed_by<
            index::sequenced<>,
            index::hashed_unique<index::const_mem_fun<SceneItem, const Path&, &SceneItem::path>,
                                 std::hash<Path>>>>
        _items;
};
#endif

#ifdef KIV_BENCH_TSL
/// Items in the order of insertion, found by path. Removing from its middle takes linear time.
class OrderedSet
{
public:
    bool append(const SceneItem::Ptr& item) { return _items.insert(item).second; }
    void clear() { _items.clear(); }

    [[nodiscard]] bool contains(const Path& path) const
    {
        return _items.find(path) != _items.end();
    }

    [[nodiscard]] const auto& items() const { return _items; }

private:
    static const Path& pathOf(const Path& path) { return path; }
    static const Path& pathOf(const SceneItem::Ptr& item) { return item->path(); }

    struct Hash
    {
        using is_transparent = void;

        template <class Key>
        std::size_t operator()(const Key& key) const
        {
            return pathOf(key).hash();
        }
    };

    struct Equal
    {
        using is_transparent = void;

        template <class Left, class Right>
        bool operator()(const Left& left, const Right& right) const
        {
            return pathOf(left) == pathOf(right);
        }
    };

    tsl::ordered_set<SceneItem::Ptr, Hash, Equal> _items;
};
#endif

const Selection& items(const Selection& selection)
{
    return selection;
}

template <class Player>
const auto& items(const Player& player)
{
    return player.items();
}

/// One item per path of the scene, in random order, their hashes computed. Made once per count and
/// kept.
const Items& sceneItems(std::size_t count)
{
    static std::map<std::size_t, Items> made;
    auto& result = made[count];
    if (result.empty()) {
        const auto& paths = scene<Path>(count);
        for (const auto index : shuffledOrder(count, 3)) {
            benchmark::DoNotOptimize(paths[index].hash());
            result.push_back(std::make_shared<Item>(paths[index]));
        }
    }
    return result;
}

/// Paths equal to those of (at most 200 000) items, which share no data with them.
const std::vector<Path>& twins(std::size_t count)
{
    static std::map<std::size_t, std::vector<Path>> made;
    auto& result = made[count];
    if (result.empty()) {
        constexpr std::size_t kMost = 200'000;
        const auto& texts = sceneTexts(count);
        for (const auto index : shuffledOrder(count, 4)) {
            if (result.size() < kMost) {
                result.push_back(PathString::path(texts[index]));
                benchmark::DoNotOptimize(result.back().hash());
            }
        }
    }
    return result;
}

/// Paths of no item, one for each of `twins(count)`.
const std::vector<Path>& strangers(std::size_t count)
{
    static std::map<std::size_t, std::vector<Path>> made;
    auto& result = made[count];
    if (result.empty()) {
        for (const auto& path : twins(count)) {
            result.push_back(path + "child");
            benchmark::DoNotOptimize(result.back().hash());
        }
    }
    return result;
}

template <class Player>
void fill(Player& player, const Items& from)
{
    for (const auto& item : from) {
        player.append(item);
    }
}

/// A player with all items. Made once per count and kept.
template <class Player>
Player& filled(std::size_t count)
{
    static std::map<std::size_t, Player> made;
    auto& player = made[count];
    if (items(player).empty()) {
        fill(player, sceneItems(count));
    }
    return player;
}

/// The same items in another order.
const Items& reordered(std::size_t count)
{
    static std::map<std::size_t, Items> made;
    auto& result = made[count];
    if (result.empty()) {
        for (const auto index : shuffledOrder(count, 5)) {
            result.push_back(sceneItems(count)[index]);
        }
    }
    return result;
}

/// A cell that measures `work` on a player that `prepare` was run on, and all items.
template <class Player, class Prepare, class Work>
void addRound(const std::string& operation, Size size, const std::string& who, Prepare prepare,
              Work work)
{
    addRow(operation, size.name, who, [=](benchmark::State& state) {
        const auto& given = sceneItems(size.count);
        const auto& others = reordered(size.count);
        for (auto _ : state) {
            state.PauseTiming();
            auto player = std::make_unique<Player>();
            prepare(*player, given);
            state.ResumeTiming();
            work(*player, others);
            state.PauseTiming();
            player.reset();
            state.ResumeTiming();
        }
        state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * given.size()));
    });
}

/// A cell that queries a filled player with one path after another.
template <class Player, class Paths>
void addQuestion(const std::string& operation, Size size, const std::string& who, Paths paths,
                 bool (Player::*question)(const Path&) const)
{
    addRow(operation, size.name, who, [=](benchmark::State& state) {
        const auto& player = filled<Player>(size.count);
        RandomWalk walk(paths(size.count));
        // The first prefix query builds the trie.
        benchmark::DoNotOptimize((player.*question)(walk.next()));
        for (auto _ : state) {
            benchmark::DoNotOptimize((player.*question)(walk.next()));
        }
    });
}

std::size_t heapInUse()
{
    const auto heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

/// A cell whose figure is the heap's bytes per item after `fillIn`, not counting the items and
/// their paths.
template <class Player, class FillIn>
void addBytes(const std::string& operation, Size size, const std::string& who, FillIn fillIn)
{
    addRow(operation, size.name, who, [=](benchmark::State& state) {
        const auto& given = sceneItems(size.count);
        std::size_t bytes = 0;
        for (auto _ : state) {
            // Memory that allocators keep for later counts for the first one.
            Player first;
            fillIn(first, given);
            const auto before = heapInUse();
            Player second;
            fillIn(second, given);
            bytes = heapInUse() - before;
        }
        state.counters["bytes"] = static_cast<double>(bytes) / static_cast<double>(given.size());
    })->Iterations(1);
}

/// Whether the bytes of one item are measurable beside those of the container itself.
bool isLarge(Size size)
{
    return size.count >= 100'000;
}

template <class Player>
void addPlayer(Size size, const std::string& who)
{
    const auto nothing = [](Player&, const Items&) {};
    const auto fillIn = [](Player& player, const Items& given) { fill(player, given); };

    addRound<Player>("selection: append", size, who, nothing, fillIn);
    addQuestion("selection: contains", size, who, scene<Path>, &Player::contains);
    addQuestion("selection: contains, path made anew", size, who, twins, &Player::contains);
    addQuestion("selection: contains, absent", size, who, strangers, &Player::contains);
    addRound<Player>("selection: clear", size, who, fillIn,
                     [](Player& player, const Items&) { player.clear(); });
    addRow("selection: walk", size.name, who, [=](benchmark::State& state) {
        const auto& player = filled<Player>(size.count);
        for (auto _ : state) {
            for (const auto& item : items(player)) {
                benchmark::DoNotOptimize(item.get());
            }
        }
        state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * size.count));
    });
    if (isLarge(size)) {
        addBytes<Player>("selection: bytes per item", size, who, fillIn);
    }
}

template <class Player>
void addRemove(Size size, const std::string& who)
{
    const auto fillIn = [](Player& player, const Items& given) { fill(player, given); };
    addRound<Player>("selection: remove", size, who, fillIn,
                     [](Player& player, const Items& given) {
                         for (const auto& item : given) {
                             player.remove(item);
                         }
                     });
}

/// Operations that the peers of the selection do not have; `trie_bench` has the peers of the trie.
void addPrefixQuestions(Size size)
{
    const auto fillIn = [](Selection& selection, const Items& given) { fill(selection, given); };
    const auto build = [](Selection& selection, const Items& given) {
        benchmark::DoNotOptimize(selection.containsAncestor(given.front()->path()));
    };
    addRound<Selection>("selection: build the trie", size, "kiv", fillIn, build);
    addQuestion("selection: containsAncestor", size, "kiv", strangers,
                &Selection::containsAncestor);
    addQuestion("selection: containsDescendant", size, "kiv", twins,
                &Selection::containsDescendant);
    addRow("selection: itemsUnder, per item", size.name, "kiv", [=](benchmark::State& state) {
        const auto& selection = filled<Selection>(size.count);
        RandomWalk walk(sceneItems(size.count));
        std::int64_t found = 0;
        for (auto _ : state) {
            // The siblings of an item, and what lies below them.
            const auto under = selection.itemsUnder(walk.next()->path().pop());
            found += static_cast<std::int64_t>(under.size());
        }
        state.SetItemsProcessed(found);
    });
    if (isLarge(size)) {
        addBytes<Selection>("selection: bytes per item with trie", size, "kiv",
                            [=](Selection& selection, const Items& given) {
                                fillIn(selection, given);
                                build(selection, given);
                            });
    }
}

const bool registered = [] {
    for (const auto& size : kSizes) {
        addPlayer<Selection>(size, "kiv");
        addRemove<Selection>(size, "kiv");
        addPlayer<ListAndMap>(size, "list + unordered_map");
        addRemove<ListAndMap>(size, "list + unordered_map");
#ifdef KIV_BENCH_BOOST
        addPlayer<MultiIndex>(size, "boost::multi_index");
        addRemove<MultiIndex>(size, "boost::multi_index");
#endif
#ifdef KIV_BENCH_TSL
        addPlayer<OrderedSet>(size, "tsl::ordered_set");
#endif
        addPrefixQuestions(size);
    }
    return true;
}();

} // namespace
