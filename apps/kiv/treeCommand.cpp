#include "treeCommand.h"

#include <exception>
#include <nlohmann/json.hpp>

#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "diagnostics.h"
#include "jsonText.h"
#include "mounting.h"
#include "terminal.h"
#include "treeDrawing.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// Does `work` with each of the subjects, complains of those with which it fails, and gives their
/// number.
template <class Work>
std::size_t failures(const std::vector<std::string>& subjects, Work work)
{
    std::size_t failed = 0;
    for (const auto& subject : subjects) {
        try {
            work(subject);
        } catch (const std::exception& error) {
            complain(subject, error.what());
            ++failed;
        }
    }
    return failed;
}

/// Visits the items that the filter lets through, without the ancestors that a drawing needs.
void walkMatches(const SceneItem::Ptr& root, const OutlineFilter& filter, const Output& output,
                 const std::function<void(const SceneItem&, std::size_t depth)>& visit)
{
    walk(root, filter.depth, [&](const SceneItem::Ptr& item, std::size_t depth) {
        if (filter.matches(item->nodeType())) {
            visit(*item, depth);
        }
        return output.isRead();
    });
}

void writePaths(const SceneItem::Ptr& root, const OutlineFilter& filter, Output& output)
{
    walkMatches(root, filter, output, [&](const SceneItem& item, std::size_t) {
        const auto text = PathString::string(item.path());
        output.line(output.isTerminal() ? printable(text) : text);
    });
}

/// One element of the JSON array. The paths of an outliner nest, so the parent needs no look-up.
nlohmann::ordered_json record(const SceneItem& item, std::size_t depth)
{
    nlohmann::ordered_json record;
    record["path"] = PathString::string(item.path());
    record["parent"] = nullptr;
    if (depth > 0) {
        record["parent"] = PathString::string(item.path().pop());
    }
    record["name"] = item.nodeName();
    record["type"] = item.nodeType();
    record["runTime"] = RunTimeMgr::instance().getName(item.runTimeId());
    record["depth"] = depth;
    return record;
}

void writeJson(const SceneItem::Ptr& root, const OutlineFilter& filter, Output& output)
{
    const char* before = "[\n";
    walkMatches(root, filter, output, [&](const SceneItem& item, std::size_t depth) {
        output.write(before);
        output.write(jsonText(record(item, depth), output));
        before = ",\n";
    });
    output.line(*before == '[' ? "[]" : "\n]");
}

void write(const SceneItem::Ptr& root, const TreeOptions& options, Output& output)
{
    switch (options.form) {
    case TreeOptions::Form::drawing:
        return drawTree(outline(root, options.filter), output);
    case TreeOptions::Form::paths:
        return writePaths(root, options.filter, output);
    case TreeOptions::Form::json:
        return writeJson(root, options.filter, output);
    }
}

} // namespace

int treeCommand(const TreeOptions& options, Output& output)
{
    Mounting scene;
    const auto failed =
        failures(options.itemsToMake, [&](const std::string& item) { scene.make(item); }) +
        failures(options.files, [&](const std::string& file) { scene.mount(file); });
    if (failed < options.itemsToMake.size() + options.files.size()) {
        write(scene.root(), options, output);
    }
    return failed == 0 ? kSuccess : kFailure;
}

} // namespace app
