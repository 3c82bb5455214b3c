#include "checking.h"

#include <algorithm>
#include <stdexcept>

#include "kiv/hierarchyHandler.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

namespace Kiv_v4::conformance {

namespace {

// Of one contract; further ones rarely tell more.
constexpr int kMaxFindings = 5;

/// The top items of the run-time that was registered last.
std::vector<Path> topPaths()
{
    auto& manager = RunTimeMgr::instance();
    auto ids = manager.getIds();
    if (ids.empty()) {
        throw std::runtime_error("no run-time is registered");
    }
    const auto id = *std::max_element(ids.begin(), ids.end());
    const auto handler = manager.hierarchyHandler(id);
    if (!handler) {
        throw std::runtime_error("the run-time '" + manager.getName(id) +
                                 "' has no hierarchy handler");
    }
    std::vector<Path> paths;
    for (const auto& item : handler->rootItems(Path())) {
        paths.push_back(item->path());
    }
    if (paths.empty()) {
        throw std::runtime_error("the run-time '" + manager.getName(id) + "' has no items");
    }
    return paths;
}

std::string shortened(std::string text)
{
    constexpr std::size_t kMost = 400;
    if (text.size() > kMost) {
        text.erase(kMost);
        text += "...";
    }
    return text;
}

} // namespace

Checking::Checking(const Candidate& candidate, const Options& options, ToParent& parent)
    : _candidate(candidate), _options(options), _parent(parent), _random(options.seed)
{}

Running& Checking::running()
{
    if (!_running.runTime) {
        const auto before = _now;
        at("create", "making the run-time");
        _running = _candidate.make();
        if (_running.roots.empty()) {
            _running.roots = topPaths();
        }
        _now = before;
        _parent.note(_now);
    }
    return _running;
}

Rtid Checking::id()
{
    return running().roots.front().runTimeId();
}

void Checking::at(const char* contract, const std::string& doing, const Path& item)
{
    _now = {contract, doing, textOf(item)};
    _parent.note(_now);
}

void Checking::found(const std::string& expected, const std::string& seen)
{
    ++_nbFindings;
    if (++_nbPerContract[_now.contract] <= kMaxFindings) {
        _parent.send(
            {"found", _now.contract, _now.item, _now.doing, shortened(expected), shortened(seen)});
    }
}

void Checking::found(const char* contract, const Path& item, const std::string& expected,
                     const std::string& seen)
{
    const auto before = _now;
    _now.contract = contract;
    _now.item = textOf(item);
    found(expected, seen);
    _now = before;
}

void Checking::skip(const char* contract, const std::string& reason)
{
    _parent.send({"skipped", contract, reason});
}

std::string textOf(const Path& path)
{
    try {
        return PathString::string(path);
    } catch (const std::exception&) {
        return "(a path without text)";
    }
}

} // namespace Kiv_v4::conformance
