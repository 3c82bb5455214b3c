#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/document/isolation.h"
#include "kiv/export.h"
#include "kiv/memory/dataModel.h"
#include "kiv/path.h"
#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

/// A scene as a document: a workspace, saved and opened.
namespace Kiv_v4::document {

/// An edited item of a scene file, and the interfaces through which it was edited.
struct EditedItem
{
    /// The path of the item.
    Path path;
    /// Whether `Transform3d` was edited.
    bool transform = false;
    /// Whether `Camera` was edited.
    bool camera = false;
    /// Whether `Light` was edited.
    bool light = false;
    /// Whether `Object3d` was edited.
    bool visibility = false;
};

/// A scene file that was read and may be mounted any number of times.
struct SourceFile;

/// Throw it from a progress function to cancel reading. It passes through to the caller unchanged
/// and never counts as a file that cannot be read.
class KIV_EXPORT Cancelled : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    Cancelled(const Cancelled&) = default;
    ~Cancelled() override;
};

/// A scene of a host: items in memory under one root, with scene files mounted among them. A file
/// is read by the run-time whose `SceneFileHandler` knows its suffix: by `assimp`, which the
/// workspace has, or by one of a plug-in. Only this class knows which run-times there are; all
/// other code uses the interfaces of the core.
///
///     document::Workspace scene;
///     scene.mount("workshop.gltf");                         // /world/workshop,:Workshop
///     scene.model().make(scene.root()->path(), "group", "props");
///     document::save(scene, "scene.json");
///
/// Mounts follow gateways that the installed scene (`Scene::initializeInstance`) reports as renamed
/// or moved, and are parked when it reports their deletion; without a scene they stay where they
/// are.
///
/// **Lifetime.** The constructor registers the run-times `memory` and, in a build with scene files,
/// `assimp`; the destructor unregisters them. The commands of a workspace must not run after its
/// destruction: clear the undo history first.
class KIV_EXPORT Workspace
{
public:
    /// A scene file that was read.
    using File = std::shared_ptr<const SourceFile>;

    /// Called with the file that is being read and the fraction that was read, from 0 to 1. Also
    /// called with 1 when reading ends early, except when the function itself cancelled it by
    /// throwing.
    using Progress = std::function<void(const std::string& file, float fraction)>;

    /// A scene file and its gateway.
    struct Mount
    {
        /// The item that the file is shown under.
        Path gateway;
        std::string file;    ///< The argument of `mount`, `mountCmd` or `read`.
        std::string runTime; ///< The name of the run-time that shows it.
    };

    /// Throws `InvalidRunTimeName` if a run-time already has one of the names.
    Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    ~Workspace();

    /// Returns the root, which always exists.
    [[nodiscard]] SceneItem::Ptr root() const;

    /// Returns the model of the items in memory, for data that the interfaces do not cover.
    [[nodiscard]] memory::DataModel& model() const noexcept;

    /// Returns whether the item is one of those in memory, rather than of a file.
    [[nodiscard]] bool isInMemory(const SceneItem& item) const noexcept;

    /// Sets the progress function, which is called on the thread that reads; null for none.
    void setProgress(Progress progress);

    /// From now on, a child process reads each file first, and the host only reads files that the
    /// child could read within the limits: a file that crashes its reader, never ends or eats the
    /// memory becomes an exception. `std::nullopt`, as at the beginning, reads at once.
    ///
    /// Cost: each file is read twice. The child is a fork with the calling thread alone: while a
    /// file is read, no other thread may hold a lock that its reader needs, or the time limit
    /// refuses the file. The file must not change between the two times, and the host reads it
    /// without limits.
    void setIsolation(std::optional<Isolation> isolation);

    /// Reads a scene file and mounts it under a new gateway named after it, whose path it returns.
    /// Throws `std::runtime_error` with the reason and mounts nothing.
    Path mount(const std::string& file);

    /// Returns a command that mounts the file under a new gateway item, the last child of `parent`.
    /// The gateway is named `name`, or after the file if `name` is empty, changed to be unique
    /// among all children. Reads the file at once, as `read` does. Throws `std::runtime_error` with
    /// the reason and changes nothing.
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr mountCmd(const std::string& file,
                                                               const SceneItem::Ptr& parent,
                                                               const std::string& name,
                                                               const std::string& runTime = {});

    /// Reads a scene file with the run-time of that name. If the name is empty, the first run-time
    /// that knows the suffix of the file reads it; those of plug-ins come before `assimp`, which
    /// also reads files of unknown suffixes. Throws `std::runtime_error` with the reason, not the
    /// file, as its message; exceptions of the progress function pass through.
    [[nodiscard]] File read(const std::string& file, const std::string& runTime = {}) const;

    /// Returns a command that makes an ordinary item in memory a gateway that shows the file or,
    /// for null, nothing yet. While undone, it keeps the edits of the file.
    [[nodiscard]] UndoableCommand::Ptr gatewayCmd(const Path& item, const File& file);

    /// Returns commands that make `copy` and its descendants, a copy in memory of `source` and its
    /// descendants, show the same files with the same edits.
    [[nodiscard]] std::vector<UndoableCommand::Ptr> copyMountsCmds(const SceneItem::Ptr& source,
                                                                   const Path& copy);

    /// Returns the mounted files, in the order of the tree. Cost: linear in the items in memory.
    [[nodiscard]] std::vector<Mount> mounts() const;

    /// Returns what is mounted under the gateway; file and run-time are empty for any other item.
    [[nodiscard]] Mount mountAt(const Path& gateway) const;

    /// Returns the file that is mounted under the gateway, as `Mount::file`; empty for any other
    /// item.
    [[nodiscard]] std::string mountedFile(const Path& gateway) const;

    /// Returns the file that the item comes from or, for a gateway, the one that it shows; empty
    /// for other items.
    [[nodiscard]] std::string fileOf(const SceneItem& item) const;

    /// Returns whether items of scene files may begin under the item.
    [[nodiscard]] bool isGateway(const SceneItem& item) const;

    /// Returns the items of a file that were edited, parents before their children; none for files
    /// of other run-times than `assimp`, which keep their edits themselves.
    [[nodiscard]] std::vector<EditedItem> editedItems(const Path& gateway) const;

    /// Returns the path of the file item that `text` names under the gateway, even if there is
    /// none.
    [[nodiscard]] Path pathInFile(const Path& gateway, const std::string& text) const;

    /// Returns the item that `text` names: a full path string, or one that begins under `gateway`,
    /// with or without its leading separator; null if there is none.
    [[nodiscard]] SceneItem::Ptr item(const std::string& text, const Path& gateway) const;

    /// Returns the name of the item in its file; `std::nullopt` for an item made here.
    [[nodiscard]] std::optional<std::string> originalName(const SceneItem& item) const;

private:
    struct KIV_HIDDEN RunTimes;
    const std::unique_ptr<RunTimes> _runTimes;
};

} // namespace Kiv_v4::document
