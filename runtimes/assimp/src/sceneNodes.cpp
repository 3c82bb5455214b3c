#include "sceneNodes.h"

#include <algorithm>
#include <assimp/scene.h>
#include <iterator>
#include <numeric>
#include <string_view>
#include <unordered_set>

#include "kiv/pathString.h"

#include "componentNames.h"

namespace Kiv_v4::assimp {

namespace {

/// The importer's nodes; their indices are those of the scene file's nodes.
using Sources = std::vector<const aiNode*>;

std::string_view text(const aiString& name)
{
    return {name.data, name.length};
}

bool isHelper(const aiNode& node)
{
    return text(node.mName).find("$AssimpFbx$") != std::string_view::npos;
}

/// Tells what hangs at a node. Cameras and lights are bound to nodes by name.
class NodeTypes
{
public:
    explicit NodeTypes(const aiScene& scene)
        : _cameras(names(scene.mCameras, scene.mNumCameras)),
          _lights(names(scene.mLights, scene.mNumLights))
    {}

    [[nodiscard]] NodeType of(const aiNode& node) const
    {
        if (node.mNumMeshes > 0) {
            return NodeType::mesh;
        }
        if (_cameras.count(text(node.mName)) != 0) {
            return NodeType::camera;
        }
        return _lights.count(text(node.mName)) != 0 ? NodeType::light : NodeType::transform;
    }

private:
    using Names = std::unordered_set<std::string_view>;

    template <class Object>
    static Names names(const Object* const* objects, unsigned count)
    {
        Names names;
        std::transform(objects, objects + count, std::inserter(names, names.end()),
                       [](const auto* object) { return text(object->mName); });
        return names;
    }

    const Names _cameras;
    const Names _lights;
};

/// The nodes under `root` and itself, level by level.
Sources levelByLevel(const aiNode* root)
{
    Sources nodes{root};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const auto* node = nodes[i];
        nodes.insert(nodes.end(), node->mChildren, node->mChildren + node->mNumChildren);
    }
    return nodes;
}

} // namespace

const char* nodeTypeName(NodeType type) noexcept
{
    switch (type) {
    case NodeType::mesh:
        return "mesh";
    case NodeType::camera:
        return "camera";
    case NodeType::light:
        return "light";
    case NodeType::transform:
        break;
    }
    return "transform";
}

SceneFile::SceneFile(const aiScene& scene)
{
    const auto sources = levelByLevel(scene.mRootNode);
    const NodeTypes types(scene);
    _nodes.resize(sources.size());
    for (std::size_t i = 0; i < sources.size(); ++i) {
        _nodes[i].nbChildren = sources[i]->mNumChildren;
        _nodes[i].type = types.of(*sources[i]);
        _nodes[i].isHelper = isHelper(*sources[i]);
    }
    connect();

    const ComponentNames names(PathString::pathSegmentSeparator());
    nameSiblings(names, sources.data(), kRoot, 1);
    for (const auto& node : _nodes) {
        nameSiblings(names, sources.data(), node.firstChild, node.nbChildren);
    }
    sortForFinding();
}

std::optional<NodeIndex> SceneFile::find(const PathSegment& segment) const
{
    if (segment.empty() || *segment.begin() != _nodes[kRoot].component) {
        return std::nullopt;
    }
    auto found = kRoot;
    for (auto component = segment.begin() + 1; component != segment.end(); ++component) {
        const auto next = child(_nodes[found], *component);
        if (!next) {
            return std::nullopt;
        }
        found = *next;
    }
    return found;
}

std::string SceneFile::originalName(NodeIndex index) const
{
    const auto changed = _originalNames.find(index);
    return changed == _originalNames.end() ? _nodes[index].component.string() : changed->second;
}

std::optional<NodeIndex> SceneFile::child(const Node& parent, const PathComponent& component) const
{
    const auto* first = _byComponent.data() + parent.firstChild;
    const auto* end = first + parent.nbChildren;
    const auto* found = std::lower_bound(first, end, component.id(), [this](auto index, auto id) {
        return _nodes[index].component.id() < id;
    });
    return found != end && _nodes[*found].component == component ? std::optional(*found)
                                                                 : std::nullopt;
}

/// Finds each node's children, whose numbers are known.
void SceneFile::connect()
{
    NodeIndex next = 1;
    for (NodeIndex i = 0; i < _nodes.size(); ++i) {
        _nodes[i].firstChild = next;
        for (NodeIndex n = 0; n < _nodes[i].nbChildren; ++n) {
            _nodes[next++].parent = i;
        }
    }
}

void SceneFile::nameSiblings(const ComponentNames& names, const aiNode* const* sources,
                             NodeIndex first, NodeIndex count)
{
    std::vector<ComponentNames::Sibling> siblings;
    siblings.reserve(count);
    for (auto i = first; i < first + count; ++i) {
        siblings.push_back({text(sources[i]->mName), nodeTypeName(_nodes[i].type)});
    }
    const auto components = names.ofSiblings(siblings);
    for (NodeIndex i = 0; i < count; ++i) {
        _nodes[first + i].component = PathComponent::intern(components[i]);
        if (siblings[i].name != components[i]) {
            _originalNames.emplace(first + i, siblings[i].name);
        }
    }
}

void SceneFile::sortForFinding()
{
    _byComponent.resize(_nodes.size());
    std::iota(_byComponent.begin(), _byComponent.end(), NodeIndex{0});
    for (const auto& node : _nodes) {
        auto* first = _byComponent.data() + node.firstChild;
        std::sort(first, first + node.nbChildren, [this](auto left, auto right) {
            return _nodes[left].component.id() < _nodes[right].component.id();
        });
    }
}

} // namespace Kiv_v4::assimp
