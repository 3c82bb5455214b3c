#include "report/treeDrawing.h"

#include <string_view>

#include "kiv/runTimeMgr.h"

#include "terminal/interrupts.h"
#include "terminal/terminal.h"

namespace app {

using namespace Kiv_v4;

namespace {

constexpr std::string_view kBranch = "├── ", kLastBranch = "└── ";
constexpr std::string_view kTrunk = "│   ", kNoTrunk = "    ";

/// What stands to the left of the names, kept from row to row.
class Trunks
{
public:
    /// The lines left of `row`, the branch to its name included.
    std::string leftOf(const host::OutlineRow& row)
    {
        if (row.depth == 0) {
            return {};
        }
        _ends.resize(row.depth); // of the trunks of the levels 1 to depth - 1, from a 0 in front
        _text.resize(_ends.back());
        auto left = _text + std::string(row.isLast ? kLastBranch : kBranch);
        _text += row.isLast ? kNoTrunk : kTrunk;
        _ends.push_back(_text.size());
        return left;
    }

private:
    std::string _text;
    std::vector<std::size_t> _ends{0};
};

/// Tells where a tree crosses from one run-time to another.
class Crossings
{
public:
    /// Whether the row's run-time is not its parent's. Rows come in the order of the tree.
    bool isAt(const host::OutlineRow& row)
    {
        _runTimes.resize(row.depth);
        const auto crosses = row.depth == 0 || _runTimes.back() != row.runTimeId;
        _runTimes.push_back(row.runTimeId);
        return crosses;
    }

private:
    std::vector<Rtid> _runTimes; // of the row's ancestors
};

std::string rowText(const host::OutlineRow& row, bool crosses, const Paint& paint)
{
    const auto name = printable(row.name.string());
    auto text = row.matches ? name : paint.faint(name);
    text += "  " + paint.nodeType(printable(row.nodeType));
    if (crosses) {
        const auto runTime = printable(RunTimeMgr::instance().getName(row.runTimeId));
        text += "  " + paint.runTime("[" + runTime + "]");
    }
    return text;
}

template <class Counts, class NameOf>
std::string countsText(const Counts& counts, NameOf nameOf)
{
    std::string text;
    for (const auto& [key, count] : counts) {
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + printable(nameOf(key));
    }
    return text;
}

void writeCounts(const std::vector<host::OutlineRow>& rows, Output& output)
{
    const auto counts = host::countsOf(rows);
    output.line(std::to_string(counts.items) + (counts.items == 1 ? " item" : " items"));
    if (counts.items > 0) {
        output.line("run-times: " + countsText(counts.runTimes, [](Rtid id) {
                        return RunTimeMgr::instance().getName(id);
                    }));
        output.line("node types: " +
                    countsText(counts.nodeTypes, [](const auto& type) { return type; }));
    }
}

} // namespace

void drawTree(const std::vector<host::OutlineRow>& rows, Output& output)
{
    const Paint paint(output.isColoured());
    Trunks trunks;
    Crossings crossings;
    for (const auto& row : rows) {
        endIfInterrupted();
        if (!output.isRead()) {
            return;
        }
        output.write(paint.faint(trunks.leftOf(row)));
        output.line(rowText(row, crossings.isAt(row), paint));
    }
    if (!rows.empty()) {
        output.line("");
    }
    writeCounts(rows, output);
}

} // namespace app
