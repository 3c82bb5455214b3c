#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "kiv/sceneItem.h"

#include "output.h"

namespace app {

/// What to look for. An item is found when it meets every criterion.
struct Criteria
{
    bool cameras = false;
    bool lights = false;
    std::optional<std::string> nodeType;
    std::optional<std::string> name; ///< A pattern with * ? and [...] for the whole name.

    [[nodiscard]] bool any() const { return cameras || lights || nodeType || name; }
};

/// `kiv find`: what the user asked for.
struct FindOptions
{
    enum class Form { table, paths, json };

    std::vector<std::string> files;
    std::vector<std::string> itemsToMake; ///< As `TYPE:PATH`.
    Criteria criteria;
    Form form = Form::table;
};

/// Told of one item that was found.
using Found = std::function<void(const Kiv_v4::SceneItem::Ptr&)>;

/// Writes the items at and under `root` that are found, tells of each, and gives their number.
std::size_t find(const Kiv_v4::SceneItem::Ptr& root, const Criteria& criteria,
                 FindOptions::Form form, Output& output, const Found& found = {});

/// Makes the items, mounts the files and writes what is found in the whole scene. What cannot be
/// made or read gets a complaint, and the rest is searched. Gives the exit status: a failure too
/// when nothing is found.
[[nodiscard]] int findCommand(const FindOptions& options, Output& output);

} // namespace app
