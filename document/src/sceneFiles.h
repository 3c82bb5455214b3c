#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/document/workspace.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4::document {

/// Called with the fraction that was read, from 0 to 1.
using Progress = std::function<void(float)>;

/// Scene files as a run-time, for as long as the object lives; in a build without them, a stand-in
/// whose functions fail. The build chooses one of the two.
class SceneFiles
{
public:
    SceneFiles();
    SceneFiles(const SceneFiles&) = delete;
    SceneFiles& operator=(const SceneFiles&) = delete;
    ~SceneFiles();

    /// Throws `std::runtime_error` with the reason, not the file, as its message.
    [[nodiscard]] std::shared_ptr<const SourceFile> read(const std::string& file,
                                                         const Progress& progress) const;

    /// The run-time whose items begin under the gateways of files.
    [[nodiscard]] Rtid id() const;

    /// A command that shows the file under the gateway.
    [[nodiscard]] UndoableCommand::Ptr mountCmd(const SourceFile& file, const Path& gateway);

    /// A command that also shows the file under `source`, with its present edits, under another
    /// gateway.
    [[nodiscard]] UndoableCommand::Ptr copyMountCmd(const Path& source, const Path& gateway);

    /// The file under the gateway, as it was given to `read`; empty if there is none.
    [[nodiscard]] std::string file(const Path& gateway) const;

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
