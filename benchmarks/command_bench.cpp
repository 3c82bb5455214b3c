#include <cstddef>
#include <cstdint>
#include <memory>

#ifdef KIV_BENCH_QT_GUI
#include <QtGui/QUndoStack>
#endif

#include "kiv/compositeUndoableCommand.h"

#include "rows.h"

namespace {

using namespace kivBench;

constexpr Size kCounts[] = {{"100 hot", 100}, {"10 k", 10'000}};

/// The counter that every command changes.
std::int64_t done = 0;

class Count : public Kiv_v4::UndoableCommand
{
public:
    void undo() override { --done; }
    void redo() override { ++done; }
};

class KivComposite
{
public:
    explicit KivComposite(std::size_t count)
    {
        for (; count > 0; --count) {
            _commands.append(std::make_shared<Count>());
        }
        _commands.execute();
    }

    void undo() { _commands.undo(); }
    void redo() { _commands.redo(); }

private:
    Kiv_v4::CompositeUndoableCommand _commands;
};

#ifdef KIV_BENCH_QT_GUI
class QtCount : public QUndoCommand
{
public:
    using QUndoCommand::QUndoCommand;

    void undo() override { --done; }
    void redo() override { ++done; }
};

/// One entry of the stack with a child per command: a macro.
class QtMacro
{
public:
    explicit QtMacro(std::size_t count)
    {
        auto* macro = new QUndoCommand;
        for (; count > 0; --count) {
            new QtCount(macro);
        }
        _stack.push(macro);
    }

    void undo() { _stack.undo(); }
    void redo() { _stack.redo(); }

private:
    QUndoStack _stack;
};
#endif

template <class Composite>
void addUndoAndRedo(const char* who)
{
    for (const auto& size : kCounts) {
        addRow("undo and redo, per command", size.name, who, [size](benchmark::State& state) {
            Composite composite(size.count);
            for (auto _ : state) {
                composite.undo();
                composite.redo();
                benchmark::DoNotOptimize(done);
            }
            state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(size.count));
        });
    }
}

[[maybe_unused]] const bool registered = [] {
    addUndoAndRedo<KivComposite>("kiv");
#ifdef KIV_BENCH_QT_GUI
    addUndoAndRedo<QtMacro>("QUndoStack");
#endif
    return true;
}();

} // namespace
