#include "mountCommands.h"

namespace Kiv_v4::document {

void GatewayCommand::redo()
{
    _model.setGateway(_item, _nested);
    try {
        if (_showing) {
            _showing->redo();
        }
    } catch (...) {
        _model.setGateway(_item, 0);
        throw;
    }
}

void GatewayCommand::undo()
{
    if (_showing) {
        _showing->undo();
    }
    _model.setGateway(_item, 0);
}

void MountCommand::execute()
{
    _creation->execute();
    follow();
}

void MountCommand::undo()
{
    _followed->undo();
    _creation->undo();
}

void MountCommand::redo()
{
    _creation->redo();
    follow();
}

void MountCommand::follow()
{
    try {
        if (!_followed) {
            _followed = _follow(sceneItem()->path());
        }
        _followed->redo();
    } catch (...) {
        _creation->undo();
        throw;
    }
}

} // namespace Kiv_v4::document
