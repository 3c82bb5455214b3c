#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::conformance {

/// The key of the metadata that are set and read.
inline constexpr const char* kMetadataKey = "conformance";

/// The queries of an item, and the results as text: `children`, `attribute size`, `matrix`, ...
using Fact = std::pair<std::string, std::string>;

/// The facts that change without notifications.
inline constexpr const char* kConnections = "connections";
inline constexpr const char* kMaterials = "materials";

/// The results of all interfaces of an item.
struct ItemState
{
    Path path;
    std::vector<Fact> facts;
};

/// A scene as a new walk finds it, parents before their children.
using Snapshot = std::vector<ItemState>;

/// The items at and under `roots`, at most `most`, as a walk through `Hierarchy` finds them: only
/// those of the roots' run-time.
[[nodiscard]] std::vector<SceneItem::Ptr> walk(const std::vector<Path>& roots, std::size_t most);

/// Walks and queries the items. Only `walk` limits their number.
[[nodiscard]] Snapshot snapshot(const std::vector<Path>& roots, std::size_t most);

/// The first difference of two snapshots.
struct Difference
{
    Path item;
    std::string expected;
    std::string seen;
};

[[nodiscard]] std::optional<Difference> difference(const Snapshot& expected, const Snapshot& seen);

/// A fact that differs for an item that both snapshots have.
struct Change
{
    Path item;
    std::string fact;
};

/// All facts that changed, except the children.
[[nodiscard]] std::vector<Change> changes(const Snapshot& before, const Snapshot& after);

} // namespace Kiv_v4::conformance
