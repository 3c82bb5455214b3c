#include "treeCommand.h"

#include <functional>

#include "diagnostics.h"
#include "itemLines.h"
#include "mounting.h"
#include "treeDrawing.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// Visits the items that the filter lets through, without the ancestors that a drawing needs.
void walkMatches(const SceneItem::Ptr& root, const OutlineFilter& filter, const Output& output,
                 const std::function<void(const SceneItem&)>& visit)
{
    walk(root, filter.depth, [&](const SceneItem::Ptr& item, std::size_t) {
        if (filter.matches(item->nodeType())) {
            visit(*item);
        }
        return output.isRead();
    });
}

void writePaths(const SceneItem::Ptr& root, const OutlineFilter& filter, Output& output)
{
    walkMatches(root, filter, output, [&](const SceneItem& item) { writePath(item, output); });
}

void writeJson(const SceneItem::Ptr& root, const OutlineFilter& filter, Output& output)
{
    JsonItems items(output);
    walkMatches(root, filter, output, [&](const SceneItem& item) { items.add(item); });
    items.end();
}

} // namespace

void writeTree(const SceneItem::Ptr& root, const OutlineFilter& filter, TreeOptions::Form form,
               Output& output)
{
    switch (form) {
    case TreeOptions::Form::drawing:
        return drawTree(outline(root, filter), output);
    case TreeOptions::Form::paths:
        return writePaths(root, filter, output);
    case TreeOptions::Form::json:
        return writeJson(root, filter, output);
    }
}

int treeCommand(const TreeOptions& options, Output& output)
{
    Mounting scene;
    const auto failed = fill(scene, options.itemsToMake, options.files);
    if (failed < options.itemsToMake.size() + options.files.size()) {
        writeTree(scene.root(), options.filter, options.form, output);
    }
    return failed == 0 ? kSuccess : kFailure;
}

} // namespace app
