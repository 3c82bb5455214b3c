#include <map>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "kiv/hierarchy.h"

#include "documentFormat.h"
#include "documentPlan.h"

namespace Kiv_v4::document {

namespace {

namespace fs = std::filesystem;

/// Reads and checks a document as a whole.
class Reader
{
public:
    Reader(const Workspace& scene, const fs::path& folder, const OnMissing& onMissing)
        : _scene(scene), _folder(folder), _onMissing(onMissing)
    {}

    Plan read(const Json& json)
    {
        const JsonCursor document(json);
        requireFormat(json, document);
        const auto items = document.at("items").elements();
        for (const auto& item : items) {
            addItem(item);
        }
        if (items.empty()) {
            document.at("items").fail("expected at least the root");
        }
        for (std::size_t i = 0; i < items.size(); ++i) {
            addMaterials(_plan.items[i], items[i]);
        }
        if (const auto connections = document.find("connections")) {
            for (const auto& connection : connections->elements()) {
                addConnection(connection);
            }
        }
        readFiles();
        return std::move(_plan);
    }

private:
    /// A scene file that is mounted, once or more.
    struct Source
    {
        std::string pointer;
        Workspace::File file;
    };
    using SourcePtr = std::shared_ptr<Source>;

    struct FileEdit
    {
        std::string pointer;
        std::string item;
        Steps steps;
    };

    static void requireFormat(const Json& json, const JsonCursor& document)
    {
        if (!json.is_object() || !json.contains("format") || json["format"] != kFormat) {
            document.fail("not a scene document");
        }
        const auto version = document.at("version").as<int>();
        if (version > kVersion) {
            document.fail("unknown version " + std::to_string(version) +
                          ", this program reads up to " + std::to_string(kVersion));
        }
        if (version < 1) {
            document.at("version").fail("not a version");
        }
        document.requireOnly({"format", "version", "items", "connections"});
    }

    void addItem(const JsonCursor& place)
    {
        place.requireOnly({"depth", "name", "type", "transform", "camera", "light", "visible",
                           "boundingBox", "materials", "graphNode", "attributes", "mount"});
        const auto isRoot = _plan.items.empty();
        ItemPlan item{place.pointer(), parentOf(place), place.at("name").as<std::string>(),
                      place.at("type").as<std::string>()};
        const auto index = _plan.items.size();
        if (isRoot) {
            requireRoot(place, item);
        } else if (!_positions.emplace(std::pair(item.parent, item.name), index).second) {
            place.at("name").fail("already the name of another child");
        }
        addSteps(item, place, isRoot);
        _plan.items.push_back(std::move(item));
    }

    /// The position of the item's parent: the last one before it that is one level higher.
    std::size_t parentOf(const JsonCursor& place)
    {
        const auto depth = place.at("depth");
        const auto level = static_cast<std::size_t>(depth.as<int>());
        const auto lowest = _lineage.empty() ? 0U : 1U;
        if (level < lowest || level > _lineage.size()) {
            depth.fail("not between " + std::to_string(lowest) + " and " +
                       std::to_string(_lineage.size()));
        }
        _lineage.resize(level);
        const auto parent = _lineage.empty() ? 0 : _lineage.back();
        _lineage.push_back(_plan.items.size());
        return parent;
    }

    void requireRoot(const JsonCursor& place, const ItemPlan& item) const
    {
        const auto root = _scene.root();
        if (item.name != root->nodeName() || item.type != root->nodeType()) {
            place.fail("expected '" + root->nodeName() + "' of type '" + root->nodeType() +
                       "', the root of every scene");
        }
    }

    /// The root already exists: properties that the document does not have are reset.
    void addSteps(ItemPlan& item, const JsonCursor& place, bool isRoot)
    {
        const auto add = [&](const char* key, auto makeStep) {
            const auto found = place.find(key);
            if constexpr (std::is_invocable_v<decltype(makeStep), const MaybeCursor&>) {
                if (found || isRoot) {
                    item.steps.push_back(makeStep(found));
                }
            } else if (found) {
                item.steps.push_back(makeStep(*found));
            }
        };

        if (isRoot) {
            item.steps.push_back(
                initialStep(place.find(host::kTransform), propertiesOf(host::kTransform)));
        }
        for (const auto* group :
             {host::kTransform, host::kCamera, host::kLight, host::kGraphNode}) {
            add(group, [group](const JsonCursor& found) {
                return propertiesStep(found, propertiesOf(group));
            });
        }
        add("visible", &visibilityStep);
        add("boundingBox", &boundingBoxStep);
        if (const auto attributes = place.find("attributes")) {
            for (const auto& attribute : attributes->elements()) {
                addAttribute(item, attribute);
            }
        }
        add("mount", [&](const JsonCursor& mount) {
            if (isRoot) {
                mount.fail("no file can be mounted at the root");
            }
            return mountStep(mount);
        });
    }

    static void addAttribute(ItemPlan& item, const JsonCursor& place)
    {
        const auto name = place.at("name");
        const auto inserted = item.attributes.insert(name.as<std::string>());
        if (!inserted.second) {
            name.fail("already the name of another attribute");
        }
        item.steps.push_back(attributeStep(place, *inserted.first));
    }

