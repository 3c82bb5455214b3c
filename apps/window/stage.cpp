#include "stage.h"

#include "kiv/document/sceneDocument.h"
#include "kiv/globalSelection.h"
#include "kiv/hierarchy.h"
#include "kiv/host/errorPrefix.h"
#include "kiv/host/transaction.h"
#include "kiv/scene.h"
#include "kiv/sceneItemOps.h"
#include "kiv/undoableCommandMgr.h"

namespace window {

namespace {

bool isDocument(const std::string& file)
{
    const std::string extension = ".json";
    return file.size() > extension.size() &&
           file.compare(file.size() - extension.size(), extension.size(), extension) == 0;
}

} // namespace

Stage::Installed::Installed(const Stage& stage)
{
    Scene::initializeInstance(stage.scene);
    UndoableCommandMgr::initializeInstance(stage.history);
    GlobalSelection::initializeInstance(stage.selection);
    stage.scene->follow(stage.selection, host::HostScene::Gone::ComesBack);
}

Stage::Installed::~Installed()
{
    GlobalSelection::initializeInstance(nullptr);
    UndoableCommandMgr::initializeInstance(nullptr);
    Scene::initializeInstance(nullptr);
}

Stage::Stage()
    : _runTimes([this](RunTimeEvent event, Rtid id) {
          if (event == RunTimeEvent::Leaving) {
              history->dropRunTime(id);
          }
      })
{
    plugins.onUnload([this](const host::Plugin& plugin) {
        for (const auto id : plugin.runTimes) {
            history->dropRunTime(id);
        }
        return std::vector<std::string>();
    });
}

Stage::~Stage()
{
    selection->clear();
    history->clear(); // its commands are the workspace's
}

void Stage::clear()
{
    selection->clear();
    host::Transaction edits("New scene");
    for (const auto& item : Hierarchy::hierarchy(workspace.root())->children()) {
        const auto operations = SceneItemOps::sceneItemOps(item);
        edits.run(operations ? operations->deleteItemCmd() : nullptr);
    }
    edits.commit();
    history->clear();
    history->setClean();
}

bool Stage::load(const std::string& file)
{
    if (!isDocument(file)) {
        host::Transaction edits("Mount " + file.substr(file.find_last_of('/') + 1));
        edits.run(host::prefixed<std::runtime_error, document::Cancelled>(
            file, [&] { return workspace.mountCmd(file, workspace.root(), ""); }));
        edits.commit();
        return false;
    }
    selection->clear();
    document::open(workspace, file);
    history->clear();
    history->setClean();
    return true;
}

} // namespace window
