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

// The events in a host as lines of JSON, which a user can send with a report of a fault, and their
// replay, which shows the first differences.

/// One event.
struct Record
{
    std::uint64_t id = 0;    ///< From 1, in order.
    std::uint64_t cause = 0; ///< The record of the input that caused it; 0 for none.
    double time = 0;         ///< Seconds since the recording began.

    /// `scene` for the state at the beginning, `input` for an input of the user, `error` for the
    /// reason why an input failed, `notification`, `log` for a record of the log, and of the undo
    /// history `entered`, `merged`, `undone`, `redone`, `dropped` and `cleaned`.
    std::string kind{};

    /// For people: the input as the host gave it, the notification as `textOf` writes it, or the
    /// text of the history's entry.
    std::string text{};
};

/// Writes a record as one line of JSON, without the line break. Bytes that are not UTF-8 are
/// written as U+FFFD.
[[nodiscard]] KIV_EXPORT std::string jsonLine(const Record& record);

/// Reads the lines of a recording. Throws `std::runtime_error` with the number of the line for a
/// line that is not a record.
[[nodiscard]] KIV_EXPORT std::vector<Record> readRecords(std::istream& lines);

/// Records every notification that `SceneWatch` observes, every change of the undo history, records
/// of the log, and the inputs that the host announces.
///
///     host::Recorder recorder(write, root, history);
///     {
///         const host::Recorder::Input input(recorder, "move lamp 0 1 0"); // replay runs it
///         ...
///     }
///
/// **Lifetime.** Records until it is destroyed. Its inputs must be destroyed first.
class KIV_EXPORT Recorder
{
public:
    /// Called with each record at once. Must not throw.
    using Write = std::function<void(const Record&)>;

    class Input;

    /// A scene and a global selection must be installed; `root` must not be null, `history` may be.
    Recorder(Write write, const SceneItem::Ptr& root, const std::shared_ptr<UndoHistory>& history);
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    ~Recorder();

    struct KIV_HIDDEN State;

private:
    const std::unique_ptr<State> _state;
};

/// The cause of everything that is recorded while it lives. Inputs nest: the line that runs a
/// script is the cause of what the script does.
class KIV_EXPORT Recorder::Input
{
public:
    /// Records the input: a line of a shell, the name of a menu entry. `recorder` must outlive
    /// this.
    Input(Recorder& recorder, const std::string& text);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input();

    /// Records the reason why the input failed.
    void failed(const std::string& reason);

private:
    State& _state;
    const std::uint64_t _outer;
};

/// A difference between a replay and the recording.
struct Divergence
{
    Record input;                     ///< The recorded input that caused it, or `scene`.
    std::optional<Record> recorded{}; ///< The event in the recording; empty if there was none left.
    std::optional<Record> now{};      ///< The event in the replay; empty if there was none left.
};

/// Runs all recorded inputs again, except those that others caused, and returns for each of them
/// the first record whose kind or text differs. `run` must do an input as the host did it when it
/// was recorded; an exception from it counts as an `error`.
[[nodiscard]] KIV_EXPORT std::vector<Divergence>
replay(const std::vector<Record>& records, const std::function<void(const std::string&)>& run,
       const SceneItem::Ptr& root, const std::shared_ptr<UndoHistory>& history);

} // namespace Kiv_v4::host
