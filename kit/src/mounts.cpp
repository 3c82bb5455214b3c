#include "kiv/kit/mounts.h"

#include <stdexcept>
#include <utility>

#include "kiv/pathString.h"

#include "mountState.h"

namespace Kiv_v4::kit {

Mount::Mount() = default;

Mount::Mount(const Mount&) {}

Mount::~Mount() = default;

class MountTable::MountCommand : public UndoableCommand
{
public:
    MountCommand(std::shared_ptr<State> state, Mount::Ptr mount, Path gateway, std::string text)
        : _state(std::move(state)), _mount(std::move(mount)), _gateway(std::move(gateway)),
          _text(std::move(text))
    {}

    [[nodiscard]] std::string commandString() const override { return _text; }
    void redo() override { _state->add(_mount, _gateway); }
    void undo() override { _state->remove(*_mount); }

private:
    const std::shared_ptr<State> _state;
    const Mount::Ptr _mount;
    const Path _gateway;
    const std::string _text;
};

MountTable::MountTable(Rtid runTimeId, char separator)
    : _state(std::make_shared<State>(runTimeId, separator))
{
    GatewayFollower::add(_state);
}

MountTable::~MountTable()
{
    close();
}

void MountTable::close()
{
    _state->close();
}

Rtid MountTable::runTimeId() const noexcept
{
    return _state->runTimeId();
}

void MountTable::mount(const Mount::Ptr& mount, const Path& gateway)
{
    mountCmd(mount, gateway, {})->execute();
}

UndoableCommand::Ptr MountTable::mountCmd(const Mount::Ptr& mount, const Path& gateway,
                                          const std::string& text)
{
    if (!mount) {
        throw std::invalid_argument("The mount for '" + PathString::string(gateway) + "' is null.");
    }
    return std::make_shared<MountCommand>(_state, mount, gateway, text);
}

bool MountTable::unmount(const Path& gateway)
{
    return _state->remove(gateway);
}

bool MountTable::move(const Path& gateway, const Path& newGateway)
{
    return _state->move(gateway, newGateway);
}

Mount::Ptr MountTable::find(const Path& gateway) const
{
    return _state->find(gateway);
}

Mount::Ptr MountTable::at(const Path& path) const
{
    return _state->at(path);
}

std::vector<Mount::Ptr> MountTable::shown() const
{
    return _state->shown();
}

} // namespace Kiv_v4::kit
