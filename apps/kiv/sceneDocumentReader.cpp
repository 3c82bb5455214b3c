#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "kiv/attributes.h"
#include "kiv/connectionHandler.h"
#include "kiv/hierarchy.h"
#include "kiv/sceneItemOps.h"

#include "sceneDocumentFormat.h"
#include "sceneDocumentSteps.h"

namespace app {

using namespace Kiv_v4;

namespace {

namespace fs = std::filesystem;

/// What the document says of an item in memory.
struct ItemPlan
{
    std::string pointer;
    std::size_t parent = 0; ///< Its position in the document.
    std::string name;
    std::string type;
    Steps steps{};
    std::vector<std::size_t> materials{};
    std::set<std::string> attributes{}; ///< Their names.
};

/// An attribute at an end of a connection: the position of its item, and its name.
struct End
{
    std::size_t item;
    std::string attribute;
};

struct ConnectionPlan
{
    std::string pointer;
    End source;
    End destination;
};

struct Plan
{
    std::vector<ItemPlan> items; ///< The root first, parents before their children.
    std::vector<ConnectionPlan> connections;
};

/// Reads and checks a document as a whole.
class Reader
{
public:
    Reader(const Mounting& scene, const fs::path& folder, const OnMissing& onMissing)
        : _scene(scene), _folder(folder), _onMissing(onMissing)
    {}

    Plan read(const Json& json)
    {
        const JsonPlace document(json);
        requireFormat(json, document);
        const auto items = document.at("items").elements();
        for (const auto& item : items) {
            addItem(item);
        }
        if (items.empty()) {
            document.at("items").fail("has not even the root");
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
        Mounting::File file;
    };
    using SourcePtr = std::shared_ptr<Source>;

    struct FileEdit
    {
        std::string pointer;
        std::string item;
        Steps steps;
    };

    static void requireFormat(const Json& json, const JsonPlace& document)
    {
        if (!json.is_object() || !json.contains("format") || json["format"] != kFormat) {
            document.fail("is no scene document");
        }
        const auto version = document.at("version").as<int>();
        if (version > kVersion) {
            document.fail("is of version " + std::to_string(version) +
                          ", this program reads up to " + std::to_string(kVersion));
        }
        if (version < 1) {
            document.at("version").fail("is no version");
        }
        document.requireOnly({"format", "version", "items", "connections"});
    }

    void addItem(const JsonPlace& place)
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
            place.at("name").fail("is that of another child of the same item");
        }
        addSteps(item, place, isRoot);
        _plan.items.push_back(std::move(item));
    }

    /// The position of the item's parent: the last one before it that is one level higher.
    std::size_t parentOf(const JsonPlace& place)
    {
        const auto depth = place.at("depth");
        const auto level = static_cast<std::size_t>(depth.as<int>());
        const auto lowest = _lineage.empty() ? 0U : 1U;
        if (level < lowest || level > _lineage.size()) {
            depth.fail("is not between " + std::to_string(lowest) + " and " +
                       std::to_string(_lineage.size()));
        }
        _lineage.resize(level);
        const auto parent = _lineage.empty() ? 0 : _lineage.back();
        _lineage.push_back(_plan.items.size());
        return parent;
    }

    void requireRoot(const JsonPlace& place, const ItemPlan& item) const
    {
        const auto root = _scene.root();
        if (item.name != root->nodeName() || item.type != root->nodeType()) {
            place.fail("is not '" + root->nodeName() + "' of type '" + root->nodeType() +
                       "', the root of every scene");
        }
    }

