#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

class UndoHistory;

// What happened in a host, as lines of JSON that a user can send with a report of a fault, and done
// again to see where it goes another way.

/// One thing that happened.
struct Record
{
    std::uint64_t id = 0;    ///< From 1, in order.
    std::uint64_t cause = 0; ///< The record of the input that brought it about; 0 for none.
    double time = 0;         ///< Seconds since the recording began.

    /// `scene` for the state at the beginning, `input` for what the user did, `error` for why that
    /// failed, `notification`, `log` for a record of the log, and of the undo history `entered`,
    /// `merged`, `undone`, `redone`, `dropped` and `cleaned`.
    std::string kind{};

    /// For people: an input as the host has it, a notification as `textOf` has it, the text of the
    /// entry of the history.
    std::string text{};
};

/// Writes a record as one line of JSON, without the line break. Bytes that are no UTF-8 are written
/// as U+FFFD.
[[nodiscard]] KIV_EXPORT std::string jsonLine(const Record& record);

/// Reads the lines of a recording. Throws `std::runtime_error` with the number of the line for one
/// that is no record.
[[nodiscard]] KIV_EXPORT std::vector<Record> readRecords(std::istream& lines);

/// Records every notification, as `SceneWatch` hears of them, every change of the undo history,
/// what is logged, and the inputs that the host tells of.
///
///     host::Recorder recorder(write, root, history);
///     {
///         const host::Recorder::Input input(recorder, "move lamp 0 1 0"); // what replay does
///         again
///         ...
///     }
///
/// **Lifetime.** Ends when it is destroyed, after its inputs.
class KIV_EXPORT Recorder
{
public:
    /// Given each record as it happens. Must not throw.
    using Write = std::function<void(const Record&)>;

    class Input;

    /// A scene and a global selection must be installed; `root` must not be null, `history` may be.
    Recorder(Write write, const SceneItem::Ptr& root, const std::shared_ptr<UndoHistory>& history);
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    ~Recorder();

    struct State;

private:
    const std::unique_ptr<State> _state;
};

/// While it lives, what is recorded is caused by this input. Inputs nest: what a script does is
/// caused by the line that runs it.
class KIV_EXPORT Recorder::Input
{
public:
    Input(Recorder& recorder, const std::string& text);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input();

    /// Records why it could not be done.
    void failed(const std::string& reason);

private:
    State& _state;
    const std::uint64_t _outer;
};

/// Where a replay goes another way than the recording.
struct Divergence
{
    Record input;                     ///< The recorded input under which it does, or `scene`.
    std::optional<Record> recorded{}; ///< What happened then; nothing when there was no more.
    std::optional<Record> now{};      ///< What happens now; nothing when there is no more.
};

/// Does all recorded inputs again, but for those that others brought about, and returns for each of
/// them the first record that is another one now, by kind and text. `run` does an input as it was
/// done when it was recorded; what it throws is taken for an `error`.
[[nodiscard]] KIV_EXPORT std::vector<Divergence>
replay(const std::vector<Record>& records, const std::function<void(const std::string&)>& run,
       const SceneItem::Ptr& root, const std::shared_ptr<UndoHistory>& history);

} // namespace Kiv_v4::host
