#include "report/treeReport.h"

#include <cstddef>
#include <functional>

#include "report/itemLines.h"
#include "report/itemSearch.h"
#include "report/treeDrawing.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// Visits the items that the filter lets through, without the ancestors that a drawing needs, and
/// returns their number.
std::size_t walkMatches(const SceneItem::Ptr& root, const host::OutlineFilter& filter,
                        const Output& output, const std::function<void(const SceneItem&)>& visit)
{
    std::size_t count = 0;
    host::walk(root, filter.depth, [&](const SceneItem::Ptr& item, std::size_t) {
        if (filter.matches(item->nodeType())) {
            visit(*item);
            ++count;
        }
        return output.isRead();
    });
    return count;
}

std::size_t draw(const SceneItem::Ptr& root, const host::OutlineFilter& filter, Output& output)
{
    const auto rows = host::outline(root, filter);
    drawTree(rows, output);
    return rows.size();
}

std::size_t writePaths(const SceneItem::Ptr& root, const host::OutlineFilter& filter,
                       Output& output)
{
    return walkMatches(root, filter, output,
                       [&](const SceneItem& item) { writePath(item, output); });
}

std::size_t writeJson(const document::Workspace& scene, const SceneItem::Ptr& root,
                      const host::OutlineFilter& filter, Output& output)
{
    JsonItems items(scene, output);
    const auto count =
        walkMatches(root, filter, output, [&](const SceneItem& item) { items.add(item); });
    items.end();
    return count;
}

} // namespace

void writeTree(const document::Workspace& scene, const SceneItem::Ptr& root,
               const host::OutlineFilter& filter, TreeForm form, Output& output)
{
    const auto count = form == TreeForm::drawing ? draw(root, filter, output)
                       : form == TreeForm::paths ? writePaths(root, filter, output)
                                                 : writeJson(scene, root, filter, output);
    if (count == 0) {
        complainOfMissingType(root, filter.nodeType, output);
    }
}

} // namespace app
