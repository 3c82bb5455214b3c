#include "itemOps.h"

#include <utility>

#include "commands.h"

namespace {

class EntryOps : public Kiv::SceneItemOps
{
public:
    EntryOps(EntriesPtr entries, Kiv::SceneItem::Ptr item)
        : _entries(std::move(entries)), _item(std::move(item))
    {}

    void setItem(Kiv::SceneItem::Ptr const& item) override { _item = item; }
    [[nodiscard]] Kiv::SceneItem::Ptr sceneItem() const override { return _item; }
    [[nodiscard]] Kiv::Path path() const override { return _item ? _item->path() : Kiv::Path(); }

    [[nodiscard]] Kiv::UndoableCommand::Ptr deleteItemCmd() override
    {
        return isEditable() ? removeCmd(_entries, path()) : nullptr;
    }

    bool deleteItem() override { return executed(deleteItemCmd()); }

    [[nodiscard]] Kiv::SceneItemResultUndoableCommand::Ptr duplicateItemCmd() override
    {
        if (!isEditable()) {
            return nullptr;
        }
        return addCmd(_entries, path().pop(),
                      [entries = _entries, source = path()] { return entries->existing(source); });
    }

    Kiv::Duplicate duplicateItem() override
    {
        const auto command = duplicateItemCmd();
        return executed(command) ? Kiv::Duplicate(command->sceneItem(), command) : Kiv::Duplicate();
    }

    [[nodiscard]] Kiv::PathComponent validName(Kiv::PathComponent const& name) const override
    {
        if (!isEditable()) {
            return {};
        }
        return freeName(_entries->existing(path().pop()), name.string(), _entries->find(path()));
    }

    [[nodiscard]] Kiv::SceneItemResultUndoableCommand::Ptr
    renameItemCmd(Kiv::PathComponent const& newName) override
    {
        return isEditable() ? renameCmd(_entries, path(), newName.string()) : nullptr;
    }

    Kiv::Rename renameItem(Kiv::PathComponent const& newName) override
    {
        const auto command = renameItemCmd(newName);
        return executed(command) ? Kiv::Rename(command->sceneItem(), command) : Kiv::Rename();
    }

private:
    /// The show itself stays as it is.
    [[nodiscard]] bool isEditable() const
    {
        return _entries->find(path()) && path() != _entries->rootPath();
    }

    static bool executed(const Kiv::UndoableCommand::Ptr& command)
    {
        if (command) {
            command->execute();
        }
        return command != nullptr;
    }

    const EntriesPtr _entries;
    Kiv::SceneItem::Ptr _item;
};

class EntryOpsHandler : public Kiv::SceneItemOpsHandler
{
public:
    explicit EntryOpsHandler(EntriesPtr entries) : _entries(std::move(entries)) {}

    [[nodiscard]] Kiv::SceneItemOps::Ptr sceneItemOps(Kiv::SceneItem::Ptr const& item) override
    {
        return std::make_shared<EntryOps>(_entries, item);
    }

private:
    const EntriesPtr _entries;
};

} // namespace

Kiv::SceneItemOpsHandler::Ptr makeSceneItemOpsHandler(const EntriesPtr& entries)
{
    return std::make_shared<EntryOpsHandler>(entries);
}
