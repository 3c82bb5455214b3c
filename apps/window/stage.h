#pragma once

#include <memory>
#include <string>

#include "kiv/document/workspace.h"
#include "kiv/host/hostScene.h"
#include "kiv/host/pluginLoader.h"
#include "kiv/host/runTimeWatch.h"
#include "kiv/host/undoHistory.h"
#include "kiv/observableSelection.h"

namespace window {

using namespace Kiv_v4;

/// What a host installs, and the scene that it works on.
class Stage
{
public:
    Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    /// Takes a scene without anything in it, as one that was saved.
    void clear();

    /// Opens a document in place of the scene, or mounts a scene file beside what is there. Returns
    /// whether it was a document. Throws what keeps it from being done.
    bool load(const std::string& file);

    // What is installed. The commands of a run-time that leaves go before it.
    const std::shared_ptr<host::HostScene> scene = std::make_shared<host::HostScene>();
    const std::shared_ptr<host::UndoHistory> history = std::make_shared<host::UndoHistory>();
    const std::shared_ptr<ObservableSelection> selection = std::make_shared<ObservableSelection>();

private:
    /// Installs for as long as it lives.
    struct Installed
    {
        explicit Installed(const Stage& stage);
        Installed(const Installed&) = delete;
        Installed& operator=(const Installed&) = delete;
        ~Installed();
    };

    const Installed _installed{*this};
    const host::RunTimeWatch _runTimes;

public:
    document::Workspace workspace;
    host::PluginLoader plugins;
};

} // namespace window
