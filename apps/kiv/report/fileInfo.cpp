#include "report/fileInfo.h"

#include <chrono>
#include <set>

#include "kiv/attributeVariant.h"
#include "kiv/attributes.h"
#include "kiv/document/workspace.h"
#include "kiv/hierarchy.h"
#include "kiv/host/matrix.h"
#include "kiv/host/outline.h"

namespace app {

using namespace Kiv_v4;

namespace {

constexpr std::string_view kFact = "file.";

/// Takes `prefix` off the beginning of the text; false when it does not begin so.
bool dropBeginning(std::string& text, std::string_view prefix)
{
    const auto found = text.starts_with(prefix);
    if (found) {
        text.erase(0, prefix.size());
    }
    return found;
}

/// What is told of a file by the attributes of its root.
class Facts
{
public:
    explicit Facts(Json& info) : _info(info) {}

    void add(std::string name, const AttributeVariant& value)
    {
        if (const auto* file = std::get_if<FilenameValue>(&value)) {
            (name.starts_with("missing") ? _missing : _textures).push_back(file->text);
        } else if (dropBeginning(name, "animation.")) {
            _lengths.push_back({{"name", name}, {"seconds", json(value)}});
            _seconds += std::get<double>(value);
        } else if (dropBeginning(name, "metadata.")) {
            _metadata[name] = json(value);
        } else {
            _info[name] = json(value);
        }
    }

    void end()
    {
        _info["animationSeconds"] = _seconds;
        _info["animationLengths"] = std::move(_lengths);
        const std::set<std::string> missing(_missing.begin(), _missing.end());
        auto& files = _info["textureFiles"] = Json::array();
        for (const auto& file : _textures) {
            files.push_back({{"file", file}, {"isMissing", missing.contains(file)}});
        }
        _info["metadata"] = std::move(_metadata);
    }

private:
    Json& _info;
    std::vector<std::string> _textures;
    std::vector<std::string> _missing;
    Json _lengths = Json::array();
    Json _metadata = Json::object();
    double _seconds = 0;
};

void addFacts(Json& info, const SceneItem::Ptr& root)
{
    Facts facts(info);
    const auto attributes = Attributes::attributes(root);
    for (auto name : attributes ? attributes->attributeNames() : std::vector<std::string>()) {
        const auto attribute = attributes->attribute(name);
        if (attribute && dropBeginning(name, kFact)) {
            facts.add(name, value(*attribute));
        }
    }
    facts.end();
}

void addTree(Json& info, const SceneItem::Ptr& root)
{
    ProgressLine progress("listing items");
    const auto counts = host::countsOf(host::outline(root, {}, progress.counter()));
    info["items"] = counts.items;
    info["types"] = counts.nodeTypes;
    info["depth"] = counts.depth;
    info["breadth"] = counts.breadth;
}

void addBox(Json& info, const SceneItem::Ptr& root)
{
    info["worldBox"] = nullptr;
    info["size"] = nullptr;
    const auto box = host::worldBox(root);
    if (!box || box->empty()) {
        return;
    }
    info["worldBox"] = {{"min", json(box->min)}, {"max", json(box->max)}};
    info["size"] = Json::array();
    for (std::size_t i = 0; i < 3; ++i) {
        info["size"].push_back(box->max.vector[i] - box->min.vector[i]);
    }
}

} // namespace

Json fileInfo(const std::string& file, const std::optional<document::Isolation>& isolation,
              ReadingProgress& progress)
{
    using Clock = std::chrono::steady_clock;
    document::Workspace scene;
    progress.showNext(scene);
    scene.setIsolation(isolation);
    const auto before = Clock::now();
    const auto gateway = scene.mount(file);
    const std::chrono::duration<double> duration = Clock::now() - before;
    const auto root = Hierarchy::hierarchy(Hierarchy::createItem(gateway))->children().front();
    Json info{{"file", file}};
    addFacts(info, root);
    addTree(info, root);
    addBox(info, root);
    info["seconds"] = duration.count();
    return info;
}

} // namespace app
