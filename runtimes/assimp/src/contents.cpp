#include "contents.h"

#include <algorithm>
#include <array>
#include <assimp/scene.h>
#include <cmath>
#include <iterator>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "fileText.h"
#include "materialAttributes.h"
#include "objectConversion.h"

namespace Kiv_v4::assimp {

namespace {

constexpr std::size_t kNbElements = 16;

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

/// Of a matrix with a rotation and a translation only.
Matrix4d inverseOfRigid(const Matrix4d& matrix)
{
    auto inverse = kit::identity();
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            inverse.matrix[row][column] = matrix.matrix[column][row];
            inverse.matrix[3][row] -= matrix.matrix[3][column] * matrix.matrix[row][column];
        }
    }
    return inverse;
}

} // namespace

Contents::Contents(const aiScene& scene, const Sources& sources, FileAttributes facts)
{
    const auto& nodes = sources.nodes;
    addMatrices(nodes);
    for (NodeIndex i = 0; i < nodes.size(); ++i) {
        if (const auto* metadata = nodes[i]->mMetaData) {
            addMetadata(_attributes[i], *metadata);
        }
    }
    addAttributes(_attributes[0], std::move(facts));
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
    ByNode<Matrix4d> placements;
    const auto place = [&placements](NodeIndex index, const std::optional<Matrix4d>& placement) {
        if (placement) {
            placements.emplace(index, *placement);
        }
    };
    for (NodeIndex i = 0; i < sources.size(); ++i) {
        const auto name = text(sources[i]->mName);
        if (const auto camera = cameras.find(name); camera != cameras.end()) {
            _cameras.emplace(i, conversion.record(*camera->second));
            place(i, conversion.placement(*camera->second));
        }
        if (const auto light = lights.find(name); light != lights.end()) {
            const auto& source = *light->second;
            place(i, conversion.placement(source));
            const auto& record = _lights.emplace(i, conversion.record(source)).first->second;
            if (record.type == Light::Area) {
                addAttribute(_attributes[i], "lightSize",
                             TypedVectorN<float, 2>({static_cast<float>(source.mSize.x),
                                                     static_cast<float>(source.mSize.y)}));
            }
        }
    }
    if (!placements.empty()) {
        this->place(placements, sources);
    }
}

/// Moves the nodes of cameras and lights; their meshes and the nodes under them stay where they
/// are.
void Contents::place(const ByNode<Matrix4d>& placements, const std::vector<const aiNode*>& sources)
{
    std::unordered_map<const aiNode*, Matrix4d> back;
    for (const auto& [index, placement] : placements) {
        const auto inverse = inverseOfRigid(placement);
        back.emplace(sources[index], inverse);
        setMatrix(index, placement * matrix(index));
        if (const auto box = _boxes.find(index); box != _boxes.end()) {
            box->second = kit::transformed(box->second, inverse);
        }
    }
    for (NodeIndex i = 0; i < sources.size(); ++i) {
        if (const auto above = back.find(sources[i]->mParent); above != back.end()) {
            setMatrix(i, matrix(i) * above->second);
        }
    }
}

void Contents::setMatrix(NodeIndex index, const Matrix4d& matrix)
{
    auto element = _matrices.begin() + static_cast<std::ptrdiff_t>(kNbElements * index);
    for (const auto& row : matrix.matrix) {
        element = std::copy(row.begin(), row.end(), element);
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
