#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/memory/runTime.h"
#include "kiv/path.h"
#include "kiv/resultCommands.h"
#include "kiv/sceneItem.h"

#include "sceneFiles.h"

namespace app {

/// The scene that the program shows: items in memory under one root, with scene files mounted among
/// them. The one place that knows which run-times there are; everything else goes through the
/// library's interfaces.
///
/// **Lifetime.** Its commands are not run any more once it is gone.
class Mounting
{
public:
    using File = std::shared_ptr<const SceneFiles::File>;

    /// A scene file and where it is shown.
    struct Mount
    {
        Kiv_v4::Path gateway;
        std::string file; ///< As it was given.
    };

    [[nodiscard]] Kiv_v4::SceneItem::Ptr root() const;

    /// The items in memory, for what the library's interfaces do not tell of them.
    [[nodiscard]] Kiv_v4::memory::DataModel& model() const noexcept { return _memory.model(); }

    [[nodiscard]] bool isInMemory(const Kiv_v4::SceneItem& item) const
    {
        return item.runTimeId() == _memory.id();
    }

    /// Makes an item in memory from `TYPE:PATH`, whose parent must be there. Throws
    /// `std::invalid_argument` with the reason.
    void make(const std::string& typeAndPath);

    /// Reads a scene file and mounts it under a new gateway named after it, whose path it returns.
    /// Throws `std::runtime_error` with the reason, with nothing mounted. A progress line shows
    /// while the file is read.
    Kiv_v4::Path mount(const std::string& file);

    /// A command that mounts the file under a new gateway item, the last child of `parent`, which
    /// is named `name`, or after the file when that is empty, changed to be unique. The file is
    /// read at once. Throws `std::runtime_error` with the reason, with nothing changed.
    [[nodiscard]] Kiv_v4::SceneItemResultUndoableCommand::Ptr
    mountCmd(const std::string& file, const Kiv_v4::SceneItem::Ptr& parent,
             const std::string& name);

    /// Reads a scene file as `mount` does; an interrupt from the keyboard ends that.
    [[nodiscard]] File read(const std::string& file) const;

    /// A command that makes an ordinary item in memory a gateway that shows the file or, for null,
    /// nothing yet. Undone, it keeps what was edited of the file.
    [[nodiscard]] Kiv_v4::UndoableCommand::Ptr gatewayCmd(const Kiv_v4::Path& item,
                                                          const File& file);

    /// Commands that make what lies at and under `copy`, a copy in memory of what lies at and under
    /// `source`, show the same files with the same edits.
    [[nodiscard]] std::vector<Kiv_v4::UndoableCommand::Ptr>
    copyMountsCmds(const Kiv_v4::SceneItem::Ptr& source, const Kiv_v4::Path& copy);

    /// The mounted files, in the order of the tree.
    [[nodiscard]] std::vector<Mount> mounts() const;

    /// The file that is mounted under the gateway, as it was given; empty for any other item.
    [[nodiscard]] std::string mountedFile(const Kiv_v4::Path& gateway) const;

    /// Whether the items of scene files may begin under the item.
    [[nodiscard]] bool isGateway(const Kiv_v4::SceneItem& item) const;

    /// The items of a file that were edited, parents before their children.
    [[nodiscard]] std::vector<EditedItem> editedItems(const Kiv_v4::Path& gateway) const;

    /// The path of the file item that `text` names under the gateway, whether there is one or not.
    [[nodiscard]] Kiv_v4::Path pathInFile(const Kiv_v4::Path& gateway,
                                          const std::string& text) const;

    /// The item that `text` names: a full path string, or one that begins under `gateway`, with or
    /// without its leading separator; null when there is none.
    [[nodiscard]] Kiv_v4::SceneItem::Ptr item(const std::string& text,
                                              const Kiv_v4::Path& gateway) const;

    /// The name that the item has where it was read from; nothing for an item made here.
    [[nodiscard]] std::optional<std::string> originalName(const Kiv_v4::SceneItem& item) const;

private:
    Kiv_v4::memory::RunTime _memory;
    SceneFiles _files;
};

/// Makes the items and mounts the files. Complains of those that cannot be made or read, and gives
/// their number.
std::size_t fill(Mounting& scene, const std::vector<std::string>& itemsToMake,
                 const std::vector<std::string>& files);

} // namespace app
