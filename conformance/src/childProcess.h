#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Kiv_v4::conformance {

struct Options;

/// What a child process is at.
struct Progress
{
    std::string contract;
    std::string doing;
    std::string item;
};

/// A record from the child: its kind, and texts.
using Record = std::vector<std::string>;

/// The child's end of the way to its parent.
class ToParent
{
public:
    ToParent(int stream, char* progress, std::size_t progressSize)
        : _stream(stream), _progress(progress), _progressSize(progressSize)
    {}

    /// Sends a record, which then has arrived even when the process dies.
    void send(const Record& record);

    /// Replaces what the parent learns when the process dies. Costs no system call.
    void note(const Progress& progress);

private:
    const int _stream;
    char* const _progress; // shared with the parent
    const std::size_t _progressSize;
};

/// How a child process ended.
struct Ending
{
    std::vector<Record> records;
    std::string death; ///< How it died; empty when it ran to its end.
    Progress last;     ///< What it was at then.
};

/// Runs `work` in a child process. Throws `std::system_error` when there can be none.
[[nodiscard]] Ending runInChild(const Options& options, const std::function<void(ToParent&)>& work);

} // namespace Kiv_v4::conformance
