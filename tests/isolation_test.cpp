#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "kiv/document/workspace.h"
#include "kiv/hierarchy.h"
#include "kiv/runTimeMgr.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/sceneFileHandler.h"

namespace {

using namespace Kiv_v4;
using testing::AnyOf;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

/// A reader that does what the file asks for.
class HostileReader : public SceneFileHandler
{
public:
    [[nodiscard]] std::vector<std::string> suffixes() const override { return {".hostile"}; }

    [[nodiscard]] Mounting read(const std::string& file, const Progress& progress) override
    {
        ++nbReads;
        std::ifstream stream(file);
        std::string wish;
        stream >> wish;
        progress(0.5F);
        if (wish == "crash") {
            std::abort();
        } else if (wish == "exit") {
            std::_Exit(7);
        } else if (wish == "sleep") {
            std::this_thread::sleep_for(std::chrono::hours(1));
        } else if (wish == "spin") {
            for (volatile auto forEver = true; forEver;) {
            }
        } else if (wish == "eat") {
            eat();
        } else if (wish == "refuse") {
            throw std::runtime_error("line 1: a word is missing");
        }
        return [](const Path&) { return nullptr; };
    }

    [[nodiscard]] std::string file(const Path&) const override { return {}; }

    int nbReads = 0; ///< In this process.

private:
    static void eat()
    {
        std::vector<std::string> eaten;
        for (;;) {
            eaten.emplace_back(1U << 24U, 'x');
        }
    }
};

class IsolatedReading : public testing::Test
{
protected:
    IsolatedReading()
    {
        fs::create_directories(folder);
        RunTimeMgr::instance().setSceneFileHandler(runTime.id(), reader);
        scene.setIsolation(document::Isolation{std::chrono::seconds(1), std::size_t{1} << 28U});
    }
    ~IsolatedReading() override { fs::remove_all(folder); }

    std::string fileThatWishes(const std::string& wish) const
    {
        const auto file = (folder / (wish + ".hostile")).string();
        std::ofstream(file) << wish;
        return file;
    }

    std::string troubleWith(const std::string& file)
    {
        try {
            static_cast<void>(scene.read(file));
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "";
    }

    const fs::path folder =
        fs::path(testing::TempDir()) / ("kiv_isolation_test_" + std::to_string(::getpid()));
    const std::shared_ptr<HostileReader> reader = std::make_shared<HostileReader>();
    document::Workspace scene;
    RunTimeRegistration runTime{"hostile", '/'};
};

TEST_F(IsolatedReading, ReportsWhatWouldHaveEndedTheHost)
{
    EXPECT_THAT(troubleWith(fileThatWishes("crash")), StartsWith("reading crashes: "));
    EXPECT_EQ(troubleWith(fileThatWishes("exit")), "reading ends the process with code 7");
    EXPECT_EQ(troubleWith(fileThatWishes("sleep")), "reading takes more than 1 s");
    EXPECT_EQ(troubleWith(fileThatWishes("spin")), "reading takes more than 1 s");
    EXPECT_EQ(troubleWith(fileThatWishes("refuse")), "line 1: a word is missing");
    EXPECT_THAT(troubleWith(fileThatWishes("eat")), // sanitizers end the process themselves
                AnyOf("reading takes more than 256 MB of memory", StartsWith("reading ")));
    EXPECT_EQ(reader->nbReads, 0) << "the host reads nothing that the child could not";
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
    EXPECT_EQ(Hierarchy::hierarchy(scene.root())->children().size(), 0u);
}

TEST_F(IsolatedReading, ReadsWhatTheChildCouldRead)
{
    std::vector<float> fractions;
    scene.setProgress([&](const std::string&, float fraction) { fractions.push_back(fraction); });
    EXPECT_EQ(troubleWith(fileThatWishes("peace")), "");
    EXPECT_EQ(reader->nbReads, 1);
    EXPECT_TRUE(std::is_sorted(fractions.begin(), fractions.end()));
    EXPECT_EQ(fractions.back(), 1);
    scene.mount(KIV_EXAMPLES "/workshop.gltf");
    EXPECT_EQ(Hierarchy::hierarchy(scene.root())->children().size(), 1u);
    scene.setIsolation(std::nullopt);
    EXPECT_EQ(troubleWith(fileThatWishes("refuse")), "line 1: a word is missing");
    EXPECT_EQ(reader->nbReads, 2);
}

TEST_F(IsolatedReading, IsCancelledByTheProgressFunction)
{
    scene.setIsolation(document::Isolation{});
    scene.setProgress([](const std::string&, float fraction) {
        if (fraction > 0.2F && fraction < 1) {
            throw document::Cancelled("no more");
        }
    });
    EXPECT_THROW(static_cast<void>(scene.read(fileThatWishes("sleep"))), document::Cancelled);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
}

} // namespace
