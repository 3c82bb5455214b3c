#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "kiv/path.h"
#include "kiv/pathString.h"
#include "kiv/trie.h"

#include "rows.h"
#include "scenePaths.h"

#ifdef KIV_BENCH_ABSL
#include <absl/container/btree_set.h>
#include <absl/container/flat_hash_map.h>
#endif

namespace {

using namespace kivBench;
using Kiv_v4::Path;
using Kiv_v4::PathString;

/// The trie as a player for `addPlayer`.
class PathTrie
{
public:
    using Key = Path;

    static Path key(const std::string& text) { return PathString::path(text); }

    void add(const Path& path) { _trie.add(path, 1); }
    void remove(const Path& path) { _trie.remove(path); }
    void clear() { _trie.clear(); }
    [[nodiscard]] bool contains(const Path& path) const { return _trie.contains(path); }
    [[nodiscard]] bool ancestor(const Path& path) const { return _trie.containsAncestor(path); }
    [[nodiscard]] bool descendant(const Path& path) const { return _trie.containsDescendant(path); }

private:
    Kiv_v4::Trie<int> _trie;
};

/// An ordered set of texts with prefix queries by `View`.
template <class Set, class View>
class TextSet
{
public:
    using Key = std::string;

    static std::string key(const std::string& text) { return slashed(text); }

    void add(const std::string& text) { _set.insert(text); }
    void remove(const std::string& text) { _set.erase(text); }
    void clear() { _set.clear(); }
    [[nodiscard]] bool contains(const std::string& text) const
    {
        return _set.find(text) != _set.end();
    }

