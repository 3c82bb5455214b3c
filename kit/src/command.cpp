#include "kiv/kit/command.h"

#include <utility>

namespace Kiv_v4::kit {

namespace {

using Function = std::function<void()>;

template <class Base>
class FunctionCommand : public Base
{
public:
    FunctionCommand(std::string text, Function redo, Function undo, Function announce)
        : _text(std::move(text)), _redo(std::move(redo)), _undo(std::move(undo)),
          _announce(std::move(announce))
    {}

    [[nodiscard]] std::string commandString() const override { return _text; }
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
            _announce();
        }
    }

    const std::string _text;
    const Function _redo;
    const Function _undo;
    const Function _announce;
    bool _hasRun = false;
};

class ItemFunctionCommand : public FunctionCommand<SceneItemResultUndoableCommand>
{
public:
    ItemFunctionCommand(std::string text, Function redo, Function undo, Function announce,
                        std::function<SceneItem::Ptr()> item)
        : FunctionCommand(std::move(text), std::move(redo), std::move(undo), std::move(announce)),
          _item(std::move(item))
    {}

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return hasRun() ? _item() : nullptr; }

private:
    const std::function<SceneItem::Ptr()> _item;
};

} // namespace

UndoableCommand::Ptr command(std::string text, std::function<void()> redo,
                             std::function<void()> undo, std::function<void()> announce)
{
    return std::make_shared<FunctionCommand<UndoableCommand>>(std::move(text), std::move(redo),
                                                              std::move(undo), std::move(announce));
}

SceneItemResultUndoableCommand::Ptr itemCommand(std::string text, std::function<void()> redo,
                                                std::function<void()> undo,
                                                std::function<SceneItem::Ptr()> item,
                                                std::function<void()> announce)
{
    return std::make_shared<ItemFunctionCommand>(std::move(text), std::move(redo), std::move(undo),
                                                 std::move(announce), std::move(item));
}

} // namespace Kiv_v4::kit
