#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/document/workspace.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::document {

/// Scene files as a run-time, for as long as the object lives; in a build without them, a stand-in
/// whose functions fail. The build chooses one of the two.
class SceneFiles
{
public:
    SceneFiles();
    SceneFiles(const SceneFiles&) = delete;
    SceneFiles& operator=(const SceneFiles&) = delete;
    ~SceneFiles();

    /// The run-time whose items begin under the gateways of files; 0 in a build without one.
    [[nodiscard]] Rtid id() const;

    /// The items under the gateway that were edited, parents before their children.
    [[nodiscard]] std::vector<EditedItem> editedItems(const Path& gateway) const;

    /// The name of the item in its file, if it comes from a file.
    [[nodiscard]] std::optional<std::string> originalName(const SceneItem& item) const;

    /// The character that components of files are written with.
    [[nodiscard]] static char separator();

private:
    struct RunTime;
    std::unique_ptr<RunTime> _runTime;
};

} // namespace Kiv_v4::document
