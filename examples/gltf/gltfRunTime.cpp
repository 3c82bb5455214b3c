#include "gltfRunTime.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "kiv/kit/attributeJson.h"
#include "kiv/kit/attributeTable.h"
#include "kiv/kit/bases.h"
#include "kiv/kit/handlers.h"
#include "kiv/kit/names.h"
#include "kiv/kit/transforms.h"
#include "kiv/kit/tree.h"

namespace kit = Kiv::kit;
using Json = GltfDocument::Json;

namespace {

constexpr char kSeparator = ':';

std::string nameOf(const Json& object)
{
    return kit::fitName(object.value("name", ""), ":,");
}

} // namespace

/// The document as the library browses and edits it. A part is the index of a node.
class GltfTree : public kit::Tree
{
    using Index = GltfDocument::Index;

public:
    GltfTree(Kiv::Rtid id, GltfDocument document)
        : Tree(Kiv::PathSegment(Kiv::PathSegment::Components{nameOf(document.scene())}, id,
                                kSeparator)),
          _document(std::move(document))
    {
        std::vector<Json*> parents{&_document.scene()};
        while (!parents.empty()) {
            auto& parent = *parents.back();
            parents.pop_back();
            kit::NameIndex names;
            for (const Index child : GltfDocument::children(parent)) {
                auto& node = _document.node(child);
                node["name"] = names.uniqueName(nameOf(node));
                names.insert(node["name"]);
                parents.push_back(&node);
            }
        }
    }

    [[nodiscard]] const Json& json() const { return _document.json(); }

    /// The scene or node at `path`; null if there is none.
    [[nodiscard]] Json* find(const Kiv::Path& path) const
    {
        auto* object = covers(path) ? &_document.scene() : nullptr;
        for (auto name = path.begin() + 1; object && name != path.end(); ++name) {
            object = _document.child(*object, name->string());
        }
        return object;
    }

    [[nodiscard]] std::string nodeType(const Kiv::Path& path) const override
    {
        const auto* object = find(path);
        return object ? GltfDocument::typeOf(*object) : "";
    }

    [[nodiscard]] std::vector<Child> children(const Kiv::Path& path) const override
    {
        std::vector<Child> children;
        if (auto* object = find(path)) {
            for (const Index child : GltfDocument::children(*object)) {
                const auto& node = _document.node(child);
                children.push_back({node["name"], GltfDocument::typeOf(node)});
            }
        }
        return children;
    }

    [[nodiscard]] bool accepts(const Kiv::Path&, const std::string& nodeType) const override
    {
        return nodeType != "scene";
    }

    [[nodiscard]] Part make(const std::string&) override { return part(_document.add({})); }

    [[nodiscard]] Part copy(const Kiv::Path& path) override
    {
        return part(_document.copy(*find(path)));
    }

    [[nodiscard]] Part take(const Kiv::Path& path) override
    {
        return part(_document.take(*find(path.pop()), *find(path)));
    }

    void put(const Kiv::Path& path, const Part& part, std::size_t row) override
    {
        const auto index = *std::static_pointer_cast<Index>(part);
        auto& siblings = GltfDocument::children(*find(path.pop()));
        siblings.insert(siblings.begin() + static_cast<int>(std::min(row, siblings.size())), index);
        _document.node(index)["name"] = path.back().string();
    }

private:
    static Part part(Index index) { return std::make_shared<Index>(index); }

    mutable GltfDocument _document;
};

