#include "contents.h"

#include <algorithm>
#include <array>
#include <assimp/scene.h>
#include <cmath>
#include <iterator>
#include <string_view>
#include <unordered_set>

#include "materialAttributes.h"
#include "objectConversion.h"

namespace Kiv_v4::assimp {

namespace {

constexpr std::size_t kNbElements = 16;

std::string_view text(const aiString& name)
{
    return {name.data, name.length};
}

template <class Object>
std::unordered_map<std::string_view, const Object*> byName(const Object* const* objects,
                                                           unsigned count)
{
    std::unordered_map<std::string_view, const Object*> named;
    for (unsigned i = 0; i < count; ++i) {
        named.emplace(text(objects[i]->mName), objects[i]);
    }
    return named;
}

template <class T>
const T* found(const std::unordered_map<NodeIndex, T>& map, NodeIndex index)
{
    const auto at = map.find(index);
    return at == map.end() ? nullptr : &at->second;
}

BoundingBox3d boxOf(const aiMesh& mesh)
{
    BoundingBox3d box;
    for (unsigned i = 0; i < mesh.mNumVertices; ++i) {
        const auto& vertex = mesh.mVertices[i];
        if (std::isfinite(vertex.x) && std::isfinite(vertex.y) && std::isfinite(vertex.z)) {
            box.extend(TypedVectorN<double, 3>({vertex.x, vertex.y, vertex.z}));
        }
    }
    return box;
}

/// The materials of the node's meshes, each once, in the order of the meshes.
std::vector<const aiMaterial*> materialsOf(const aiScene& scene, const aiNode& node)
{
    std::vector<const aiMaterial*> materials;
    std::unordered_set<unsigned> seen;
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
        const auto material = scene.mMeshes[node.mMeshes[i]]->mMaterialIndex;
        if (material < scene.mNumMaterials && seen.insert(material).second) {
            materials.push_back(scene.mMaterials[material]);
        }
    }
    return materials;
}

} // namespace

Contents::Contents(const aiScene& scene, const Sources& sources)
{
    const auto& nodes = sources.nodes;
    addMatrices(nodes);
    for (NodeIndex i = 0; i < nodes.size(); ++i) {
        if (const auto* metadata = nodes[i]->mMetaData) {
            addMetadata(_attributes[i], *metadata);
        }
    }
    addMeshes(scene, nodes);
    addMaterials(scene, sources);
    addCamerasAndLights(scene, nodes);
}

Matrix4d Contents::matrix(NodeIndex index) const
{
    Matrix4d matrix;
    const auto* element = _matrices.data() + kNbElements * index;
    for (auto& row : matrix.matrix) {
        std::copy_n(element, row.size(), row.begin());
        element += row.size();
    }
    return matrix;
}

const CameraRecord* Contents::camera(NodeIndex index) const
{
    return found(_cameras, index);
}

const LightRecord* Contents::light(NodeIndex index) const
{
    return found(_lights, index);
}

const BoundingBox3d* Contents::box(NodeIndex index) const
{
    return found(_boxes, index);
}

const std::vector<NodeIndex>* Contents::materials(NodeIndex index) const
{
    return found(_materials, index);
}

const FileAttributes* Contents::attributes(NodeIndex index) const
{
    return found(_attributes, index);
}

void Contents::addMatrices(const std::vector<const aiNode*>& sources)
{
    _matrices.reserve(kNbElements * sources.size());
    for (const auto* source : sources) {
        const auto& columns = source->mTransformation; // row by row, for column vectors
        for (unsigned row = 0; row < 4; ++row) {
            for (unsigned column = 0; column < 4; ++column) {
                _matrices.push_back(columns[column][row]);
            }
        }
    }
}

/// The importer's checks made sure that each camera and light has one node of its name.
void Contents::addCamerasAndLights(const aiScene& scene, const std::vector<const aiNode*>& sources)
{
    const auto cameras = byName(scene.mCameras, scene.mNumCameras);
    const auto lights = byName(scene.mLights, scene.mNumLights);
    if (cameras.empty() && lights.empty()) {
        return;
    }
    const ObjectConversion conversion(scene);
    for (NodeIndex i = 0; i < sources.size(); ++i) {
        const auto name = text(sources[i]->mName);
        if (const auto camera = cameras.find(name); camera != cameras.end()) {
            _cameras.emplace(i, conversion.record(*camera->second));
        }
        if (const auto light = lights.find(name); light != lights.end()) {
            const auto& source = *light->second;
            const auto& record = _lights.emplace(i, conversion.record(source)).first->second;
            if (record.type == Light::Area) {
                addAttribute(_attributes[i], "lightSize",
                             TypedVectorN<float, 2>({static_cast<float>(source.mSize.x),
                                                     static_cast<float>(source.mSize.y)}));
            }
        }
    }
}

void Contents::addMeshes(const aiScene& scene, const std::vector<const aiNode*>& sources)
{
    std::vector<BoundingBox3d> meshBoxes;
    std::transform(scene.mMeshes, scene.mMeshes + scene.mNumMeshes, std::back_inserter(meshBoxes),
                   [](const auto* mesh) { return boxOf(*mesh); });
    for (NodeIndex i = 0; i < sources.size(); ++i) {
        const auto& node = *sources[i];
        if (node.mNumMeshes == 0) {
            continue;
        }
        auto& box = _boxes[i];
        std::for_each(node.mMeshes, node.mMeshes + node.mNumMeshes,
                      [&](auto mesh) { box.extend(meshBoxes[mesh]); });
    }
}

void Contents::addMaterials(const aiScene& scene, const Sources& sources)
{
    std::unordered_map<const aiMaterial*, NodeIndex> indices;
    for (const auto* material : sources.materials) {
        const auto index = sources.firstMaterial() + static_cast<NodeIndex>(indices.size());
        indices.emplace(material, index);
        _attributes.emplace(index, materialAttributes(*material));
    }
    for (NodeIndex i = 0; i < sources.nodes.size(); ++i) {
        const auto& node = *sources.nodes[i];
        if (node.mNumMeshes > 0) {
            auto& bound = _materials[i];
            for (const auto* material : materialsOf(scene, node)) {
                bound.push_back(indices.at(material));
            }
        }
    }
}

} // namespace Kiv_v4::assimp
