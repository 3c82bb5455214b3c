#include "findCommand.h"

#include <algorithm>
#include <fnmatch.h>
#include <limits>
#include <unistd.h>

#include "kiv/cameraHandler.h"
#include "kiv/light.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "diagnostics.h"
#include "itemLines.h"
#include "mounting.h"
#include "outline.h"
#include "terminal.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// Whether the item meets the criteria that are asked of each item.
bool matches(const SceneItem::Ptr& item, const Criteria& criteria)
{
    return (!criteria.nodeType || item->nodeType() == *criteria.nodeType) &&
           (!criteria.name ||
            ::fnmatch(criteria.name->c_str(), item->nodeName().c_str(), 0) == 0) &&
           (!criteria.lights || Light::light(item));
}

/// Told of one item; the search ends when it returns false.
using Finder = std::function<bool(const SceneItem::Ptr&)>;

/// Tells of the items among which to look: the cameras when only those are wanted.
void forEachCandidate(const SceneItem::Ptr& root, bool onlyCameras, const Finder& found)
{
    if (onlyCameras) {
        const auto cameras = CameraHandler::findAll(root->path());
        std::ranges::all_of(cameras, found);
    } else {
        walk(root, std::numeric_limits<std::size_t>::max(),
             [&found](const SceneItem::Ptr& item, std::size_t) { return found(item); });
    }
}

struct Row
{
    std::string nodeType;
    std::string runTime;
    std::string path;
};

/// What was found, in columns; the paths last, since they may be long.
class Table
{
public:
    void add(const SceneItem& item)
    {
        _rows.push_back({printable(item.nodeType()),
                         printable(RunTimeMgr::instance().getName(item.runTimeId())),
                         printable(PathString::string(item.path()))});
        _typeWidth = std::max(_typeWidth, columns(_rows.back().nodeType));
        _runTimeWidth = std::max(_runTimeWidth, columns(_rows.back().runTime));
    }

    void write(Output& output) const
    {
        const Paint paint(wantsColour(STDOUT_FILENO));
        for (const auto& row : _rows) {
            output.line(paint.nodeType(padded(row.nodeType, _typeWidth)) + "  " +
                        paint.runTime(padded(row.runTime, _runTimeWidth)) + "  " + row.path);
        }
    }

private:
    std::vector<Row> _rows;
    std::size_t _typeWidth = 0;
    std::size_t _runTimeWidth = 0;
};

/// Calls `write` for each item found, and gives their number.
std::size_t search(const SceneItem::Ptr& root, const Criteria& criteria, const Output& output,
                   const Found& write)
{
    std::size_t count = 0;
    forEachCandidate(root, criteria.cameras, [&](const SceneItem::Ptr& item) {
        if (matches(item, criteria)) {
            write(item);
            ++count;
        }
        return output.isRead();
    });
    return count;
}

} // namespace

std::size_t find(const SceneItem::Ptr& root, const Criteria& criteria, FindOptions::Form form,
                 Output& output, const Found& found)
{
    Table table;
    JsonItems items(output);
    const auto count = search(root, criteria, output, [&](const SceneItem::Ptr& item) {
        if (found) {
            found(item);
        }
        switch (form) {
        case FindOptions::Form::table:
            return table.add(*item);
        case FindOptions::Form::paths:
            return writePath(*item, output);
        case FindOptions::Form::json:
            return items.add(*item);
        }
    });
    table.write(output);
    if (form == FindOptions::Form::json) {
        items.end();
    }
    return count;
}

int findCommand(const FindOptions& options, Output& output)
{
    Mounting scene;
    const auto failed = fill(scene, options.itemsToMake, options.files);
    if (failed == options.itemsToMake.size() + options.files.size()) {
        return kFailure;
    }
    const auto count = find(scene.root(), options.criteria, options.form, output);
    return failed == 0 && count > 0 ? kSuccess : kFailure;
}

} // namespace app
