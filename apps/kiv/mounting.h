#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "kiv/memory/runTime.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

#include "sceneFiles.h"

namespace app {

/// The scene that the program shows: items in memory under one root, with scene files mounted among
/// them. The one place that knows which run-times there are; everything else goes through the
/// library's interfaces.
class Mounting
{
public:
    [[nodiscard]] Kiv_v4::SceneItem::Ptr root() const;

    /// Makes an item in memory from `TYPE:PATH`, whose parent must be there. Throws
    /// `std::invalid_argument` with the reason.
    void make(const std::string& typeAndPath);

    /// Reads a scene file and mounts it under a new gateway named after it, whose path it returns.
    /// Throws `std::runtime_error` with the reason, with nothing mounted. A progress line shows
    /// while the file is read.
    Kiv_v4::Path mount(const std::string& file);

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
