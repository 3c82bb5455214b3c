#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "kiv/path.h"
#include "kiv/pathString.h"

#include "rows.h"
#include "scenePaths.h"

namespace {

using namespace kivBench;
using Kiv_v4::Path;
using Kiv_v4::PathComponent;
using Kiv_v4::PathSegment;
using Kiv_v4::PathString;
using FilePath = std::filesystem::path;

constexpr auto kFilePath = "std::filesystem::path";
constexpr auto kString = "std::string";

/// Pairs of equal paths that share no data.
template <class Item>
const std::vector<std::pair<Item, Item>>& twins(std::size_t count)
{
    static const auto pairs = [count] {
        std::vector<std::pair<Item, Item>> made;
        for (const auto& text : sceneTexts(count)) {
            if constexpr (std::is_same_v<Item, Path>) {
                made.emplace_back(PathString::path(text), PathString::path(text));
            } else {
                made.emplace_back(slashed(text), slashed(text));
            }
        }
        return made;
    }();
    return pairs;
}

/// The first child of each path of the scene.
const std::vector<Path>& children(std::size_t count)
{
    static std::map<std::size_t, std::vector<Path>> made;
    auto& result = made[count];
    if (result.empty()) {
        for (const auto& path : scene<Path>(count)) {
            result.push_back(path + "child1");
        }
    }
    return result;
}

/// `texts(count)` while the scene is open, that is, while all its paths and so their names exist.
template <class Texts>
auto ofOpenScene(Texts texts)
{
    return [texts](std::size_t count) -> decltype(auto) {
        scene<Path>(count);
        return texts(count);
    };
}

void addMaking()
{
    for (const auto& size : kSizes) {
        addWalk("path from text", size, "kiv", ofOpenScene(sceneTexts), PathString::path);
        addWalk("path from text", size, kFilePath, scene<std::string>,
                [](const std::string& text) { return FilePath(text); });
    }
    for (const auto& size : kSizes) {
        addWalk("one segment from text", size, "kiv", ofOpenScene(scene<std::string>),
                [](const std::string& text) { return PathSegment(text, 1, '/'); });
        addWalk("one segment from text", size, kFilePath, scene<std::string>,
                [](const std::string& text) { return FilePath(text); });
    }
    addWalk("path to text", kHot, "kiv", scene<Path>, PathString::string);
    addWalk("path to text", kHot, kFilePath, scene<FilePath>,
            [](const FilePath& path) { return path.string(); });
}

template <class Item>
void addCopying(const char* who)
{
    for (const auto& size : kSizes) {
        addWalk("copy a path", size, who, scene<Item>, [](const Item& path) { return path; });
    }
}

template <class Item>
void addEquality(const char* who)
{
    addWalk("equal paths", kHot, who, twins<Item>,
            [](const std::pair<Item, Item>& twin) { return twin.first == twin.second; });
}

template <class Item>
void addHashing(const char* who)
{
    addWalk("hash a path", kHot, who, scene<Item>, std::hash<Item>());
}

void addEditing()
{
    addWalk("pop", kHot, "kiv", scene<Path>, [](const Path& path) { return path.pop(); });
    addWalk("pop", kHot, kFilePath, scene<FilePath>,
            [](const FilePath& path) { return path.parent_path(); });

    addWalk("+ component", kHot, "kiv", scene<Path>,
            [child = PathComponent("child1")](const Path& path) { return path + child; });
    addWalk("+ component", kHot, kFilePath, scene<FilePath>,
            [child = FilePath("child1")](const FilePath& path) { return path / child; });

    addWalk("pop a child's path", kHot, "kiv", children,
            [](const Path& path) { return path.pop(); });
    addWalk("sibling of a child's path", kHot, "kiv", children,
            [other = PathComponent("child2")](const Path& path) { return path.sibling(other); });

    const auto relative = [](const FilePath& path, const FilePath& from, const FilePath& to) {
        return to / path.lexically_relative(from);
    };
    addRow("reparent", kHot.name, "kiv", [](benchmark::State& state) {
        RandomWalk walk(scene<Path>(kHot.count));
        const auto from = walk.next().head(1);
        const auto to = from + "attic" + "box";
        for (auto _ : state) {
            benchmark::DoNotOptimize(walk.next().reparent(from, to));
        }
    });
    addRow("reparent", kHot.name, kFilePath, [relative](benchmark::State& state) {
        RandomWalk walk(scene<FilePath>(kHot.count));
        const FilePath from("/world");
        const auto to = from / "attic" / "box";
        for (auto _ : state) {
            benchmark::DoNotOptimize(relative(walk.next(), from, to));
        }
    });
}

[[maybe_unused]] const bool registered = [] {
    addMaking();
    addCopying<Path>("kiv");
    addCopying<FilePath>(kFilePath);
    addCopying<std::string>(kString);
    addEditing();
    addEquality<Path>("kiv");
    addEquality<FilePath>(kFilePath);
    addEquality<std::string>(kString);
    addHashing<Path>("kiv");
    addHashing<std::string>(kString);
    return true;
}();

} // namespace
