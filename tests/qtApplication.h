#pragma once

#include <QApplication>
#include <gtest/gtest.h>
#include <memory>

#include "kiv/globalSelection.h"
#include "kiv/host/hostScene.h"
#include "kiv/host/undoHistory.h"
#include "kiv/observableSelection.h"
#include "kiv/scene.h"
#include "kiv/undoableCommandMgr.h"

namespace test {

/// The application, without a screen, for as long as the tests run: Qt wants it gone before `main`
/// returns.
class ApplicationEnvironment : public testing::Environment
{
public:
    void SetUp() override
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        _application = std::make_unique<QApplication>(_count, _arguments);
    }
    void TearDown() override { _application.reset(); }

private:
    int _count = 1;
    char _name[5] = "test";
    char* _arguments[2] = {_name, nullptr};
    std::unique_ptr<QApplication> _application;
};

inline testing::Environment* const applicationEnvironment =
    testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

using QtApplication = testing::Test;

/// The installed objects of a host, for as long as it lives.
struct Host
{
    Host()
    {
        Kiv_v4::Scene::initializeInstance(scene);
        Kiv_v4::UndoableCommandMgr::initializeInstance(history);
        Kiv_v4::GlobalSelection::initializeInstance(selection);
        scene->follow(selection, Kiv_v4::host::HostScene::Gone::ComesBack);
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host()
    {
        history->clear();
        Kiv_v4::GlobalSelection::initializeInstance(nullptr);
        Kiv_v4::UndoableCommandMgr::initializeInstance(nullptr);
        Kiv_v4::Scene::initializeInstance(nullptr);
    }

    const std::shared_ptr<Kiv_v4::host::HostScene> scene =
        std::make_shared<Kiv_v4::host::HostScene>();
    const std::shared_ptr<Kiv_v4::host::UndoHistory> history =
        std::make_shared<Kiv_v4::host::UndoHistory>();
    const std::shared_ptr<Kiv_v4::ObservableSelection> selection =
        std::make_shared<Kiv_v4::ObservableSelection>();
};

} // namespace test
