#include <algorithm>
#include <exception>
#include <unordered_map>

#include "kiv/host/recorder.h"
#include "kiv/host/undoHistory.h"

namespace Kiv_v4::host {

namespace {

using Records = std::vector<Record>;

/// The records that each input of the user brought about, also by way of others.
std::unordered_map<std::uint64_t, Records> consequences(const Records& records)
{
    std::unordered_map<std::uint64_t, std::uint64_t> tops;
    std::unordered_map<std::uint64_t, Records> result;
    for (const auto& record : records) {
        const auto above = tops.find(record.cause);
        const auto top = above == tops.end() ? record.id : above->second;
        tops.emplace(record.id, top);
        if (top != record.id) {
            result[top].push_back(record);
        }
    }
    return result;
}

std::optional<Record> recordAt(const Records& records, std::size_t index)
{
    return index < records.size() ? std::optional(records[index]) : std::nullopt;
}

/// The first records that differ; nothing when none do.
std::optional<Divergence> divergence(const Record& input, const Records& before, const Records& now)
{
    const auto isSame = [](const Record& one, const Record& other) {
        return one.kind == other.kind && one.text == other.text;
    };
    const auto [left, right] =
        std::mismatch(before.begin(), before.end(), now.begin(), now.end(), isSame);
    if (left == before.end() && right == now.end()) {
        return {};
    }
    const auto index = static_cast<std::size_t>(left - before.begin());
    return Divergence{input, recordAt(before, index), recordAt(now, index)};
}

} // namespace

std::vector<Divergence> replay(const Records& records,
                               const std::function<void(const std::string&)>& run,
                               const SceneItem::Ptr& root,
                               const std::shared_ptr<UndoHistory>& history)
{
    Records received;
    Recorder recorder([&received](const Record& record) { received.push_back(record); }, root,
                      history);
    std::vector<Divergence> divergences;
    const auto compare = [&](const Record& input, const Records& before, const Records& now) {
        if (auto found = divergence(input, before, now)) {
            divergences.push_back(*std::move(found));
        }
    };
    const auto before = consequences(records);
    for (const auto& record : records) {
        if (record.kind == "scene") {
            compare(record, {record}, received);
        }
        if (record.kind != "input" || record.cause != 0) {
            continue;
        }
        received.clear();
        {
            Recorder::Input input(recorder, record.text);
            try {
                run(record.text);
            } catch (const std::exception& error) {
                input.failed(error.what());
            }
        }
        received.erase(received.begin()); // the input
        const auto caused = before.find(record.id);
        compare(record, caused == before.end() ? Records() : caused->second, received);
    }
    return divergences;
}

} // namespace Kiv_v4::host
