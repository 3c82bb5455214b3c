#include "mounting.h"

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"

#include "diagnostics.h"
#include "interrupts.h"
#include "progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// `PathString::path`, with the empty path for text that is no path.
Path parsed(const std::string& text)
{
    try {
        return PathString::path(text);
    } catch (const EmptyPathSegment&) {
    } catch (const InvalidPath&) {
    } catch (const InvalidPathComponentSeparator&) {
    }
    return {};
}

std::string gatewayName(const std::string& file)
{
    const auto name = std::filesystem::path(file).stem().string();
    return name.empty() ? "file" : name;
}

/// Does `work` with each of the subjects, complains of those with which it fails, and gives their
/// number.
template <class Work>
std::size_t failures(const std::vector<std::string>& subjects, Work work)
{
    std::size_t failed = 0;
    for (const auto& subject : subjects) {
        try {
            work(subject);
        } catch (const std::exception& error) {
            complain(subject, error.what());
            ++failed;
        }
    }
    return failed;
}

/// Makes an item a gateway and shows a file there. Undone, the item is an ordinary one again, so
/// that nothing else that was mounted at its path comes back when its creation is done again.
class GatewayCommand : public UndoableCommand
{
public:
    GatewayCommand(memory::DataModel& model, Path item, Rtid nested, Ptr showing)
        : _model(model), _item(std::move(item)), _nested(nested), _showing(std::move(showing))
    {}

    void redo() override
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

    void undo() override
    {
        if (_showing) {
            _showing->undo();
        }
        _model.setGateway(_item, 0);
    }

private:
    memory::DataModel& _model;
    const Path _item;
    const Rtid _nested;
    const Ptr _showing;
};

/// Makes an item, and lets a command that is made for it follow.
class MountCommand : public SceneItemResultUndoableCommand
{
public:
    using Follow = std::function<UndoableCommand::Ptr(const Path& gateway)>;

    MountCommand(std::string name, Ptr creation, Follow follow)
        : _name(std::move(name)), _creation(std::move(creation)), _follow(std::move(follow))
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _creation->sceneItem(); }

    void execute() override
    {
        _creation->execute();
        follow();
    }

    void undo() override
    {
        _followed->undo();
        _creation->undo();
    }

    void redo() override
    {
        _creation->redo();
        follow();
    }

private:
    void follow()
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

    const std::string _name;
    const Ptr _creation;
    const Follow _follow;
    UndoableCommand::Ptr _followed;
};

} // namespace

SceneItem::Ptr Mounting::root() const
{
    const auto& model = _memory.model();
    return model.item(model.root());
}

void Mounting::make(const std::string& typeAndPath)
{
    const auto colon = typeAndPath.find(':');
    const auto path = colon == std::string::npos ? Path() : parsed(typeAndPath.substr(colon + 1));
    if (colon == 0 || path.size() < 2) {
        throw std::invalid_argument("not of the form TYPE:PATH with PATH under /" +
                                    root()->nodeName());
    }
    auto& model = _memory.model();
    model.make(path.pop(), typeAndPath.substr(0, colon), path.back().string());
}

Path Mounting::mount(const std::string& file)
{
    const auto command = mountCmd(file, root(), {});
    command->execute();
    return command->sceneItem()->path();
}

SceneItemResultUndoableCommand::Ptr
Mounting::mountCmd(const std::string& file, const SceneItem::Ptr& parent, const std::string& name)
{
    const auto wanted = name.empty() ? gatewayName(file) : name;
    const auto creation = Hierarchy::hierarchy(parent)->createChildCmd("gateway", wanted);
    if (!creation) {
        throw std::runtime_error("nothing can be mounted under " +
                                 PathString::string(parent->path()));
    }
    return std::make_shared<MountCommand>(
        "mount " + file, creation,
        [this, content = read(file)](const Path& gateway) { return gatewayCmd(gateway, content); });
}

Mounting::File Mounting::read(const std::string& file) const
{
    ProgressLine line("reading " + file);
    return _files.read(file, [&line](float fraction) {
        line.show(fraction);
        endIfInterrupted();
    });
}

UndoableCommand::Ptr Mounting::gatewayCmd(const Path& item, const File& file)
{
    return std::make_shared<GatewayCommand>(model(), item, _files.id(),
                                            file ? _files.mountCmd(*file, item) : nullptr);
}

std::vector<UndoableCommand::Ptr> Mounting::copyMountsCmds(const SceneItem::Ptr& source,
                                                           const Path& copy)
{
    auto gateways = SceneSegmentHandler::findGatewayItems(source->path(), _files.id());
    if (isGateway(*source)) {
        gateways.append(source);
    }
    std::vector<UndoableCommand::Ptr> commands;
    for (const auto& gateway : gateways) {
        const auto& path = gateway->path();
        const auto target = path.reparent(source->path(), copy);
        commands.push_back(std::make_shared<GatewayCommand>(
            model(), target, _files.id(),
            mountedFile(path).empty() ? nullptr : _files.copyMountCmd(path, target)));
    }
    return commands;
}

std::vector<Mounting::Mount> Mounting::mounts() const
{
    std::vector<Mount> mounts;
    for (const auto& gateway : SceneSegmentHandler::findGatewayItems(root()->path(), _files.id())) {
        auto file = mountedFile(gateway->path());
        if (!file.empty()) {
            mounts.push_back({gateway->path(), std::move(file)});
        }
    }
    return mounts;
}

std::string Mounting::mountedFile(const Path& gateway) const
{
    return _files.file(gateway);
}

bool Mounting::isGateway(const SceneItem& item) const
{
    return isInMemory(item) && _files.id() != 0 && model().gateway(item.path()) == _files.id();
}

std::vector<EditedItem> Mounting::editedItems(const Path& gateway) const
{
    return _files.editedItems(gateway);
}

Path Mounting::pathInFile(const Path& gateway, const std::string& text) const
{
    return gateway + PathSegment(text, _files.id(), SceneFiles::separator());
}

SceneItem::Ptr Mounting::item(const std::string& text, const Path& gateway) const
{
    if (text.starts_with(memory::DataModel::kSeparator)) {
        if (const auto found = Hierarchy::createItem(parsed(text))) {
            return found;
        }
    }
    const auto separator = SceneFiles::separator();
    const auto segment = text.starts_with(separator) ? text : separator + text;
    return Hierarchy::createItem(
        parsed(PathString::string(gateway) + PathString::pathSegmentSeparator() + segment));
}

std::optional<std::string> Mounting::originalName(const SceneItem& item) const
{
    return _files.originalName(item);
}

std::size_t fill(Mounting& scene, const std::vector<std::string>& itemsToMake,
                 const std::vector<std::string>& files)
{
    return failures(itemsToMake, [&](const std::string& item) { scene.make(item); }) +
           failures(files, [&](const std::string& file) { scene.mount(file); });
}

} // namespace app
