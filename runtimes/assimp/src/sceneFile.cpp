#include "kiv/assimp/sceneFile.h"

#include "fileChecks.h"
#include "importing.h"
#include "largeStack.h"

namespace Kiv_v4::assimp {

namespace {

/// `text` with one space for each run of blanks, line breaks and other control characters, and none
/// at either end.
std::string oneLine(const std::string& text)
{
    std::string line;
    for (const auto c : text) {
        const auto isBlank = static_cast<unsigned char>(c) <= ' ' || c == 0x7F;
        if (!isBlank) {
            line += c;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

} // namespace

std::shared_ptr<const SceneFile> read(const std::string& file, const Progress& progress)
{
    requireReadable(file);
    requirePlausibleCounts(file);
    std::shared_ptr<const SceneFile> scene;
    runOnLargeStack([&](const Progress& ask) { scene = importedFile(file, ask); },
                    progress ? progress : [](float) { return true; });
    return scene;
}

ImportError::ImportError(const std::string& file, const std::string& reason)
    : std::runtime_error(oneLine(file + ": " + reason)), _file(file), _reason(oneLine(reason))
{}

ImportError::~ImportError() = default;

} // namespace Kiv_v4::assimp
