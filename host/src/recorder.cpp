#include "kiv/host/recorder.h"

#include <chrono>
#include <limits>
#include <utility>

#include "kiv/host/errorChannel.h"
#include "kiv/host/outline.h"
#include "kiv/host/sceneWatch.h"
#include "kiv/host/undoHistory.h"
#include "kiv/log.h"
#include "kiv/pathString.h"

namespace Kiv_v4::host {

namespace {

/// What tells one scene from another: the number of items, and a hash of their places and types
/// that is the same in every run.
std::string stateOf(const SceneItem::Ptr& root)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    std::size_t count = 0;
    const auto add = [&hash](const std::string& text) {
        for (const auto c : text + '\n') {
            hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
        }
    };
    walk(root, std::numeric_limits<std::size_t>::max(), [&](const SceneItem::Ptr& item, auto) {
        add(PathString::string(item->path()));
        add(item->nodeType());
        ++count;
        return true;
    });
    return std::to_string(count) + " items, " + std::to_string(hash);
}

const char* kindOf(UndoHistoryChanged::Change change)
{
    switch (change) {
    case UndoHistoryChanged::Entered:
        return "entered";
    case UndoHistoryChanged::Merged:
        return "merged";
    case UndoHistoryChanged::Undone:
        return "undone";
    case UndoHistoryChanged::Redone:
        return "redone";
    case UndoHistoryChanged::Dropped:
        return "dropped";
    case UndoHistoryChanged::Cleaned:
        break;
    }
    return "cleaned";
}

} // namespace

struct Recorder::State
{
    using Clock = std::chrono::steady_clock;

    State(Write writer, std::shared_ptr<UndoHistory> undoHistory)
        : write(std::move(writer)), history(std::move(undoHistory)),
          errors([this](const LogRecord& record) { add("log", record.message); })
    {}

    std::uint64_t add(const char* kind, const std::string& text)
    {
        const std::chrono::duration<double> time = Clock::now() - start;
        write({++last, cause, time.count(), kind, text});
        return last;
    }

    void add(const UndoHistoryChanged& change)
    {
        const auto isUndone = change.change() == UndoHistoryChanged::Undone;
        add(kindOf(change.change()), isUndone ? history->redoText() : history->undoText());
    }

    const Write write;
    const std::shared_ptr<UndoHistory> history;
    const Clock::time_point start = Clock::now();
    std::uint64_t last = 0;
    std::uint64_t cause = 0;
    const ErrorChannel errors;
    std::unique_ptr<SceneWatch> watch;
    Observer::Ptr historyObserver;
};

namespace {

class HistoryTeller : public Observer
{
public:
    explicit HistoryTeller(Recorder::State& state) : _state(state) {}

    void operator()(const Notification& notification) override
    {
        if (const auto* const change = dynamic_cast<const UndoHistoryChanged*>(&notification)) {
            _state.add(*change);
        }
    }

private:
    Recorder::State& _state;
};

} // namespace

Recorder::Recorder(Write write, const SceneItem::Ptr& root,
                   const std::shared_ptr<UndoHistory>& history)
    : _state(std::make_unique<State>(std::move(write), history))
{
    auto& state = *_state;
    state.add("scene", stateOf(root));
    state.watch = std::make_unique<SceneWatch>(
        [&state](const Notification& notification) {
            state.add("notification", textOf(notification));
        },
        root);
    if (history) {
        state.historyObserver = std::make_shared<HistoryTeller>(state);
        history->addObserver(state.historyObserver);
    }
}

Recorder::~Recorder() = default;

Recorder::Input::Input(Recorder& recorder, const std::string& text)
    : _state(*recorder._state), _outer(_state.cause)
{
    _state.cause = _state.add("input", text);
}

Recorder::Input::~Input()
{
    _state.cause = _outer;
}

void Recorder::Input::failed(const std::string& reason)
{
    _state.add("error", reason);
}

} // namespace Kiv_v4::host
