#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kiv/attribute.h"
#include "kiv/attributes.h"
#include "kiv/compositeUndoableCommand.h"
#include "kiv/globalSelection.h"
#include "kiv/hierarchy.h"
#include "kiv/host/undoHistory.h"
#include "kiv/memory/runTime.h"
#include "kiv/scene.h"
#include "kiv/sceneItemOps.h"
#include "kiv/selectionCommands.h"
#include "kiv/transform3d.h"
#include "kiv/undoableCommandGuard.h"

#include "items.h"
#include "require.h"

namespace test {

using namespace Kiv_v4;

/// Everything that undo of a `RandomEditor`'s commands must restore: items with their types, order,
/// places and attributes, and the global selection.
inline std::vector<std::string> sceneState(const SceneItem::Ptr& world)
{
    const auto items = allUnder(world);
    auto texts = pathsOf(items);
    for (const auto& item : items) {
        const auto place = Transform3d::transform3d(item)->translation();
        texts.push_back(item->nodeType() + " at " + std::to_string(place.x()));
        const auto attributes = Attributes::attributes(item);
        for (const auto& name : attributes->attributeNames()) {
            texts.push_back(name + "=" + attributes->attribute(name)->string());
        }
    }
    const auto selected = pathsOf(*GlobalSelection::get());
    texts.insert(texts.end(), selected.begin(), selected.end());
    return texts;
}

/// Executes `command` through the installed manager; false if it is null.
inline bool execute(const UndoableCommand::Ptr& command)
{
    if (command) {
        UndoableCommandMgr::instance().executeCmd(command);
    }
    return command != nullptr;
}

/// Makes one edit of any kind through the library's interfaces.
class RandomEditor
{
public:
    /// Returns a number from 0 up to, but not including, its argument.
    using Pick = std::function<std::size_t(std::size_t)>;

    RandomEditor(memory::DataModel& model, Pick pick) : _model(model), _pick(std::move(pick)) {}

    /// The next command, to be executed at once; possibly null.
    UndoableCommand::Ptr command()
    {
        const auto item = any();
        const auto hierarchy = Hierarchy::hierarchy(item);
        const auto ops = SceneItemOps::sceneItemOps(item);
        switch (_pick(15)) {
        case 0:
        case 1:
        case 2:
            return hierarchy->createChildCmd(_pick(2) ? "mesh" : "group", name());
        case 3:
            return hierarchy->insertChildCmd(any(), oneOf(hierarchy->children()));
        case 4:
            return hierarchy->createGroupCmd(some(hierarchy->children()), name());
        case 5:
            return hierarchy->reorderCmd(shuffled(hierarchy->children()));
        case 6:
            return hierarchy->ungroupCmd();
        case 7:
            return _pick(2) ? ops->deleteItemCmd() : nullptr;
        case 8:
            return _model.size() < 60 ? ops->duplicateItemCmd() : nullptr;
        case 9:
        case 10:
            return ops->renameItemCmd(name());
        case 11:
            return Transform3d::transform3d(item)->translateCmd(number(), 0, 0);
        case 12:
        case 13:
            return attributeCommand(item);
        default:
            return selectionCommand();
        }
    }

private:
    UndoableCommand::Ptr attributeCommand(const SceneItem::Ptr& item)
    {
        const auto attributes = Attributes::attributes(item);
        const auto wanted = name().string();
        const auto found = std::dynamic_pointer_cast<AttributeInt>(attributes->attribute(wanted));
        if (!found) {
            return attributes->addAttributeCmd(Attribute::kInt, wanted);
        }
        return _pick(2) ? attributes->renameAttributeCmd(wanted, name().string())
                        : found->setCmd(static_cast<int>(number()));
    }

    /// A change of the global selection; none while it holds deleted items, since those cannot be
    /// restored.
    UndoableCommand::Ptr selectionCommand()
    {
        const auto& selection = GlobalSelection::get();
        const auto item = any();
        if (std::any_of(selection->begin(), selection->end(),
                        [this](const auto& selected) { return !_model.item(selected->path()); })) {
            return nullptr;
        }
        if (!selection->contains(item->path())) {
            return std::make_shared<SelectionAppendItem>(selection, item);
        }
        Selection replacement;
        replacement.append(item);
        if (_pick(2)) {
            return std::make_shared<SelectionClear>(selection);
        }
        return std::make_shared<SelectionReplaceWith>(selection, replacement);
    }

