#pragma once

#include <span>
#include <unordered_set>
#include <vector>

#include "kiv/selection.h"
#include "kiv/trie.h"

#include "ops.h"

namespace Kiv_v4::host::detail {

/// A selected item whose path may no longer be its own.
struct Stray
{
    SceneItem::Ptr selected;
    Path path;         ///< Its path according to the notifications.
    bool gone = false; ///< Whether it was deleted there.
};

/// Follows the selected items through the changes of one notification. The run-times are not
/// queried: during a batch, paths may not match the scene.
class Strays
{
public:
    explicit Strays(const Selection& selection) : _selection(selection) {}

    void follow(std::span<const Op> ops, bool isBatch);

    [[nodiscard]] const std::vector<Stray>& all() const noexcept { return _strays; }

private:
    using Places = Trie<std::vector<std::size_t>>;

    /// Makes the selected items at and under the path strays.
    void take(const Path& path);
    void move(const Path& from, const Path& to);
    void setGone(const Path& path, bool gone);

    [[nodiscard]] std::vector<std::size_t> takeFrom(Places& places, const Path& path);
    static void put(Places& places, const Path& path, std::size_t stray);

    const Selection& _selection;
    std::vector<Stray> _strays;
    std::unordered_set<Path> _taken; ///< The paths under which strays are selected.
    Places _there;
    Places _gone;
};

} // namespace Kiv_v4::host::detail
