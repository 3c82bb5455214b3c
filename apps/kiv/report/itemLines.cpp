#include "report/itemLines.h"

#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "terminal/jsonText.h"
#include "terminal/terminal.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// The paths of an outliner nest, so parent and depth need no look-up.
nlohmann::ordered_json record(const document::Workspace& scene, const SceneItem& item)
{
    const auto depth = item.path().size() - 1;
    nlohmann::ordered_json record;
    record["path"] = PathString::string(item.path());
    record["parent"] = nullptr;
    if (depth > 0) {
        record["parent"] = PathString::string(item.path().pop());
    }
    record["name"] = item.nodeName();
    record["type"] = item.nodeType();
    record["runTime"] = RunTimeMgr::instance().getName(item.runTimeId());
    const auto file = scene.fileOf(item);
    record["file"] = file.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(file);
    record["depth"] = depth;
    return record;
}

} // namespace

void writePath(const SceneItem& item, Output& output)
{
    const auto text = PathString::string(item.path());
    output.line(output.isTerminal() ? printable(text) : text);
}

void JsonItems::add(const SceneItem& item)
{
    _output.write(_isEmpty ? "[\n" : ",\n");
    _output.write(jsonText(record(_scene, item), _output));
    _isEmpty = false;
}

void JsonItems::end()
{
    _output.line(_isEmpty ? "[]" : "\n]");
}

} // namespace app
