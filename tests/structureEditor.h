#pragma once

#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "kiv/hierarchy.h"
#include "kiv/host/hostScene.h"
#include "kiv/host/undoHistory.h"
#include "kiv/memory/runTime.h"
#include "kiv/notificationGuard.h"
#include "kiv/sceneItemOps.h"
#include "kiv/undoableCommandGuard.h"

#include "nested.h"
#include "random.h"

namespace test {

/// A scene in memory, with another run-time's items under some items, edited at random in every way
/// that changes its structure.
class StructureEditor
{
public:
    explicit StructureEditor(Random& random) : _random(random)
    {
        Kiv_v4::UndoableCommandMgr::initializeInstance(history);
    }
    ~StructureEditor() { Kiv_v4::UndoableCommandMgr::initializeInstance(nullptr); }

    /// One edit, a batch of some, an undo or a redo.
    void step()
    {
        switch (_random.below(12)) {
        case 0:
            history->undo();
            break;
        case 1:
            history->redo();
            break;
        case 2: {
            const Kiv_v4::UndoableCommandGuard guard("batch");
            const Kiv_v4::NotificationGuard batch(Kiv_v4::Scene::instance());
            for (auto count = _random.below(8); count > 0; --count) {
                edit();
            }
            Kiv_v4::UndoableCommandGuard::setSuccess();
            break;
        }
        default:
            edit();
        }
    }

    /// All items of the run-time.
    [[nodiscard]] std::vector<Kiv_v4::SceneItem::Ptr> items() const
    {
        std::vector<Kiv_v4::SceneItem::Ptr> all{model.item(model.root())};
        for (std::size_t at = 0; at < all.size(); ++at) {
            for (const auto& child : Kiv_v4::Hierarchy::hierarchy(all[at])->children()) {
                if (child->runTimeId() == runTime.id()) {
                    all.push_back(child);
                }
            }
        }
        return all;
    }

    Kiv_v4::memory::RunTime runTime;
    Kiv_v4::memory::DataModel& model = runTime.model();
    const Nested nested;
    const std::shared_ptr<Kiv_v4::host::UndoHistory> history =
        std::make_shared<Kiv_v4::host::UndoHistory>();

private:
    static void execute(const Kiv_v4::UndoableCommand::Ptr& command)
    {
        if (command) {
            Kiv_v4::UndoableCommandMgr::instance().executeCmd(command);
        }
    }

    std::string name() { return std::string(1, static_cast<char>('a' + _random.below(6))); }

    /// The children that are not another run-time's, in random order.
    std::vector<Kiv_v4::SceneItem::Ptr> childrenOf(const Kiv_v4::SceneItem::Ptr& item)
    {
        std::vector<Kiv_v4::SceneItem::Ptr> children;
        for (const auto& child : Kiv_v4::Hierarchy::hierarchy(item)->children()) {
            if (child->runTimeId() == runTime.id()) {
                children.insert(children.begin() +
                                    static_cast<long>(_random.below(children.size() + 1)),
                                child);
            }
        }
        return children;
    }

    void edit()
    {
        const auto all = items();
        const auto& item = _random.of(all);
        const auto hierarchy = Kiv_v4::Hierarchy::hierarchy(item);
        const auto children = childrenOf(item);
        const auto child = children.empty() ? nullptr : children.front();
        switch (_random.below(all.size() > 60 ? 12 : 9)) {
        case 0:
        case 1:
        case 2:
            execute(hierarchy->createChildCmd("mesh", name()));
            break;
        case 3:
            execute(hierarchy->insertChildCmd(_random.of(all), child));
            break;
        case 4:
            execute(hierarchy->createGroupCmd(
                {children.begin(), children.begin() + static_cast<long>((children.size() + 1) / 2)},
                name()));
            break;
        case 5:
            execute(hierarchy->reorderCmd({children.begin(), children.end()}));
            break;
        case 6:
            execute(hierarchy->ungroupCmd());
            break;
        case 7:
            execute(Kiv_v4::SceneItemOps::sceneItemOps(item)->renameItemCmd(name()));
            break;
        case 8:
            model.setGateway(item->path(), model.gateway(item->path()) ? 0 : nested.id());
            break;
        default:
            execute(Kiv_v4::SceneItemOps::sceneItemOps(item)->deleteItemCmd());
        }
    }

    Random& _random;
};

} // namespace test
