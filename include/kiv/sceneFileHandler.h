#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/rtid.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

class Path;

/// Shows scene files under gateways: what a run-time offers so that any host can mount its files
/// without knowing it. `RunTimeMgr::setSceneFileHandler` installs it.
class KIV_EXPORT SceneFileHandler
{
public:
    using Ptr = std::shared_ptr<SceneFileHandler>;

    /// Told how far reading has come, from 0 to 1. Reading is given up when it returns false. An
    /// exception from it ends the reading and reaches the caller. An empty one is not called.
    using Progress = std::function<bool(float fraction)>;

    /// Makes a command that shows the file that was read under a gateway, which must lead into the
    /// run-time when the command is executed. May be called any number of times. The command keeps
    /// the mount, with all edits, while it is undone.
    using Mounting = std::function<UndoableCommand::Ptr(const Path& gateway)>;

    /// Returns the run-times that read files with the suffix of `file`, whatever the case of its
    /// letters, in the order of their ids. Asks each handler for its suffixes.
    [[nodiscard]] static std::vector<Rtid> runTimesFor(const std::string& file);

    SceneFileHandler();
    SceneFileHandler(const SceneFileHandler&) = delete;
    SceneFileHandler& operator=(const SceneFileHandler&) = delete;
    virtual ~SceneFileHandler();

    /// Returns the suffixes of the files that it reads, such as ".gltf", in lower case.
    [[nodiscard]] virtual std::vector<std::string> suffixes() const = 0;

    /// Reads the file. Throws `std::runtime_error`, with the reason but not the file as its
    /// message, when it cannot; nothing changes then.
    [[nodiscard]] virtual Mounting read(const std::string& file, const Progress& progress) = 0;

    /// Returns the file that is shown under the gateway, as it was given to `read`; empty when
    /// there is none.
    [[nodiscard]] virtual std::string file(const Path& gateway) const = 0;

    /// Returns a command that shows what is shown under `source`, with the edits that it has now,
    /// under another gateway as well. By default the file is read again, without edits. Throws
    /// `std::invalid_argument` when no file is shown under `source`, otherwise as `read` does.
    [[nodiscard]] virtual UndoableCommand::Ptr copyMountCmd(const Path& source,
                                                            const Path& gateway);
};

} // namespace Kiv_v4