    /// The root is there already: what the document does not tell of it is set back.
    void addSteps(ItemPlan& item, const JsonPlace& place, bool isRoot)
    {
        const auto add = [&](const char* key, auto makeStep) {
            const auto found = place.find(key);
            if constexpr (std::is_invocable_v<decltype(makeStep), const MaybePlace&>) {
                if (found || isRoot) {
                    item.steps.push_back(makeStep(found));
                }
            } else if (found) {
                item.steps.push_back(makeStep(*found));
            }
        };
        add("transform", &transformStep);
        add("camera", &cameraStep);
        add("light", &lightStep);
        add("visible", &visibilityStep);
        add("boundingBox", &boundingBoxStep);
        add("graphNode", &graphNodeStep);
        if (const auto attributes = place.find("attributes")) {
            for (const auto& attribute : attributes->elements()) {
                addAttribute(item, attribute);
            }
        }
        add("mount", [&](const JsonPlace& mount) {
            if (isRoot) {
                mount.fail("is of the root, where no file is mounted");
            }
            return mountStep(mount);
        });
    }

    static void addAttribute(ItemPlan& item, const JsonPlace& place)
    {
        const auto name = place.at("name");
        const auto inserted = item.attributes.insert(name.as<std::string>());
        if (!inserted.second) {
            name.fail("is that of another attribute of the item");
        }
        item.steps.push_back(attributeStep(place, *inserted.first));
    }

    Step mountStep(const JsonPlace& place)
    {
        place.requireOnly({"file", "edits"});
        const auto file = place.find("file");
        const auto source = file ? sourceOf(*file) : nullptr;
        std::vector<FileEdit> edits;
        if (const auto edited = place.find("edits")) {
            for (const auto& item : edited->elements()) {
                edits.push_back(fileEdit(item));
            }
        }
        return [source, edits, onMissing = _onMissing](const Target& target) {
            if (source && !source->file) {
                return; // missing, which was told of
            }
            const auto& gateway = target.item->path();
            target.edits.run(target.scene.gatewayCmd(gateway, source ? source->file : nullptr));
            for (const auto& edit : edits) {
                findAt(edit.pointer, onMissing, [&] { carryOut(edit, target, gateway); });
            }
        };
    }

    SourcePtr sourceOf(const JsonPlace& place)
    {
        const auto name = place.as<std::string>();
        if (name.empty()) {
            place.fail("is empty");
        }
        auto& source = _sources[(_folder / name).string()];
        if (!source) {
            source = std::make_shared<Source>(Source{place.pointer(), nullptr});
        }
        return source;
    }

    static FileEdit fileEdit(const JsonPlace& place)
    {
        place.requireOnly({"item", "transform", "camera", "light", "visible"});
        FileEdit edit{place.pointer(), place.at("item").as<std::string>(), {}};
        const auto add = [&](const char* key, auto makeStep) {
            if (const auto found = place.find(key)) {
                edit.steps.push_back(makeStep(*found));
            }
        };
        add("transform", &fileTransformStep);
        add("camera", &cameraStep);
        add("light", &lightStep);
        add("visible", &visibilityStep);
        return edit;
    }

    static void carryOut(const FileEdit& edit, const Target& target, const Path& gateway)
    {
        const auto item = Hierarchy::createItem(target.scene.pathInFile(gateway, edit.item));
        if (!item) {
            throw std::runtime_error("the file has no item '" + edit.item + "'");
        }
        for (const auto& step : edit.steps) {
            step({target.scene, target.edits, item});
        }
    }

