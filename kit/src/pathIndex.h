#pragma once

#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kiv/path.h"

namespace Kiv_v4::kit {

/// Orders paths so that the paths at and below a path are consecutive, that path first. Segments
/// count.
struct HierarchyOrder
{
    bool operator()(const Path& left, const Path& right) const noexcept;
};

/// Values by path: found by hash, and in order at and below a path.
template <class Value>
class PathIndex
{
public:
    [[nodiscard]] bool empty() const noexcept { return _byHash.empty(); }

    /// Null if there is none.
    [[nodiscard]] Value* find(const Path& path)
    {
        const auto found = _byHash.find(path);
        return found == _byHash.end() ? nullptr : found->second;
    }

    /// The value at `path`, made if there is none.
    Value& operator[](const Path& path)
    {
        auto& value = _inOrder[path];
        _byHash.insert_or_assign(path, &value);
        return value;
    }

    void erase(const Path& path)
    {
        _byHash.erase(path);
        _inOrder.erase(path);
    }

    void clear()
    {
        _byHash.clear();
        _inOrder.clear();
    }

    /// The paths at and below `path` that have a value, in order.
    [[nodiscard]] std::vector<Path> atOrBelow(const Path& path) const
    {
        std::vector<Path> paths;
        for (auto at = _inOrder.lower_bound(path);
             at != _inOrder.end() && at->first.isAtOrBelow(path); ++at) {
            paths.push_back(at->first);
        }
        return paths;
    }

private:
    std::map<Path, Value, HierarchyOrder> _inOrder;
    std::unordered_map<Path, Value*> _byHash;
};

} // namespace Kiv_v4::kit