    SceneItem::Ptr any() { return oneOf(allUnder(_model.item(_model.root()))); }

    PathComponent name() { return std::string(1, static_cast<char>('a' + _pick(4))); }

    double number() { return static_cast<double>(_pick(9)); }

    template <class Items>
    SceneItem::Ptr oneOf(const Items& items)
    {
        return items.empty() ? nullptr
                             : *std::next(items.begin(), static_cast<long>(_pick(items.size())));
    }

    SceneItemList some(SceneItemList items)
    {
        items.remove_if([this](const auto&) { return _pick(2) == 0; });
        return items;
    }

    SceneItemList shuffled(const SceneItemList& items)
    {
        std::vector<SceneItem::Ptr> order(items.begin(), items.end());
        for (auto left = order.size(); left > 1; --left) {
            std::swap(order[left - 1], order[_pick(left)]);
        }
        return {order.begin(), order.end()};
    }

    memory::DataModel& _model;
    const Pick _pick;
};

/// The command manager and the global selection of a process, for as long as it lives.
struct Services
{
    Services()
    {
        UndoableCommandMgr::initializeInstance(history);
        GlobalSelection::initializeInstance(std::make_shared<ObservableSelection>());
    }

    ~Services()
    {
        GlobalSelection::initializeInstance(nullptr);
        UndoableCommandMgr::initializeInstance(nullptr);
    }

    const std::shared_ptr<host::UndoHistory> history = std::make_shared<host::UndoHistory>(100000);
};

/// Edits of an in-memory scene, undone and redone at will, beside pictures of each state. `Numbers`
/// chooses them: `below(bound)` is a number from 0 up to, but not including, `bound`.
template <class Numbers>
class ModelledHistory
{
public:
    explicit ModelledHistory(Numbers& numbers) : _numbers(numbers)
    {
        Scene::initializeInstance(std::make_shared<Scene>());
    }

    ~ModelledHistory() { Scene::initializeInstance(nullptr); }

    [[nodiscard]] SceneItem::Ptr world() const
    {
        return _runTime.model().item(_runTime.model().root());
    }

    void step()
    {
        switch (_numbers.below(10)) {
        case 0:
            undo();
            return;
        case 1:
            redo();
            return;
        case 2:
            editUnderAGuard(_numbers.below(4) != 0);
            break;
        default:
            execute(_editor.command());
        }
        const auto done = _services.history->nbDone();
        if (done > _nbDone) {
            _states.resize(done);
            _states.push_back(sceneState(world()));
        }
        compare();
    }

    bool undo()
    {
        const auto undone = _services.history->undo();
        require(undone == (_nbDone > 0), "undo tells whether it did");
        compare();
        return undone;
    }

    bool redo()
    {
        const auto redone = _services.history->redo();
        require(redone == (_nbDone + 1 < _states.size()), "redo tells whether it did");
        compare();
        return redone;
    }

private:
    /// A few edits, some in a guard of their own. The edits of a guard that fails are executed but
    /// not in the history, so they are undone by hand.
    void editUnderAGuard(bool succeeds)
    {
        CompositeUndoableCommand unregistered;
        {
            const UndoableCommandGuard outer("several");
            for (auto count = _numbers.below(4); count > 0; --count) {
                const UndoableCommandGuard inner("inner");
                const auto command = _editor.command();
                if (execute(command)) {
                    unregistered.append(command);
                }
                UndoableCommandGuard::setSuccess();
            }
            if (succeeds) {
                UndoableCommandGuard::setSuccess();
            }
        }
        if (!succeeds) {
            unregistered.undo();
        }
    }

    void compare()
    {
        _nbDone = _services.history->nbDone();
        require(sceneState(world()) == _states[_nbDone], "the scene is what it was");
    }

    Numbers& _numbers;
    const Services _services;
    const memory::RunTime _runTime;
    RandomEditor _editor{_runTime.model(), [this](auto bound) { return _numbers.below(bound); }};
    std::vector<std::vector<std::string>> _states{sceneState(world())};
    std::size_t _nbDone = 0;
};

} // namespace test
