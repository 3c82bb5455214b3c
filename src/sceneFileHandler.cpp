#include "kiv/sceneFileHandler.h"

#include <algorithm>
#include <stdexcept>

#include "kiv/path.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

namespace Kiv_v4 {

namespace {

char lowered(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool hasSuffix(const std::string& file, const std::string& suffix)
{
    return file.size() > suffix.size() &&
           std::equal(suffix.rbegin(), suffix.rend(), file.rbegin(),
                      [](char wanted, char letter) { return wanted == lowered(letter); });
}

} // namespace

SceneFileHandler::SceneFileHandler() = default;

SceneFileHandler::~SceneFileHandler() = default;

std::vector<Rtid> SceneFileHandler::runTimesFor(const std::string& file)
{
    const auto& runTimes = RunTimeMgr::instance();
    std::vector<Rtid> reading;
    for (const auto id : runTimes.getIds()) {
        const auto handler = runTimes.sceneFileHandler(id);
        const auto suffixes = handler ? handler->suffixes() : std::vector<std::string>();
        if (std::any_of(suffixes.begin(), suffixes.end(),
                        [&](const std::string& suffix) { return hasSuffix(file, suffix); })) {
            reading.push_back(id);
        }
    }
    return reading;
}

UndoableCommand::Ptr SceneFileHandler::copyMountCmd(const Path& source, const Path& gateway)
{
    const auto shown = file(source);
    if (shown.empty()) {
        throw std::invalid_argument("no file is mounted under '" + PathString::string(source) +
                                    "'.");
    }
    return read(shown, {})(gateway);
}

} // namespace Kiv_v4
