#include "cli/filling.h"

#include <stdexcept>

#include "kiv/host/itemLookup.h"

#include "terminal/diagnostics.h"
#include "terminal/progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// Does `work` with each of the subjects, complains of those with which it fails, and returns their
/// number.
template <class Work>
std::size_t failures(const std::vector<std::string>& subjects, Work work)
{
    std::size_t failed = 0;
    for (const auto& subject : subjects) {
        try {
            work(subject);
        } catch (const std::exception& error) {
            complain(subject, error.what());
            ++failed;
        }
    }
    return failed;
}

void make(document::Workspace& scene, const std::string& typeAndPath)
{
    const auto colon = typeAndPath.find(':');
    const auto path =
        colon == std::string::npos ? Path() : host::pathOf(typeAndPath.substr(colon + 1));
    if (colon == 0 || path.size() < 2) {
        throw std::invalid_argument("not of the form TYPE:PATH with PATH under /" +
                                    scene.root()->nodeName());
    }
    scene.model().make(path.pop(), typeAndPath.substr(0, colon), path.back().string());
}

} // namespace

std::size_t fill(document::Workspace& scene, const std::vector<std::string>& itemsToMake,
                 const std::vector<std::string>& files)
{
    showReading(scene);
    return failures(itemsToMake, [&](const std::string& item) { make(scene, item); }) +
           failures(files, [&](const std::string& file) { scene.mount(file); });
}

SceneItemList rootsOf(const document::Workspace& scene, const SceneItemList& topItems)
{
    auto roots = topItems;
    roots.push_front(scene.root());
    return roots;
}

} // namespace app
