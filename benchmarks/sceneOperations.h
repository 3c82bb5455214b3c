#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace kivBench {

/// An operation of a user on a whole scene, ready to run once.
class SceneWork
{
public:
    virtual ~SceneWork() = default;

    /// The part that is measured.
    virtual void run() = 0;
};

/// An operation on a scene of any size.
struct SceneOperation
{
    const char* name;
    std::size_t largest; ///< The largest number of items that it is measured with.

    /// Whether the cost per item must stay the same from small scenes to large ones, except for
    /// cache misses. A chain of items is exempt: its paths grow with it.
    bool isLinear;

    /// Makes the scene of `count` items for one run.
    std::function<std::unique_ptr<SceneWork>(std::size_t count)> prepare;
};

/// All operations, in the order of the table.
[[nodiscard]] const std::vector<SceneOperation>& sceneOperations();

} // namespace kivBench