    /// The position of the item that a path names.
    [[nodiscard]] std::size_t positionAt(const JsonPlace& place) const
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
            place.fail("'" + text + "' names no item of the document");
        }
        return position;
    }

    void addMaterials(ItemPlan& item, const JsonPlace& place) const
    {
        if (const auto materials = place.find("materials")) {
            for (const auto& material : materials->elements()) {
                item.materials.push_back(positionAt(material));
            }
        }
    }

    void addConnection(const JsonPlace& place)
    {
        place.requireOnly({"source", "destination"});
        _plan.connections.push_back(
            {place.pointer(), endAt(place.at("source")), endAt(place.at("destination"))});
    }

    [[nodiscard]] End endAt(const JsonPlace& place) const
    {
        place.requireOnly({"item", "attribute"});
        const auto name = place.at("attribute");
        End end{positionAt(place.at("item")), name.as<std::string>()};
        if (_plan.items[end.item].attributes.count(end.attribute) == 0) {
            name.fail("'" + end.attribute + "' is no attribute of the item");
        }
        return end;
    }

    void readFiles() const
    {
        for (const auto& [name, source] : _sources) {
            findAt(source->pointer + ": " + name, _onMissing,
                   [&, &file = name, &read = source->file] { read = _scene.read(file); });
        }
    }

    const Mounting& _scene;
    const fs::path& _folder;
    const OnMissing& _onMissing;
    Plan _plan;
    std::vector<std::size_t> _lineage; ///< The positions of the last item and its ancestors.
    std::map<std::pair<std::size_t, std::string>, std::size_t> _positions; ///< By parent and name.
    std::map<std::string, SourcePtr> _sources;                             ///< By file name.
};

/// Carries a plan out.
class Builder
{
public:
    Builder(Mounting& scene, Edits& edits) : _scene(scene), _edits(edits) {}

    void build(const Plan& plan)
    {
        clear();
        for (const auto& item : plan.items) {
            doAt(item.pointer, [&] { build(item); });
        }
        for (std::size_t i = 0; i < plan.items.size(); ++i) {
            doAt(plan.items[i].pointer, [&] { bindMaterials(plan.items[i], *_items[i]); });
        }
        for (const auto& connection : plan.connections) {
            doAt(connection.pointer, [&] { connect(connection); });
        }
    }

private:
    void clear()
    {
        const auto root = _scene.root();
        for (const auto& child : Hierarchy::hierarchy(root)->children()) {
            if (_scene.isInMemory(*child)) {
                _edits.run(SceneItemOps::sceneItemOps(child)->deleteItemCmd());
            }
        }
        const auto attributes = Attributes::attributes(root);
        for (const auto& name : attributes->attributeNames()) {
            _edits.run(attributes->removeAttributeCmd(name));
        }
    }

    void build(const ItemPlan& plan)
    {
        const auto item = _items.empty() ? _scene.root() : make(plan);
        _items.push_back(item);
        for (const auto& step : plan.steps) {
            step({_scene, _edits, item});
        }
    }

    SceneItem::Ptr make(const ItemPlan& plan)
    {
        const auto parent = Hierarchy::hierarchy(_items[plan.parent]);
        const auto item = _edits.runFor(parent->createChildCmd(plan.type, plan.name))->sceneItem();
        if (item->nodeName() != plan.name) {
            throw std::runtime_error("'" + plan.name + "' is no name for an item");
        }
        return item;
    }

    void bindMaterials(const ItemPlan& plan, const SceneItem& item)
    {
        std::vector<Path> materials;
        for (const auto position : plan.materials) {
            materials.push_back(_items[position]->path());
        }
        if (!materials.empty() || &item == _items.front().get()) {
            _edits.run(_scene.model().setMaterialsCmd(item.path(), materials));
        }
    }

    void connect(const ConnectionPlan& plan)
    {
        const auto attribute = [this](const End& end) {
            return Attributes::attributes(_items[end.item])->attribute(end.attribute);
        };
        const auto handler = ConnectionHandler::connectionHandler(_scene.root()->runTimeId());
        _edits.run(handler->connectCmd(attribute(plan.source), attribute(plan.destination)));
    }

    Mounting& _scene;
    Edits& _edits;
    std::vector<SceneItem::Ptr> _items; ///< In the order of the plan.
};

} // namespace

void openDocument(Mounting& scene, const std::string& text, const fs::path& folder, Edits& edits,
                  const OnMissing& onMissing)
{
    const auto plan = Reader(scene, folder, onMissing).read(parsedJson(text));
    Builder(scene, edits).build(plan);
}

} // namespace app