    [[nodiscard]] bool ancestor(const std::string& text) const
    {
        for (auto end = text.find('/', 1); end != text.npos; end = text.find('/', end + 1)) {
            if (_set.find(View(text.data(), end)) != _set.end()) {
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] bool descendant(const std::string& text) const
    {
        _prefix.assign(text).push_back('/');
        const auto next = _set.lower_bound(_prefix);
        return next != _set.end() && next->compare(0, _prefix.size(), _prefix) == 0;
    }

private:
    Set _set;
    mutable std::string _prefix;
};

#ifdef KIV_BENCH_ABSL
/// A flat hash of all prefixes of the texts with the number of texts at and below each: one look-up
/// for every query except the one about ancestors.
class PrefixCounts
{
public:
    using Key = std::string;

    static std::string key(const std::string& text) { return slashed(text); }

    void add(const std::string& text)
    {
        auto& stored = _counts[text];
        if (!std::exchange(stored.isText, true)) {
            forEachPrefix(text, [this](std::string_view prefix) {
                auto [at, added] = _counts.try_emplace(view(prefix));
                ++at->second.below;
                return false;
            });
        }
    }

    void remove(const std::string& text)
    {
        const auto stored = _counts.find(text);
        if (stored == _counts.end() || !std::exchange(stored->second.isText, false)) {
            return;
        }
        eraseUnused(stored);
        forEachPrefix(text, [this](std::string_view prefix) {
            const auto at = _counts.find(view(prefix));
            --at->second.below;
            eraseUnused(at);
            return false;
        });
    }

    void clear() { _counts.clear(); }

    [[nodiscard]] bool contains(const std::string& text) const
    {
        const auto at = _counts.find(text);
        return at != _counts.end() && at->second.isText;
    }

    [[nodiscard]] bool ancestor(const std::string& text) const
    {
        return forEachPrefix(text, [this](std::string_view prefix) {
            const auto at = _counts.find(view(prefix));
            return at != _counts.end() && at->second.isText;
        });
    }

    [[nodiscard]] bool descendant(const std::string& text) const
    {
        const auto at = _counts.find(text);
        return at != _counts.end() && at->second.below != 0;
    }

private:
    struct Counted
    {
        std::uint32_t below = 0;
        bool isText = false;
    };
    using Counts = absl::flat_hash_map<std::string, Counted>;

    static absl::string_view view(std::string_view text) { return {text.data(), text.size()}; }

    /// Passes each proper prefix to `take` until it returns true. Returns whether it did.
    template <class Take>
    static bool forEachPrefix(std::string_view text, Take take)
    {
        for (auto end = text.find('/', 1); end != text.npos; end = text.find('/', end + 1)) {
            if (take(text.substr(0, end))) {
                return true;
            }
        }
        return false;
    }

    void eraseUnused(Counts::iterator at)
    {
        if (at->second.below == 0 && !at->second.isText) {
            _counts.erase(at);
        }
    }

    Counts _counts;
};
#endif

std::string parentOf(const std::string& text)
{
    const auto colon = text.rfind(':');
    return text.substr(0, text[colon - 1] == ',' ? colon - 1 : colon);
}

/// The texts without other texts of the scene below them.
std::vector<std::string> leaves(std::size_t count)
{
    const auto& texts = sceneTexts(count);
    std::unordered_set<std::string_view> parents;
    for (const std::string_view text : texts) {
        parents.insert(text.substr(0, text.rfind(':')));
    }
    std::vector<std::string> result;
    std::copy_if(texts.begin(), texts.end(), std::back_inserter(result),
                 [&](const std::string& text) { return parents.count(text) == 0; });
    return result;
}

/// The keys to add to a player, and those to query, in random order.
template <class Player>
struct Load
{
    using Keys = std::vector<typename Player::Key>;

    explicit Load(std::size_t count)
    {
        const auto texts = leaves(count);
        constexpr std::size_t kMostQuestions = 200'000;
        for (const auto index : shuffledOrder(texts.size(), 3)) {
            const auto& text = texts[index];
            stored.push_back(Player::key(text));
            if (known.size() < kMostQuestions) {
                known.push_back(Player::key(text));
                absent.push_back(Player::key(text + "x"));
                above.push_back(Player::key(parentOf(text)));
                below.push_back(Player::key(text + ":child"));
            }
        }
        player = filled();
    }

    [[nodiscard]] std::unique_ptr<Player> filled() const
    {
        auto made = std::make_unique<Player>();
        for (const auto& key : stored) {
            made->add(key);
        }
        return made;
    }

    Keys stored;
    Keys known;
    Keys absent;
    Keys above;
    Keys below;
    std::unique_ptr<Player> player;
};

/// Made once per count and kept.
template <class Player>
const Load<Player>& load(std::size_t count)
{
    static std::map<std::size_t, Load<Player>> loads;
    return loads.try_emplace(count, count).first->second;
}

/// A cell that queries a filled player with one key after another.
template <class Player>
void addQuestion(const std::string& operation, Size size, const std::string& who,
                 typename Load<Player>::Keys Load<Player>::*keys,
                 bool (Player::*question)(const typename Player::Key&) const)
{
    addRow(operation, size.name, who, [=](benchmark::State& state) {
        const auto& given = load<Player>(size.count);
        RandomWalk walk(given.*keys);
        for (auto _ : state) {
            benchmark::DoNotOptimize(((*given.player).*question)(walk.next()));
        }
    });
}

/// A cell that measures `work` on a player and all keys stored, after `prepare` made the player.
template <class Player, class Prepare, class Work>
void addRound(const std::string& operation, Size size, const std::string& who, Prepare prepare,
              Work work)
{
    addRow(operation, size.name, who, [=](benchmark::State& state) {
        const auto& given = load<Player>(size.count);
        for (auto _ : state) {
            state.PauseTiming();
            auto player = prepare(given);
            state.ResumeTiming();
            work(*player, given.stored);
            state.PauseTiming();
            player.reset();
            state.ResumeTiming();
        }
        state.SetItemsProcessed(
            static_cast<std::int64_t>(state.iterations() * given.stored.size()));
    });
}

template <class Player>
void addPlayer(Size size, const std::string& who)
{
    using Given = Load<Player>;
    using Keys = typename Given::Keys;
    const auto fresh = [](const Given&) { return std::make_unique<Player>(); };
    const auto filled = [](const Given& given) { return given.filled(); };

    addRound<Player>("trie: add", size, who, fresh, [](Player& player, const Keys& keys) {
        for (const auto& key : keys) {
            player.add(key);
        }
    });
    addQuestion("trie: contains", size, who, &Given::known, &Player::contains);
    addQuestion("trie: contains, absent", size, who, &Given::absent, &Player::contains);
    addQuestion("trie: ancestor", size, who, &Given::below, &Player::ancestor);
    addQuestion("trie: ancestor, none", size, who, &Given::known, &Player::ancestor);
    addQuestion("trie: descendant", size, who, &Given::above, &Player::descendant);
    addQuestion("trie: descendant, none", size, who, &Given::known, &Player::descendant);
    addRound<Player>("trie: remove", size, who, filled, [](Player& player, const Keys& keys) {
        for (const auto& key : keys) {
            player.remove(key);
        }
    });
    addRound<Player>("trie: clear", size, who, filled,
                     [](Player& player, const Keys&) { player.clear(); });
}

const bool registered = [] {
    for (const auto& size : kSizes) {
        addPlayer<PathTrie>(size, "kiv");
        addPlayer<TextSet<std::set<std::string, std::less<>>, std::string_view>>(size, "std::set");
#ifdef KIV_BENCH_ABSL
        addPlayer<TextSet<absl::btree_set<std::string>, absl::string_view>>(size,
                                                                            "absl::btree_set");
        addPlayer<PrefixCounts>(size, "absl::flat_hash_map of prefixes");
#endif
    }
    return true;
}();

} // namespace
