#include "sceneNodes.h"

#include <algorithm>
#include <array>
#include <assimp/scene.h>
#include <iterator>
#include <numeric>
#include <string_view>
#include <utility>

#include "kiv/pathString.h"

#include "componentNames.h"
#include "fileFacts.h"
#include "fileText.h"

namespace Kiv_v4::assimp {

namespace {

bool isHelper(const aiNode& node)
{
    return text(node.mName).find("$AssimpFbx$") != std::string_view::npos;
}

NodeType typeOf(const aiNode& node, const Contents& contents, NodeIndex index)
{
    if (node.mNumMeshes > 0) {
        return NodeType::Mesh;
    }
    if (contents.camera(index)) {
        return NodeType::Camera;
    }
    return contents.light(index) ? NodeType::Light : NodeType::Transform;
}

/// The nodes under `root` and itself, level by level.
std::vector<const aiNode*> levelByLevel(const aiNode* root)
{
    std::vector<const aiNode*> nodes{root};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const auto* node = nodes[i];
        nodes.insert(nodes.end(), node->mChildren, node->mChildren + node->mNumChildren);
    }
    return nodes;
}

/// All materials except the default ones that importers add: no mesh uses them, and they have no
/// name.
std::vector<const aiMaterial*> authoredMaterials(const aiScene& scene)
{
    std::vector<bool> isUsed(scene.mNumMaterials);
    for (unsigned i = 0; i < scene.mNumMeshes; ++i) {
        const auto material = scene.mMeshes[i]->mMaterialIndex;
        if (material < isUsed.size()) {
            isUsed[material] = true;
        }
    }
    std::vector<const aiMaterial*> materials;
    for (unsigned i = 0; i < scene.mNumMaterials; ++i) {
        if (isUsed[i] || scene.mMaterials[i]->GetName().length > 0) {
            materials.push_back(scene.mMaterials[i]);
        }
    }
    return materials;
}

} // namespace

const std::string& nodeTypeName(NodeType type)
{
    static const std::array<std::string, 6> names{"transform", "mesh",      "camera",
                                                  "light",     "materials", "material"};
    return names[static_cast<std::size_t>(type)];
}

SceneFile::SceneFile(const aiScene& scene, std::string name)
    : SceneFile(scene, std::move(name), {levelByLevel(scene.mRootNode), authoredMaterials(scene)})
{}

SceneFile::SceneFile(const aiScene& scene, std::string name, const Sources& sources)
    : _name(std::move(name)), _size(sources.nodes.size()),
      _contents(scene, sources, fileFacts(scene, _name))
{
    _nodes.resize(_size);
    for (NodeIndex i = 0; i < _size; ++i) {
        const auto& source = *sources.nodes[i];
        _nodes[i].nbChildren = source.mNumChildren;
        _nodes[i].type = typeOf(source, _contents, i);
        _nodes[i].isHelper = isHelper(source);
    }
    connect();
    addMaterials(sources);
    nameAll(sources);
    sortForFinding();
    listCameras();
}

std::optional<NodeIndex> SceneFile::find(const PathSegmentView& segment) const
{
    if (segment.empty()) {
        return std::nullopt;
    }
    auto found = top(*segment.begin());
    for (auto component = segment.begin() + 1; found && component != segment.end(); ++component) {
        found = child(_nodes[*found], *component);
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
    std::copy_if(_cameras.begin(), _cameras.end(), std::back_inserter(found), [&](auto index) {
        while (index > top) { // parents come before their children
            index = _nodes[index].parent;
        }
        return index == top;
    });
    return found;
}

std::optional<NodeIndex> SceneFile::top(const PathComponent& component) const
{
    if (component == _nodes[kRoot].component) {
        return kRoot;
    }
    return _size < _nodes.size() && component == _nodes[_size].component
               ? std::optional(static_cast<NodeIndex>(_size))
               : std::nullopt;
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

/// Finds each node's children, once their numbers are known.
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

void SceneFile::addMaterials(const Sources& sources)
{
    if (sources.materials.empty()) {
        return;
    }
    Node top;
    top.parent = sources.materialsTop();
    top.firstChild = sources.firstMaterial();
    top.nbChildren = static_cast<NodeIndex>(sources.materials.size());
    top.type = NodeType::Materials;
    _nodes.push_back(top);
    Node material;
    material.parent = sources.materialsTop();
    material.type = NodeType::Material;
    _nodes.resize(_nodes.size() + sources.materials.size(), material);
}

void SceneFile::nameAll(const Sources& sources)
{
    std::vector<std::string> materialNames;
    for (const auto* material : sources.materials) {
        const auto name = material->GetName();
        materialNames.emplace_back(text(name));
    }
    std::vector<std::string_view> originals(_nodes.size()); // empty for the materials' top
    std::transform(sources.nodes.begin(), sources.nodes.end(), originals.begin(),
                   [](const auto* source) { return text(source->mName); });
    std::copy(materialNames.rbegin(), materialNames.rend(), originals.rbegin());

    const ComponentNames names(PathString::pathSegmentSeparator());
    nameSiblings(names, originals, kRoot, 1);
    for (const auto& node : _nodes) {
        nameSiblings(names, originals, node.firstChild, node.nbChildren);
    }
    nameMaterialsTop(names);
}

void SceneFile::nameSiblings(const ComponentNames& names,
                             const std::vector<std::string_view>& originals, NodeIndex first,
                             NodeIndex count)
{
    std::vector<ComponentNames::Sibling> siblings;
    siblings.reserve(count);
    for (auto i = first; i < first + count; ++i) {
        siblings.push_back({originals[i], nodeTypeName(_nodes[i].type)});
    }
    const auto components = names.ofSiblings(siblings);
    for (NodeIndex i = 0; i < count; ++i) {
        _nodes[first + i].component = PathComponent::intern(components[i]);
        if (siblings[i].name != components[i]) {
            _originalNames.emplace(first + i, siblings[i].name);
        }
    }
}

/// Gives the materials' top a name unlike that of the root.
void SceneFile::nameMaterialsTop(const ComponentNames& names)
{
    if (_size < _nodes.size()) {
        const auto root = _nodes[kRoot].component.string();
        const auto tops = names.ofSiblings({{root, root}, {"", nodeTypeName(NodeType::Materials)}});
        _nodes[_size].component = PathComponent::intern(tops.back());
        _originalNames.emplace(static_cast<NodeIndex>(_size), "");
    }
}

void SceneFile::listCameras()
{
    if (_contents.nbCameras() > 0) {
        forEachInSubtree(kRoot, [this](NodeIndex index) {
            if (_contents.camera(index)) {
                _cameras.push_back(index);
            }
        });
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