namespace {

using TreePtr = std::shared_ptr<GltfTree>;

/// A node has a matrix, or translation, rotation and scale.
std::optional<Kiv::Matrix4d> matrixOf(const TreePtr& tree, const Kiv::Path& path)
{
    const auto* node = tree->find(path);
    if (!node || path == tree->root()) {
        return std::nullopt;
    }
    if (node->contains("matrix")) {
        return Kiv::Matrix4d(GltfDocument::matrix(*node));
    }
    const auto turn = node->value("rotation", std::array<double, 4>{0, 0, 0, 1});
    return kit::scaleShearMatrix({node->value("scale", std::array<double, 3>{1, 1, 1})}, {}) *
           kit::rotationMatrix(kit::Quaternion{turn[0], turn[1], turn[2], turn[3]}) *
           kit::translationMatrix({node->value("translation", std::array<double, 3>{})});
}

/// The extras of a node, each of the type that it has in the document.
Kiv::Attributes::Ptr attributesOf(const TreePtr& tree, const Kiv::SceneItem::Ptr& item)
{
    const auto* node = tree->find(item->path());
    if (!node || !node->value("extras", Json()).is_object()) {
        return nullptr;
    }
    const auto table = std::make_shared<kit::AttributeTable>();
    for (const auto& [name, value] : node->at("extras").items()) {
        const auto type = value.is_boolean()  ? Kiv::Attribute::kBool
                          : value.is_number() ? Kiv::Attribute::kDouble
                          : value.is_string() ? Kiv::Attribute::kString
                                              : Kiv::Attribute::kGeneric;
        const auto get = [tree, type, key = name](const Kiv::Path& path) {
            const auto* owner = tree->find(path);
            const auto extra = owner ? owner->value("extras", Json()).value(key, Json()) : Json();
            return extra.is_null() ? Kiv::AttributeVariant()
                                   : kit::valueFromJson(type, extra.dump());
        };
        const auto set = [tree, key = name](const Kiv::Path& path, const auto& wanted) {
            tree->find(path)->at("extras")[key] = Json::parse(kit::jsonOf(wanted));
        };
        table->add({name, type, get, set});
    }
    return table->attributes(item);
}

/// A camera with the height of a full frame; it is only read.
class GltfCamera : public kit::CameraBase
{
public:
    GltfCamera(const Kiv::SceneItem::Ptr& item, const Json& camera)
        : CameraBase(item), _lens(camera.at(camera.at("type").get<std::string>())),
          _projection(camera.at("type") == "perspective" ? Perspective : Orthographic)
    {}

    [[nodiscard]] Projection projection() const override { return _projection; }
    [[nodiscard]] float horizontalAperture() const override
    {
        return verticalAperture() * _lens.value("aspectRatio", 1.5F);
    }
    [[nodiscard]] float focalLength() const override
    {
        return verticalAperture() / 2 / std::tan(_lens.value("yfov", 0.6F) / 2);
    }
    [[nodiscard]] float nearClipPlane() const override { return _lens.value("znear", 0.1F); }
    [[nodiscard]] float farClipPlane() const override { return _lens.value("zfar", 10000.F); }

private:
    const Json _lens;
    const Projection _projection;
};

} // namespace

GltfRunTime::GltfRunTime(GltfDocument document)
    : _registration("glTF", kSeparator),
      _tree(std::make_shared<GltfTree>(_registration.id(), std::move(document)))
{
    const auto id = _registration.id();
    auto& manager = Kiv::RunTimeMgr::instance();
    kit::registerTree(id, _tree);
    manager.setTransform3dHandler(
        id, kit::transformHandler(
                kit::MatrixAccess{[tree = _tree](const auto& path) { return matrixOf(tree, path); },
                                  [tree = _tree](const auto& path, const auto& m) {
                                      GltfDocument::setMatrix(*tree->find(path), m.matrix);
                                  }}));
    manager.setAttributesHandler(id, kit::attributesHandler([tree = _tree](const auto& item) {
                                     return attributesOf(tree, item);
                                 }));
    const auto camera = [tree = _tree](const Kiv::SceneItem::Ptr& item) -> Kiv::Camera::Ptr {
        const auto* node = tree->find(item->path());
        return node && node->contains("camera")
                   ? std::make_shared<GltfCamera>(
                         item, tree->json().at("cameras").at(node->at("camera").get<std::size_t>()))
                   : nullptr;
    };
    manager.setCameraHandler(id, kit::cameraHandler(camera));
}

const Json& GltfRunTime::json() const
{
    return _tree->json();
}
