#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "kiv/host/comparison.h"

namespace Kiv_v4::host {

inline void visit(const ComparisonOptions& options)
{
    if (options.onVisit) {
        options.onVisit();
    }
}

inline constexpr std::size_t kNoNode = SIZE_MAX;

/// A tree of items as it is now: parents before their children, siblings in order.
struct TreeImage
{
    struct Node
    {
        SceneItem::Ptr item;
        std::string name;
        std::string type;
        std::size_t parent = kNoNode;
        std::vector<std::size_t> children{};
        std::size_t partner = kNoNode; ///< The same item in the other tree.
        std::size_t shape = 0;         ///< Hash of the type and of what is below, by name.
        std::size_t contents = 0;      ///< The same with the values of all items.
    };

    TreeImage(const SceneItem::Ptr& root, const ComparisonOptions& options);

    /// Fills in the hashes of contents, which cost as much as reading all values.
    void readContents();

    std::vector<Node> nodes;

private:
    const ComparisonOptions& _options;
    bool _hasContents = false;
};

/// Finds the items that are the same, and makes them partners.
void pairItems(TreeImage& before, TreeImage& after, const ComparisonOptions& options);

} // namespace Kiv_v4::host
