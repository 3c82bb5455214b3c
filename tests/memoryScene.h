#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "kiv/memory/runTime.h"
#include "kiv/pathString.h"
#include "kiv/scene.h"

namespace test {

/// A scene in memory whose changes the installed scene announces.
struct MemoryScene : testing::Test
{
    MemoryScene() { Kiv_v4::Scene::initializeInstance(std::make_shared<Kiv_v4::Scene>()); }
    ~MemoryScene() override { Kiv_v4::Scene::initializeInstance(nullptr); }

    [[nodiscard]] Kiv_v4::SceneItem::Ptr at(const std::string& path) const
    {
        return model.item(Kiv_v4::PathString::path(path));
    }

    Kiv_v4::memory::RunTime runTime;
    Kiv_v4::memory::DataModel& model = runTime.model();
    const Kiv_v4::SceneItem::Ptr world = model.item(model.root());
};

} // namespace test
