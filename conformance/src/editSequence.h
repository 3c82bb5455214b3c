#pragma once

#include <memory>
#include <string>
#include <vector>

#include "checking.h"
#include "edits.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

class Following;

/// A long sequence of random edits, each of them executed, undone and redone, at the end all of
/// them undone and redone; the whole scene is compared each time.
class EditSequence
{
public:
    /// The contract of a finding.
    struct Contracts
    {
        const char* failing;
        const char* undo;
        const char* redo;
    };

    /// `following` follows the scene; null if notifications are not checked.
    EditSequence(Checking& checking, const Contracts& contracts,
                 std::shared_ptr<Following> following)
        : _checking(checking), _contracts(contracts), _following(std::move(following))
    {}

    void run();

private:
    struct Done
    {
        Edit edit;
        Snapshot before;
        Snapshot after;
    };

    [[nodiscard]] bool step(unsigned number);
    [[nodiscard]] bool undo(const Done& done, const std::string& when);
    [[nodiscard]] bool redo(const Done& done, const std::string& when);
    [[nodiscard]] bool undoAndRedoAll();

    /// Runs the command and compares. Returns false if the sequence cannot continue.
    template <class Run>
    [[nodiscard]] bool runAndCompare(const char* contract, const std::string& doing,
                                     const Done& done, const Snapshot& from, const Snapshot& to,
                                     Run run);

    [[nodiscard]] Snapshot now();
    void expectNotifications(const Snapshot& before);
    void compareNotifications(const Snapshot& before, const Snapshot& after);
    void beginAnew();

    Checking& _checking;
    const Contracts _contracts;
    const std::shared_ptr<Following> _following;
    std::vector<Done> _done;
};

} // namespace Kiv_v4::conformance
