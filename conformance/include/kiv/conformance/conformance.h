#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"

/// Holds run-times against the contracts of the library's interfaces.
namespace Kiv_v4::conformance {

/// A run-time that is registered, with a scene to look at.
struct Running
{
    std::shared_ptr<void> runTime; ///< Releasing it takes everything back.

    /// The items to begin with, all of one run-time: the items of a mounted file, for example. When
    /// there are none, the top items of the scene of the run-time that was registered last.
    std::vector<Path> roots;
};

/// A run-time to be checked.
struct Candidate
{
    std::string name; ///< As reports call it.

    /// Registers the run-time and fills its scene. Called once or more for each group of contracts,
    /// in a process of its own each time, with a `Scene` installed; makes the same scene every
    /// time. What it throws is a finding.
    std::function<Running()> make;

    /// Of a plug-in, the file, which is then loaded and unloaded as well. Otherwise empty.
    std::string pluginFile = {};
};

/// The candidate that a plug-in file is (`kiv/plugin.h`): it is loaded in each of the processes.
/// Its scene is that of the run-time that it registers last.
[[nodiscard]] KIV_EXPORT Candidate pluginCandidate(const std::string& file);

/// One thing that a run-time has to do.
struct Contract
{
    std::string id;        ///< `paths.agree`: a family and a name.
    std::string statement; ///< What holds in a right run-time.
    std::string advice;    ///< What an author looks at when it does not hold.
};

/// All contracts, in the order in which they are checked.
[[nodiscard]] KIV_EXPORT const std::vector<Contract>& contracts();

/// Lets allocations fail. Only the program can replace `operator new` for everybody, so it hands
/// over how it is told to.
struct AllocationFaults
{
    /// Lets the `nth` allocation from now on throw `std::bad_alloc`, once; the next one for 1.
    std::function<void(std::size_t nth)> arm;
    /// Ends that; whether an allocation failed.
    std::function<bool()> disarm;
};

/// How to check.
struct Options
{
    /// What the choice of items, edits and values follows from: the same seed, the same edits.
    std::uint64_t seed = 1;
    /// How many edits each random sequence holds.
    unsigned nbSteps = 100;
    /// How many items of the scene are looked at, at most; edits can add to them.
    std::size_t maxItems = 300;
    /// How long one group of contracts may take before it counts as hanging, in seconds.
    unsigned timeLimit = 120;
    /// Only the contracts whose ids begin with one of these; all when there are none.
    std::vector<std::string> only;
    /// Without, `memory.failing` is skipped.
    AllocationFaults allocationFaults;
    /// Lets the processes write to the standard error stream, where the library records swallowed
    /// exceptions.
    bool showDiagnostics = false;
};

/// A contract that was seen broken.
struct Finding
{
    std::string contract; ///< The id.
    std::string item;     ///< The text of the item's path; empty when it is not about one item.
    std::string doing;    ///< The operation, and the step of a sequence of edits.
    std::string expected; ///< What a right run-time shows.
    std::string seen;     ///< What was there instead.
    std::uint64_t seed;   ///< The seed that repeats it.
};

/// What was found about one contract.
struct Outcome
{
    /// Whether it holds, as far as was seen.
    enum Status : std::uint8_t { Held = 0, Broken = 1, Skipped = 2 };

    /// The contract that was held against.
    Contract contract;
    /// Whether it holds.
    Status status = Held;
    std::vector<Finding> findings; ///< When it is broken; the first few only.
    std::string reason; ///< When it was skipped: what the run-time or the process does not offer.
};

/// What was found about a run-time.
struct Report
{
    std::string candidate;         ///< Its name.
    std::uint64_t seed;            ///< `Options::seed`.
    std::vector<Outcome> outcomes; ///< In the order of `contracts()`.

    /// Whether no contract was seen broken.
    [[nodiscard]] KIV_EXPORT bool passed() const;

    /// All findings.
    [[nodiscard]] KIV_EXPORT std::vector<Finding> findings() const;
};

/// Holds the candidate against the contracts. A run-time is only held to what it offers: what it
/// refuses with null, and interfaces that it has no handler for, are no findings.
///
/// Each group of contracts is checked in a child process (`fork`), so crashes, hangs and corrupted
/// memory are findings like others. Nothing of the candidate is called in the caller's process,
/// which must have one thread only and no scene, command manager or selection that the candidate
/// should not meet.
///
/// Throws `std::system_error` when a process cannot be started.
[[nodiscard]] KIV_EXPORT Report check(const Candidate& candidate, const Options& options = {});

/// The report as text for a terminal: each finding with what is to be mended, then a summary.
[[nodiscard]] KIV_EXPORT std::string text(const Report& report);

/// The same as JSON: an object with `candidate`, `seed`, `passed` and `contracts`, each of them
/// with `id`, `statement`, `status` and `findings`.
[[nodiscard]] KIV_EXPORT std::string json(const Report& report);

/// The same as JUnit's XML: a test suite with a test case per contract.
[[nodiscard]] KIV_EXPORT std::string junit(const Report& report);

} // namespace Kiv_v4::conformance
