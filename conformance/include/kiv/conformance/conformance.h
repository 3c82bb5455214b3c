#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"

/// Checks run-times against the contracts of the library's interfaces.
namespace Kiv_v4::conformance {

/// A registered run-time with a scene to check.
struct Running
{
    std::shared_ptr<void> runTime; ///< Releasing it must take everything back.

    /// The items to begin with, all of one run-time: the items of a mounted file, for example. If
    /// empty, the top items of the run-time that was registered last.
    std::vector<Path> roots;
};

/// A run-time to be checked.
struct Candidate
{
    std::string name; ///< The name in reports.

    /// Registers the run-time and fills its scene. Called once or more for each group of contracts,
    /// in a process of its own each time, with a `Scene` installed; must make the same scene every
    /// time. An exception is a finding.
    std::function<Running()> make;

    /// The file of a plug-in, to check loading and unloading as well; otherwise empty.
    std::string pluginFile = {};
};

/// Returns the candidate for a plug-in file (`kiv/plugin.h`), which each of the processes loads.
/// Its scene is that of the run-time that the plug-in registers last.
[[nodiscard]] KIV_EXPORT Candidate pluginCandidate(const std::string& file);

/// One rule that a run-time must obey.
struct Contract
{
    std::string id;        ///< `paths.agree`: a family and a name.
    std::string statement; ///< The rule.
    std::string advice;    ///< Advice for an author whose run-time breaks it.
};

/// All contracts, in the order in which they are checked.
[[nodiscard]] KIV_EXPORT const std::vector<Contract>& contracts();

/// Makes allocations fail. Only the program can replace `operator new`, so it supplies the
/// functions that control it.
struct AllocationFaults
{
    /// Makes the `nth` allocation from now on throw `std::bad_alloc`, once; 1 means the next one.
    std::function<void(std::size_t nth)> arm;
    /// Ends that. Returns whether an allocation failed.
    std::function<bool()> disarm;
};

/// The settings of a check.
struct Options
{
    /// Determines the choice of items, edits and values: the same seed makes the same edits.
    std::uint64_t seed = 1;
    /// The number of edits in each random sequence.
    unsigned nbSteps = 100;
    /// The largest number of items of the scene to check; edits can add to them.
    std::size_t maxItems = 300;
    /// The time limit for one group of contracts, in seconds; beyond it the group counts as
    /// hanging.
    unsigned timeLimit = 120;
    /// Check only the contracts whose ids begin with one of these; all if empty.
    std::vector<std::string> only;
    /// Without them, `memory.failing` is skipped.
    AllocationFaults allocationFaults;
    /// Let the processes write to the standard error stream, where the library records swallowed
    /// exceptions.
    bool showDiagnostics = false;
};

/// A violation of a contract.
struct Finding
{
    std::string contract; ///< The id.
    std::string item;     ///< The text of the item's path; empty if it is not about one item.
    std::string doing;    ///< The operation, and the step in a sequence of edits.
    std::string expected; ///< The correct result.
    std::string seen;     ///< The actual result.
    std::uint64_t seed;   ///< The seed that repeats it.
};

/// The result for one contract.
struct Outcome
{
    /// Whether the contract holds, as far as the check can tell.
    enum Status : std::uint8_t { Held = 0, Broken = 1, Skipped = 2 };

    /// The contract.
    Contract contract;
    /// The result.
    Status status = Held;
    std::vector<Finding> findings; ///< The first few findings, if it is broken.
    std::string reason; ///< Why it was skipped: the missing feature of the run-time or process.
};

/// The results for a run-time.
struct Report
{
    std::string candidate;         ///< Its name.
    std::uint64_t seed;            ///< `Options::seed`.
    std::vector<Outcome> outcomes; ///< In the order of `contracts()`.

    /// Whether no contract is broken.
    [[nodiscard]] KIV_EXPORT bool passed() const;

    /// All findings.
    [[nodiscard]] KIV_EXPORT std::vector<Finding> findings() const;
};

/// Checks the candidate against the contracts. A run-time is only checked for the features that it
/// offers: refusals with null and interfaces without a handler are not findings.
///
/// Checks each group of contracts in a child process (`fork`), so crashes, hangs and corrupted
/// memory are findings like others. Never calls the candidate in the caller's process. That process
/// must have only one thread; the candidate meets its installed scene, command manager and
/// selections.
///
/// Throws `std::system_error` if a process cannot be started.
[[nodiscard]] KIV_EXPORT Report check(const Candidate& candidate, const Options& options = {});

/// The report as text for a terminal: each finding with advice, then a summary.
[[nodiscard]] KIV_EXPORT std::string text(const Report& report);

/// The same as JSON: an object with `candidate`, `seed`, `passed` and `contracts`, each of them
/// with `id`, `statement`, `status` and `findings`.
[[nodiscard]] KIV_EXPORT std::string json(const Report& report);

/// The same as JUnit's XML: a test suite with a test case per contract.
[[nodiscard]] KIV_EXPORT std::string junit(const Report& report);

} // namespace Kiv_v4::conformance
