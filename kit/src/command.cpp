#include "kiv/kit/command.h"

#include <utility>

#include "kiv/kit/announce.h"
#include "kiv/runTimeCommand.h"

namespace Kiv_v4::kit {

namespace {

using Function = std::function<void()>;

template <class Base>
class FunctionCommand : public Base, public RunTimeCommand
{
public:
    FunctionCommand(Rtid runTimeId, std::string text, Function redo, Function undo,
                    Function announce)
        : _runTimeId(runTimeId), _text(std::move(text)), _redo(std::move(redo)),
          _undo(std::move(undo)), _announce(std::move(announce))
    {}

    [[nodiscard]] std::string commandString() const override { return _text; }
    [[nodiscard]] bool belongsTo(Rtid runTimeId) const override { return runTimeId == _runTimeId; }
    void undo() override { run(_undo); }
    void redo() override { run(_redo); }

protected:
    [[nodiscard]] bool hasRun() const noexcept { return _hasRun; }

private:
    void run(const Function& function)
    {
        function();
        _hasRun = true;
        if (_announce) {
            announced(_announce);
        }
    }

    const Rtid _runTimeId;
    const std::string _text;
    const Function _redo;
    const Function _undo;
    const Function _announce;
    bool _hasRun = false;
};

class ItemFunctionCommand : public FunctionCommand<SceneItemResultUndoableCommand>
{
public:
    ItemFunctionCommand(Rtid runTimeId, std::string text, Function redo, Function undo,
                        Function announce, std::function<SceneItem::Ptr()> item)
        : FunctionCommand(runTimeId, std::move(text), std::move(redo), std::move(undo),
                          std::move(announce)),
          _item(std::move(item))
    {}

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return hasRun() ? _item() : nullptr; }

private:
    const std::function<SceneItem::Ptr()> _item;
};

} // namespace

UndoableCommand::Ptr command(Rtid runTimeId, std::string text, std::function<void()> redo,
                             std::function<void()> undo, std::function<void()> announce)
{
    return std::make_shared<FunctionCommand<UndoableCommand>>(
        runTimeId, std::move(text), std::move(redo), std::move(undo), std::move(announce));
}

SceneItemResultUndoableCommand::Ptr itemCommand(Rtid runTimeId, std::string text,
                                                std::function<void()> redo,
                                                std::function<void()> undo,
                                                std::function<SceneItem::Ptr()> item,
                                                std::function<void()> announce)
{
    return std::make_shared<ItemFunctionCommand>(runTimeId, std::move(text), std::move(redo),
                                                 std::move(undo), std::move(announce),
                                                 std::move(item));
}

} // namespace Kiv_v4::kit
