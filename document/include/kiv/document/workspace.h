#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/memory/dataModel.h"
#include "kiv/path.h"
#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

/// A scene as a document: a workspace, saved and opened.
namespace Kiv_v4::document {

/// An item of a scene file that was edited, and through which interfaces.
struct EditedItem
{
    /// Where the item is.
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

/// Throw it from a progress function to give reading up. It reaches the caller as it is; nothing
/// takes it for a file that cannot be read.
class KIV_EXPORT Cancelled : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    Cancelled(const Cancelled&) = default;
    ~Cancelled() override;
};

/// A scene of a host: items in memory under one root, with scene files mounted among them. It is
/// the one place that knows which run-times there are; everything else goes through the
/// interfaces of the core.
///
///     document::Workspace scene;
///     scene.mount("workshop.gltf");                         // /world/workshop,:Workshop
///     scene.model().make(scene.root()->path(), "group", "props");
///     document::save(scene, "scene.json");
///
/// Mounts follow gateways that the installed scene (`Scene::initializeInstance`) reports as renamed
/// or moved, and are put by when it reports their deletion; without a scene they stay where they
/// are.
///
/// **Lifetime.** The constructor registers the run-times `memory` and, in a build with scene files,
/// `assimp`; the destructor takes them back. Its commands must not be run once it is gone: clear
/// the undo history first.
class KIV_EXPORT Workspace
{
public:
    /// A scene file that was read.
    using File = std::shared_ptr<const SourceFile>;

    /// Told of the file that is being read and how far that has come, from 0 to 1; 1 also when
    /// reading ends early, but not when the function itself gave it up by throwing.
    using Progress = std::function<void(const std::string& file, float fraction)>;

    /// A scene file and where it is shown.
    struct Mount
    {
        /// The item that the file is shown under.
        Path gateway;
        std::string file; ///< As it was given.
    };

    /// Throws `InvalidRunTimeName` when a run-time has one of the names already.
    Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    ~Workspace();

    /// Returns the root, which is always there.
    [[nodiscard]] SceneItem::Ptr root() const;

    /// Returns the items in memory, for what the interfaces do not tell of them.
    [[nodiscard]] memory::DataModel& model() const noexcept;

    /// Returns whether the item is one of those in memory, rather than of a file.
    [[nodiscard]] bool isInMemory(const SceneItem& item) const noexcept;

    /// From now on `progress` is told of reading, on the thread that reads; null for nobody.
    void setProgress(Progress progress);

    /// Reads a scene file and mounts it under a new gateway named after it, whose path it returns.
    /// Throws `std::runtime_error` with the reason, with nothing mounted.
    Path mount(const std::string& file);

    /// Returns a command that mounts the file under a new gateway item, the last child of `parent`,
    /// which is named `name`, or after the file when that is empty, changed to be unique among all
    /// children. The file is read at once. Throws `std::runtime_error` with the reason, with
    /// nothing changed.
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    mountCmd(const std::string& file, const SceneItem::Ptr& parent, const std::string& name);

    /// Reads a scene file. Throws `std::runtime_error` with the reason, not the file, as its
    /// message, and what the progress function throws.
    [[nodiscard]] File read(const std::string& file) const;

    /// Returns a command that makes an ordinary item in memory a gateway that shows the file or,
    /// for null, nothing yet. Undone, it keeps what was edited of the file.
    [[nodiscard]] UndoableCommand::Ptr gatewayCmd(const Path& item, const File& file);

    /// Returns commands that make what lies at and under `copy`, a copy in memory of what lies at
    /// and under `source`, show the same files with the same edits.
    [[nodiscard]] std::vector<UndoableCommand::Ptr> copyMountsCmds(const SceneItem::Ptr& source,
                                                                   const Path& copy);

    /// Returns the mounted files, in the order of the tree. Cost: linear in the items in memory.
    [[nodiscard]] std::vector<Mount> mounts() const;

    /// Returns the file that is mounted under the gateway, as it was given; empty for any other
    /// item.
    [[nodiscard]] std::string mountedFile(const Path& gateway) const;

    /// Returns the file that the item comes from or, for a gateway, the one that it shows; empty
    /// for other items.
    [[nodiscard]] std::string fileOf(const SceneItem& item) const;

    /// Returns whether items of scene files may begin under the item.
    [[nodiscard]] bool isGateway(const SceneItem& item) const;

    /// Returns the items of a file that were edited, parents before their children.
    [[nodiscard]] std::vector<EditedItem> editedItems(const Path& gateway) const;

    /// Returns the path of the file item that `text` names under the gateway, whether there is one
    /// or not.
    [[nodiscard]] Path pathInFile(const Path& gateway, const std::string& text) const;

    /// Returns the item that `text` names: a full path string, or one that begins under `gateway`,
    /// with or without its leading separator; null when there is none.
    [[nodiscard]] SceneItem::Ptr item(const std::string& text, const Path& gateway) const;

    /// Returns the name that the item has where it was read from; nothing for an item made here.
    [[nodiscard]] std::optional<std::string> originalName(const SceneItem& item) const;

private:
    struct RunTimes;
    const std::unique_ptr<RunTimes> _runTimes;
};

} // namespace Kiv_v4::document
