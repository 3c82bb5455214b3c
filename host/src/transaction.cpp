#include "kiv/host/transaction.h"

#include <exception>
#include <stdexcept>
#include <typeinfo>
#include <utility>

#include "kiv/log.h"
#include "kiv/undoableCommandMgr.h"

#include "executedCommands.h"
#include "scopedFlag.h"

namespace Kiv_v4::host {

using detail::ExecutedCommands;
using detail::ScopedFlag;

namespace {

void logUndoFailure(const std::string& name, const char* reason) noexcept
{
    try {
        log("rollBack", "host/src/transaction", __LINE__,
            name + " cannot be taken back: " + reason + "\n");
    } catch (...) {
        // There is no memory for the message.
    }
}

void undo(const std::string& name, UndoableCommand& command) noexcept
{
    try {
        command.undo();
    } catch (const std::exception& error) {
        logUndoFailure(name, error.what());
    } catch (...) {
        logUndoFailure(name, "unknown exception");
    }
}

/// The commands of a plain composite; null for any other command.
const CompositeUndoableCommand::Commands* partsOf(const UndoableCommand& command)
{
    return typeid(command) == typeid(CompositeUndoableCommand)
               ? &static_cast<const CompositeUndoableCommand&>(command).cmdsList()
               : nullptr;
}

} // namespace

/// The open transactions of the process.
struct Transaction::Chain
{
    Transaction* innermost = nullptr; ///< Each refers to the one outside it.
    bool isHandingOver = false;       ///< Whether the outermost is passing its step to the manager.
};

Transaction::Transaction(std::string name)
    : _name(std::move(name)), _outer(std::exchange(chain().innermost, this))
{}

Transaction::~Transaction()
{
    rollBack();
}

void Transaction::run(const UndoableCommand::Ptr& command)
{
    requireOpen();
    if (!command) {
        throw std::runtime_error("the run-time refuses");
    }
    if (const auto* parts = partsOf(*command)) {
        for (const auto& part : *parts) {
            if (part) {
                run(part);
            }
        }
        return;
    }
    CompositeUndoableCommand::Commands entry{command}; // so that nothing can fail afterwards
    const auto isNested = _isRunning;
    {
        const ScopedFlag running(_isRunning);
        command->execute();
    }
    if (!isNested) {
        _done.splice(_done.end(), entry);
    }
}

void Transaction::commit()
{
    requireOpen();
    if (!_done.empty()) {
        const auto step = std::make_shared<ExecutedCommands>(_name, _done);
        if (_outer) {
            _outer->take(step);
        } else {
            // Executed, not registered: a command guard gathers only executed commands.
            const ScopedFlag handingOver(chain().isHandingOver);
            UndoableCommandMgr::instance().executeCmd(step);
        }
        _done.clear();
    }
    end();
}

void Transaction::rollBack() noexcept
{
    if (!_isOpen) {
        return;
    }
    {
        const ScopedFlag running(_isRunning);
        for (; !_done.empty(); _done.pop_back()) {
            undo(_name, *_done.back());
        }
    }
    end();
}

Transaction::Chain& Transaction::chain() noexcept
{
    static Chain open;
    return open;
}

/// The transaction to which commands passed to the manager belong; null if there is none.
Transaction* Transaction::receiver() noexcept
{
    return chain().isHandingOver ? nullptr : chain().innermost;
}

void Transaction::take(const UndoableCommand::Ptr& command)
{
    if (!_isRunning) {
        _done.push_back(command);
    }
}

void Transaction::requireOpen() const
{
    if (!_isOpen) {
        throw std::logic_error("The transaction '" + _name + "' has ended.");
    }
}

/// Leaves the chain of open transactions, in which it need not be the innermost: objects on the
/// heap may be destroyed in any order.
void Transaction::end() noexcept
{
    _isOpen = false;
    auto* link = &chain().innermost;
    while (*link && *link != this) {
        link = &(*link)->_outer;
    }
    if (*link) {
        *link = _outer;
    }
}

} // namespace Kiv_v4::host
