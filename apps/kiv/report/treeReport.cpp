#include "report/treeReport.h"

#include <cstddef>
#include <functional>

#include "report/itemLines.h"
#include "report/missingNames.h"
#include "report/treeDrawing.h"
#include "terminal/progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// Visits the items that the filter lets through, without the ancestors that a drawing needs, and
/// returns their number.
std::size_t walkMatches(const SceneItemList& roots, const host::OutlineFilter& filter,
                        const Output& output, const std::function<void(const SceneItem&)>& visit)
{
    std::size_t count = 0;
    ProgressLine progress("listing items");
    for (const auto& root : roots) {
        host::walk(root, filter.depth, [&](const SceneItem::Ptr& item, std::size_t) {
            progress.count();
            if (filter.matches(item->nodeType())) {
                visit(*item);
                ++count;
            }
            return output.isRead();
        });
    }
    return count;
}

std::vector<host::OutlineRow> rowsOf(const SceneItem::Ptr& root, const host::OutlineFilter& filter)
{
    ProgressLine progress("listing items");
    return host::outline(root, filter, progress.counter());
}

std::size_t draw(const SceneItemList& roots, const host::OutlineFilter& filter, Output& output)
{
    std::size_t count = 0;
    for (const auto& root : roots) {
        const auto rows = rowsOf(root, filter);
        drawTree(rows, output);
        count += rows.size();
    }
    return count;
}

std::size_t writePaths(const SceneItemList& roots, const host::OutlineFilter& filter,
                       Output& output)
{
    return walkMatches(roots, filter, output,
                       [&](const SceneItem& item) { writePath(item, output); });
}

std::size_t writeJson(const document::Workspace& scene, const SceneItemList& roots,
                      const host::OutlineFilter& filter, Output& output)
{
    JsonItems items(scene, output);
    const auto count =
        walkMatches(roots, filter, output, [&](const SceneItem& item) { items.add(item); });
    items.end();
    return count;
}

} // namespace

void writeTree(const document::Workspace& scene, const SceneItemList& roots,
               const host::OutlineFilter& filter, TreeForm form, Output& output)
{
    const auto count = form == TreeForm::Drawing ? draw(roots, filter, output)
                       : form == TreeForm::Paths ? writePaths(roots, filter, output)
                                                 : writeJson(scene, roots, filter, output);
    if (count == 0) {
        complainOfMissingType(roots, filter.nodeType, output);
    }
}

} // namespace app