    Step mountStep(const JsonCursor& place)
    {
        place.requireOnly({"file", "runTime", "edits"});
        const auto file = place.find("file");
        const auto runTime = place.find("runTime");
        const auto source =
            file ? sourceOf(*file, runTime ? runTime->as<std::string>() : kUsualRunTime) : nullptr;
        std::vector<FileEdit> edits;
        if (const auto edited = place.find("edits")) {
            for (const auto& item : edited->elements()) {
                edits.push_back(fileEdit(item));
            }
        }
        return [source, edits, onMissing = _onMissing](const Target& target) {
            if (source && !source->file) {
                return; // missing, already reported
            }
            const auto& gateway = target.item->path();
            target.edits.run(target.scene.gatewayCmd(gateway, source ? source->file : nullptr));
            for (const auto& edit : edits) {
                findAt(edit.pointer, onMissing, [&] { carryOutEdit(edit, target, gateway); });
            }
        };
    }

    SourcePtr sourceOf(const JsonCursor& place, const std::string& runTime)
    {
        const auto name = place.as<std::string>();
        if (name.empty()) {
            place.fail("expected a file name");
        }
        auto& source = _sources[{(_folder / name).string(), runTime}];
        if (!source) {
            source = std::make_shared<Source>(Source{place.pointer(), nullptr});
        }
        return source;
    }

    static FileEdit fileEdit(const JsonCursor& place)
    {
        place.requireOnly({"item", "transform", "camera", "light", "visible"});
        FileEdit edit{place.pointer(), place.at("item").as<std::string>(), {}};
        const auto add = [&](const char* key, auto makeStep) {
            if (const auto found = place.find(key)) {
                edit.steps.push_back(makeStep(*found));
            }
        };
        add(host::kTransform, &fileTransformStep);
        for (const auto* group : {host::kCamera, host::kLight}) {
            add(group, [group](const JsonCursor& found) {
                return propertiesStep(found, propertiesOf(group));
            });
        }
        add("visible", &visibilityStep);
        return edit;
    }

    static void carryOutEdit(const FileEdit& edit, const Target& target, const Path& gateway)
    {
        const auto item = Hierarchy::createItem(target.scene.pathInFile(gateway, edit.item));
        if (!item) {
            throw std::runtime_error("no such item in the file: '" + edit.item + "'");
        }
        for (const auto& step : edit.steps) {
            step({target.scene, target.edits, item});
        }
    }

    /// The position of the item that a path names.
    [[nodiscard]] std::size_t positionAt(const JsonCursor& place) const
    {
        const auto text = place.as<std::string>();
        const PathSegment segment(text, 0, memory::DataModel::kSeparator);
        std::size_t position = 0;
        auto names = segment.begin();
        auto isThere = names != segment.end() && names->string() == _plan.items.front().name;
        while (isThere && ++names != segment.end()) {
            const auto child = _positions.find({position, names->string()});
            isThere = child != _positions.end();
            position = isThere ? child->second : position;
        }
        if (!isThere) {
            place.fail("no such item in the document: '" + text + "'");
        }
        return position;
    }

    void addMaterials(ItemPlan& item, const JsonCursor& place) const
    {
        if (const auto materials = place.find("materials")) {
            for (const auto& material : materials->elements()) {
                item.materials.push_back(positionAt(material));
            }
        }
    }

    void addConnection(const JsonCursor& place)
    {
        place.requireOnly({"source", "destination"});
        _plan.connections.push_back(
            {place.pointer(), endAt(place.at("source")), endAt(place.at("destination"))});
    }

    [[nodiscard]] End endAt(const JsonCursor& place) const
    {
        place.requireOnly({"item", "attribute"});
        const auto name = place.at("attribute");
        End end{positionAt(place.at("item")), name.as<std::string>()};
        if (_plan.items[end.item].attributes.count(end.attribute) == 0) {
            name.fail("no such attribute '" + end.attribute + "'");
        }
        return end;
    }

    void readFiles() const
    {
        for (const auto& [name, source] : _sources) {
            const auto& [file, runTime] = name;
            findAt(source->pointer + ": " + file, _onMissing,
                   [&, &file = file, &runTime = runTime, &read = source->file] {
                       read = _scene.read(file, runTime);
                   });
        }
    }

    const Workspace& _scene;
    const fs::path& _folder;
    const OnMissing& _onMissing;
    Plan _plan;
    std::vector<std::size_t> _lineage; ///< The positions of the last item and its ancestors.
    std::map<std::pair<std::size_t, std::string>, std::size_t> _positions; ///< By parent and name.
    std::map<std::pair<std::string, std::string>, SourcePtr> _sources; ///< By file and run-time.
};

} // namespace

Plan planOf(const Json& document, const Workspace& scene, const fs::path& folder,
            const OnMissing& onMissing)
{
    return Reader(scene, folder, onMissing).read(document);
}

} // namespace Kiv_v4::document
