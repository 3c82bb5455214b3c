#pragma once

#include <map>
#include <random>
#include <string>

#include "kiv/conformance/conformance.h"
#include "kiv/sceneItem.h"

#include "childProcess.h"

namespace Kiv_v4::conformance {

/// The context of a probe in a child process: the run-time, a source of choices, and access to the
/// report.
class Checking
{
public:
    Checking(const Candidate& candidate, const Options& options, ToParent& parent);

    /// The run-time, made by the first call.
    [[nodiscard]] Running& running();

    /// The run-time's id, by its roots.
    [[nodiscard]] Rtid id();

    /// Releases the run-time, so that the next call of `running` makes a new one.
    void end() { _running = {}; }

    [[nodiscard]] const Candidate& candidate() const noexcept { return _candidate; }
    [[nodiscard]] const Options& options() const noexcept { return _options; }
    [[nodiscard]] std::mt19937_64& random() noexcept { return _random; }

    /// A number below `end`, which is not 0.
    [[nodiscard]] std::size_t below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(_random);
    }

    /// Records the operation that is about to be called, for findings about crashes.
    void at(const char* contract, const std::string& doing, const Path& item = {});

    /// Reports a finding about the operation recorded last, or about another contract.
    void found(const std::string& expected, const std::string& seen);
    void found(const char* contract, const Path& item, const std::string& expected,
               const std::string& seen);

    /// Skips the contract because the run-time lacks its feature.
    void skip(const char* contract, const std::string& reason);

    /// The number of findings.
    [[nodiscard]] std::size_t nbFindings() const noexcept { return _nbFindings; }

    /// Calls `function` and swallows its std::exceptions. Returns false if it threw one.
    template <class Function>
    static bool answers(Function&& function)
    {
        try {
            function();
            return true;
        } catch (const std::exception&) {
            return false;
        }
    }

private:
    const Candidate& _candidate;
    const Options& _options;
    ToParent& _parent;
    Running _running;
    std::mt19937_64 _random;
    std::map<std::string, int> _nbPerContract;
    std::size_t _nbFindings = 0;
    Progress _now;
};

/// The text of a path, even if its run-time is no longer registered.
[[nodiscard]] std::string textOf(const Path& path);

} // namespace Kiv_v4::conformance
