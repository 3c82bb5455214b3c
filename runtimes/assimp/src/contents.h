#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "kiv/object3d.h"

#include "fileAttribute.h"
#include "records.h"

struct aiNode;
struct aiScene;

namespace Kiv_v4::assimp {

using NodeIndex = std::uint32_t;

/// What lies in and hangs at the nodes of a file, converted from what the importer made.
class Contents
{
public:
    /// The index of a node is that of its source.
    Contents(const aiScene& scene, const std::vector<const aiNode*>& sources);

    /// The importer's matrix, exactly, for row vectors.
    [[nodiscard]] Matrix4d matrix(NodeIndex index) const;

    // Null for a node without.

    [[nodiscard]] const CameraRecord* camera(NodeIndex index) const;
    [[nodiscard]] const LightRecord* light(NodeIndex index) const;

    /// The box around the node's own meshes, in its space.
    [[nodiscard]] const BoundingBox3d* box(NodeIndex index) const;
    [[nodiscard]] const FileAttributes* attributes(NodeIndex index) const;

    [[nodiscard]] std::size_t nbCameras() const noexcept { return _cameras.size(); }

private:
    template <class T>
    using ByNode = std::unordered_map<NodeIndex, T>;

    void addMatrices(const std::vector<const aiNode*>& sources);
    void addCamerasAndLights(const aiScene& scene, const std::vector<const aiNode*>& sources);
    void addMeshes(const aiScene& scene, const std::vector<const aiNode*>& sources);

    std::vector<double> _matrices; ///< Sixteen elements each, row by row.
    ByNode<CameraRecord> _cameras;
    ByNode<LightRecord> _lights;
    ByNode<BoundingBox3d> _boxes;
    ByNode<FileAttributes> _attributes;
};

} // namespace Kiv_v4::assimp
