#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kiv/assimp/sceneFile.h"
#include "kiv/pathComponent.h"
#include "kiv/pathSegment.h"

#include "contents.h"

struct aiScene;

namespace Kiv_v4::assimp {

class ComponentNames;

enum class NodeType : std::uint8_t { Transform, Mesh, Camera, Light, Materials, Material };

[[nodiscard]] const std::string& nodeTypeName(NodeType type);

struct Node
{
    PathComponent component;
    NodeIndex parent = 0;     ///< A top is its own parent.
    NodeIndex firstChild = 0; ///< The children are consecutive, from this index on.
    NodeIndex nbChildren = 0;
    NodeType type = NodeType::Transform;
    bool isHelper = false; ///< Made by the importer to hold a part of a node's transform.
};

/// The tree of the scene's nodes, and the materials, if any, under a top of their own.
///
/// Invariants: node 0 is the root; the array holds the levels of the tree one after another, so
/// siblings are side by side in the file's order, followed by the materials' top and the materials.
class SceneFile
{
public:
    static constexpr NodeIndex kRoot = 0;

    /// The nodes of `scene`, which must have a root and was read from `name`.
    SceneFile(const aiScene& scene, std::string name);

    /// The file's name, as given to `read`.
    [[nodiscard]] const std::string& name() const noexcept { return _name; }

    /// The number of the scene's nodes.
    [[nodiscard]] std::size_t size() const noexcept { return _size; }

    /// Whether it is a node of the scene; otherwise it is a material or the top of these.
    [[nodiscard]] bool isInScene(NodeIndex index) const noexcept { return index < _size; }

    [[nodiscard]] const Node& node(NodeIndex index) const noexcept { return _nodes[index]; }

    /// The node that `segment` names, its first component being that of a top.
    [[nodiscard]] std::optional<NodeIndex> find(const PathSegmentView& segment) const;

    /// The name that the node has in the file; empty for the materials' top.
    [[nodiscard]] std::string originalName(NodeIndex index) const;

    [[nodiscard]] const Contents& contents() const noexcept { return _contents; }

    /// The node's child of that name.
    [[nodiscard]] std::optional<NodeIndex> child(const Node& parent,
                                                 const PathComponent& component) const;

    /// The nodes with a camera at and under `top`, parents first, in the order of the hierarchy.
    /// Linear in the number of the file's cameras and the levels above them.
    [[nodiscard]] std::vector<NodeIndex> cameras(NodeIndex top) const;

    /// Calls `visit(index)` for the node and its descendants, each before its children and its
    /// descendants before its next sibling.
    template <class Visit>
    void forEachInSubtree(NodeIndex top, Visit visit) const
    {
        std::vector<NodeIndex> pending{top}; // the last one is next
        while (!pending.empty()) {
            const auto index = pending.back();
            pending.pop_back();
            visit(index);
            for (auto i = _nodes[index].nbChildren; i > 0; --i) {
                pending.push_back(_nodes[index].firstChild + i - 1);
            }
        }
    }

private:
    /// The index of a node is that of its source.
    SceneFile(const aiScene& scene, std::string name, const Sources& sources);

    [[nodiscard]] std::optional<NodeIndex> top(const PathComponent& component) const;
    void connect();
    void addMaterials(const Sources& sources);
    void nameAll(const Sources& sources);
    void nameSiblings(const ComponentNames& names, const std::vector<std::string_view>& originals,
                      NodeIndex first, NodeIndex count);
    void nameMaterialsTop(const ComponentNames& names);
    void sortForFinding();
    void listCameras();

    const std::string _name;
    const std::size_t _size;
    const Contents _contents;
    std::vector<Node> _nodes;
    std::vector<NodeIndex> _byComponent; ///< Each run of siblings in the order of component ids.
    std::vector<NodeIndex> _cameras;     ///< In the order of the hierarchy.
    std::unordered_map<NodeIndex, std::string> _originalNames; ///< The names that were changed.
};

} // namespace Kiv_v4::assimp
