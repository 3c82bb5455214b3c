#include "sceneNodes.h"

#include <algorithm>
#include <assimp/scene.h>
#include <numeric>
#include <string_view>
#include <utility>

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

NodeType typeOf(const aiNode& node, const Contents& contents, NodeIndex index)
{
    if (node.mNumMeshes > 0) {
        return NodeType::mesh;
    }
    if (contents.camera(index)) {
        return NodeType::camera;
    }
    return contents.light(index) ? NodeType::light : NodeType::transform;
}

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

SceneFile::SceneFile(const aiScene& scene, std::string name)
    : SceneFile(scene, std::move(name), levelByLevel(scene.mRootNode))
{}

SceneFile::SceneFile(const aiScene& scene, std::string name, const Sources& sources)
    : _name(std::move(name)), _contents(scene, sources)
{
    _nodes.resize(sources.size());
    for (NodeIndex i = 0; i < sources.size(); ++i) {
        _nodes[i].nbChildren = sources[i]->mNumChildren;
        _nodes[i].type = typeOf(*sources[i], _contents, i);
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

std::vector<NodeIndex> SceneFile::cameras(NodeIndex top) const
{
    std::vector<NodeIndex> found;
    if (_contents.nbCameras() > 0) {
        forEachInSubtree(top, [&](NodeIndex index) {
            if (_contents.camera(index)) {
                found.push_back(index);
            }
        });
    }
    return found;
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
