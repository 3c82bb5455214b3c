#include "editSequence.h"

#include "following.h"
#include "probes.h"

namespace Kiv_v4::conformance {

namespace {

// After a finding the scene may be inconsistent: the sequence begins anew, but not for ever.
constexpr int kMaxBeginnings = 6;

} // namespace

void EditSequence::run()
{
    unsigned number = 0;
    for (int beginning = 0; beginning < kMaxBeginnings; ++beginning) {
        beginAnew();
        bool goesOn = true;
        while (goesOn && number < _checking.options().nbSteps) {
            goesOn = step(++number);
        }
        if (goesOn) {
            if (undoAndRedoAll()) {
                return;
            }
            number = _checking.options().nbSteps / 2;
        }
    }
}

void EditSequence::beginAnew()
{
    _done.clear();
    _checking.end();
    _checking.at("create", "making the run-time");
    static_cast<void>(_checking.running());
    if (_following) {
        _following->begin();
    }
}

Snapshot EditSequence::now()
{
    return snapshot(_checking.running().roots, _checking.options().maxItems);
}

void EditSequence::expectNotifications(const Snapshot& before)
{
    if (_following) {
        _following->expect(before);
    }
}

void EditSequence::compareNotifications(const Snapshot& before, const Snapshot& after)
{
    if (_following) {
        _following->compare(before, after);
    }
}

bool EditSequence::step(unsigned number)
{
    Done done{randomEdit(_checking), now(), {}};
    if (!done.edit.command) {
        return true; // nothing can be edited
    }
    const auto when = " (step " + std::to_string(number) + ')';
    const auto doing = "execute of " + done.edit.text + when;
    expectNotifications(done.before);
    _checking.at(_contracts.failing, doing, done.edit.item);
    std::string thrown;
    try {
        done.edit.command->execute();
    } catch (const std::exception& error) {
        thrown = error.what();
    }
    done.after = now();
    compareNotifications(done.before, done.after);
    if (!thrown.empty()) {
        if (const auto found = difference(done.before, done.after)) {
            _checking.found(_contracts.failing, found->item, found->expected,
                            found->seen + ", after the exception '" + thrown + '\'');
            return false;
        }
        return true;
    }
    const auto nbFindings = _checking.nbFindings();
    checkNames(_checking);
    if (!undo(done, when) || !redo(done, when) || _checking.nbFindings() > nbFindings) {
        return false;
    }
    _done.push_back(std::move(done));
    return true;
}

bool EditSequence::undo(const Done& done, const std::string& when)
{
    return runAndCompare(_contracts.undo, "undo of " + done.edit.text + when, done, done.after,
                         done.before, [&] { done.edit.command->undo(); });
}

bool EditSequence::redo(const Done& done, const std::string& when)
{
    return runAndCompare(_contracts.redo, "redo of " + done.edit.text + when, done, done.before,
                         done.after, [&] { done.edit.command->redo(); });
}

template <class Run>
bool EditSequence::runAndCompare(const char* contract, const std::string& doing, const Done& done,
                                 const Snapshot& from, const Snapshot& to, Run run)
{
    expectNotifications(from);
    _checking.at(contract, doing, done.edit.item);
    try {
        run();
    } catch (const std::exception& error) {
        compareNotifications(from, now());
        _checking.found("no exception", std::string("the exception '") + error.what() + '\'');
        return false;
    }
    const auto seen = now();
    compareNotifications(from, seen);
    if (const auto found = difference(to, seen)) {
        _checking.found(contract, found->item, found->expected, found->seen);
        return false;
    }
    return true;
}

bool EditSequence::undoAndRedoAll()
{
    for (auto done = _done.rbegin(); done != _done.rend(); ++done) {
        if (!undo(*done, " (undoing all)")) {
            return false;
        }
    }
    for (const auto& done : _done) {
        if (!redo(done, " (redoing all)")) {
            return false;
        }
    }
    return true;
}

} // namespace Kiv_v4::conformance
