#include "importing.h"

#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <iostream>
#include <string_view>

#include "classicNumbers.h"
#include "quietStreams.h"
#include "sceneNodes.h"

namespace Kiv_v4::assimp {

namespace {

constexpr auto kChecks = aiProcess_ValidateDataStructure;

/// Refuses a scene without usable meshes. Materials that look the same are not merged, since they
/// have names of their own.
constexpr auto kClean = aiProcess_FindInvalidData;

/// Reports the progress of reading, never decreasing and in the host's locale, and remembers a
/// cancellation.
class ProgressBridge : public Assimp::ProgressHandler
{
public:
    ProgressBridge(const Progress& progress, ClassicNumbers& numbers)
        : _progress(progress), _numbers(numbers)
    {}

    bool Update(float fraction) override
    {
        if (fraction > _fraction) { // unknown progress is negative
            _fraction = std::min(fraction, 1.0F);
        }
        if (!_isCancelled) {
            _numbers.pause();
            _isCancelled = !_progress(_fraction);
            _numbers.resume();
        }
        return !_isCancelled;
    }

    void advance(const std::string& file, float fraction)
    {
        if (!Update(fraction)) {
            throw ImportError(file, "cancelled");
        }
    }

private:
    const Progress& _progress;
    ClassicNumbers& _numbers;
    float _fraction = 0;
    bool _isCancelled = false;
};

void replaceAll(std::string& text, const std::string& what, const std::string& by)
{
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
}

/// The importer's message for an `ImportError`, without the file name, which the error adds.
std::string reason(const std::string& file, std::string message)
{
    if (message.starts_with("No suitable reader found")) {
        return "the file format is not known";
    }
    replaceAll(message, file + ":", "line ");
    for (const auto& mention : {" \"" + file + "\"", " " + file, file}) {
        replaceAll(message, mention, "");
    }
    return message.empty() ? "the importer gives no reason" : message;
}

/// Whether there is only a root that the importer named itself.
bool showsNothing(const aiScene& scene)
{
    const std::string_view root(scene.mRootNode->mName.data, scene.mRootNode->mName.length);
    const auto isEmpty = scene.mNumMeshes + scene.mNumCameras + scene.mNumLights == 0;
    return isEmpty && scene.mRootNode->mNumChildren == 0 &&
           (root.empty() || root == "ROOT" || root.starts_with('<'));
}

std::shared_ptr<const SceneFile> imported(const std::string& file, const Progress& progress)
{
    const QuietStream quietOut(std::cout);
    const QuietStream quietErr(std::cerr);
    const QuietStream quietLog(std::clog);
    ClassicNumbers numbers;
    Assimp::Importer importer;
    auto* bridge = new ProgressBridge(progress, numbers);
    importer.SetProgressHandler(bridge); // the importer owns it now

    // The importer checks the result of the bridge at few places only.
    bridge->advance(file, 0);
    importer.ReadFile(file, kChecks);
    bridge->advance(file, 0.5F);
    const auto* scene = importer.GetScene() ? importer.ApplyPostProcessing(kClean) : nullptr;
    bridge->advance(file, scene ? 1.0F : 0.5F);
    if (!scene || !scene->mRootNode) {
        throw ImportError(file, reason(file, importer.GetErrorString()));
    }
    if (showsNothing(*scene)) {
        throw ImportError(file, "it has nothing to show");
    }
    return std::make_shared<const SceneFile>(*scene, file);
}

} // namespace

std::shared_ptr<const SceneFile> importedFile(const std::string& file, const Progress& progress)
{
    try {
        return imported(file, progress);
    } catch (const ImportError&) {
        throw;
    } catch (const std::exception& thrown) {
        throw ImportError(file, reason(file, thrown.what()));
    } catch (...) {
        throw ImportError(file, reason(file, {}));
    }
}

} // namespace Kiv_v4::assimp
