#pragma once

#include <functional>
#include <string>
#include <utility>

#include "kiv/memory/dataModel.h"
#include "kiv/path.h"
#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4::document {

/// Makes an item a gateway and shows a file there. Undo makes the item an ordinary one again, so
/// that no parked mount comes back to its path when its creation is redone.
class GatewayCommand : public UndoableCommand
{
public:
    /// `showing` may be null, for a gateway that shows nothing yet.
    GatewayCommand(memory::DataModel& model, Path item, Rtid nested, Ptr showing)
        : _model(model), _item(std::move(item)), _nested(nested), _showing(std::move(showing))
    {}

    void redo() override;
    void undo() override;

private:
    memory::DataModel& _model;
    const Path _item;
    const Rtid _nested;
    const Ptr _showing;
};

/// Makes an item, then executes a command that is made for it.
class MountCommand : public SceneItemResultUndoableCommand
{
public:
    using Follow = std::function<UndoableCommand::Ptr(const Path& gateway)>;

    MountCommand(std::string name, Ptr creation, Follow follow)
        : _name(std::move(name)), _creation(std::move(creation)), _follow(std::move(follow))
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _creation->sceneItem(); }

    void execute() override;
    void undo() override;
    void redo() override;

private:
    void follow();

    const std::string _name;
    const Ptr _creation;
    const Follow _follow;
    UndoableCommand::Ptr _followed;
};

} // namespace Kiv_v4::document
