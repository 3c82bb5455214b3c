#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "kiv/object3d.h"

#include "fileAttribute.h"
#include "records.h"

struct aiMaterial;
struct aiNode;
struct aiScene;

namespace Kiv_v4::assimp {

using NodeIndex = std::uint32_t;

/// The importer's objects in the order of their items: the nodes, whose indices are their
/// positions, then the parent item of the materials, then these.
struct Sources
{
    std::vector<const aiNode*> nodes;
    std::vector<const aiMaterial*> materials;

    [[nodiscard]] NodeIndex materialsTop() const noexcept
    {
        return static_cast<NodeIndex>(nodes.size());
    }
    [[nodiscard]] NodeIndex firstMaterial() const noexcept { return materialsTop() + 1; }
};

/// The data of the nodes and materials of a file, converted from the importer's.
class Contents
{
public:
    /// `facts` become attributes of the root, after its own.
    Contents(const aiScene& scene, const Sources& sources, FileAttributes facts);

    /// The importer's matrix, exactly, for row vectors. If the importer gives a camera or light a
    /// place within its node, its matrix includes that place, and those of its children compensate
    /// for it.
    [[nodiscard]] Matrix4d matrix(NodeIndex index) const;

    // Null for a node without one.

    [[nodiscard]] const CameraRecord* camera(NodeIndex index) const;
    [[nodiscard]] const LightRecord* light(NodeIndex index) const;

    /// The box around the node's own meshes, in its space.
    [[nodiscard]] const BoundingBox3d* box(NodeIndex index) const;

    /// The indices of the materials of the node's meshes, each once.
    [[nodiscard]] const std::vector<NodeIndex>* materials(NodeIndex index) const;

    /// Of a node or a material.
    [[nodiscard]] const FileAttributes* attributes(NodeIndex index) const;

    [[nodiscard]] std::size_t nbCameras() const noexcept { return _cameras.size(); }

private:
    template <class T>
    using ByNode = std::unordered_map<NodeIndex, T>;

    void addMatrices(const std::vector<const aiNode*>& sources);
    void addCamerasAndLights(const aiScene& scene, const std::vector<const aiNode*>& sources);
    void place(const ByNode<Matrix4d>& placements, const std::vector<const aiNode*>& sources);
    void setMatrix(NodeIndex index, const Matrix4d& matrix);
    void addMeshes(const aiScene& scene, const std::vector<const aiNode*>& sources);
    void addMaterials(const aiScene& scene, const Sources& sources);

    std::vector<double> _matrices; ///< Sixteen elements each, row by row.
    ByNode<CameraRecord> _cameras;
    ByNode<LightRecord> _lights;
    ByNode<BoundingBox3d> _boxes;
    ByNode<std::vector<NodeIndex>> _materials;
    ByNode<FileAttributes> _attributes;
};

} // namespace Kiv_v4::assimp
