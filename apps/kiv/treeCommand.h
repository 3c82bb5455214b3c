#pragma once

#include <string>
#include <vector>

#include "outline.h"
#include "output.h"

namespace app {

/// `kiv tree`: what the user asked for.
struct TreeOptions
{
    enum class Form { drawing, paths, json };

    std::vector<std::string> files;
    std::vector<std::string> itemsToMake; ///< As `TYPE:PATH`.
    OutlineFilter filter;
    Form form = Form::drawing;
};

/// Writes the tree of the items at and under `root` that the filter lets through.
void writeTree(const Kiv_v4::SceneItem::Ptr& root, const OutlineFilter& filter,
               TreeOptions::Form form, Output& output);

/// Makes the items, mounts the files and writes the outliner tree of the whole scene. What cannot
/// be made or read gets a complaint, and the rest is shown. Gives the exit status.
[[nodiscard]] int treeCommand(const TreeOptions& options, Output& output);

} // namespace app
