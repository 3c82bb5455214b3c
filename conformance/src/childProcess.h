#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Kiv_v4::conformance {

struct Options;

/// The progress of a child process.
struct Progress
{
    std::string contract;
    std::string doing;
    std::string item;
};

/// A record from the child: its kind, and texts.
using Record = std::vector<std::string>;

/// The child's end of the pipe to its parent.
class ToParent
{
public:
    ToParent(int stream, char* progress, std::size_t progressSize)
        : _stream(stream), _progress(progress), _progressSize(progressSize)
    {}

    /// Sends a record, which arrives even if the process dies then.
    void send(const Record& record);

    /// Sets the progress that the parent reads if the process dies. Makes no system call.
    void note(const Progress& progress);

private:
    const int _stream;
    char* const _progress; // shared with the parent
    const std::size_t _progressSize;
};

/// The end of a child process.
struct Ending
{
    std::vector<Record> records;
    std::string death; ///< The cause of death; empty if it ran to its end.
    Progress last;     ///< Its last progress.
};

/// Runs `work` in a child process. Throws `std::system_error` if it cannot be started.
[[nodiscard]] Ending runInChild(const Options& options, const std::function<void(ToParent&)>& work);

} // namespace Kiv_v4::conformance
