#include "gltfRunTime.h"

#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "kiv/kit/attributeJson.h"
#include "kiv/kit/attributeTable.h"
#include "kiv/kit/cameras.h"
#include "kiv/kit/names.h"
#include "kiv/kit/nodeTree.h"
#include "kiv/kit/transforms.h"

namespace kit = Kiv::kit;
using Json = GltfDocument::Json;

constexpr char kSeparator = ':';

/// The document as the library browses and edits it. A part is the index of a node.
class GltfTree : public kit::NodeTree<Json*>
{
    using Index = GltfDocument::Index;

public:
    GltfTree(Kiv::Rtid id, GltfDocument document)
        : NodeTree(Kiv::PathSegment(kit::fitName(GltfDocument::nameOf(document.scene()), ":,"), id,
                                    kSeparator)),
          _document(std::move(document))
    {
        fitNames(":,", [](Json* node, const std::string& name) { (*node)["name"] = name; });
    }

    [[nodiscard]] const GltfDocument& document() const { return _document; }

    [[nodiscard]] bool accepts(const Kiv::Path&, const std::string& nodeType) const override
    {
        return nodeType != "scene";
    }
    [[nodiscard]] Part make(const std::string&) override { return part(_document.add({})); }
    [[nodiscard]] Part copy(const Kiv::Path& path) override
    {
        return part(_document.copy(*existing(path)));
    }
    [[nodiscard]] Part take(const Kiv::Path& path) override
    {
        return part(_document.take(*existing(path.pop()), *existing(path)));
    }
    void put(const Kiv::Path& path, const Part& part, std::size_t row) override
    {
        const auto index = *std::static_pointer_cast<Index>(part);
        auto& parent = *existing(path.pop());
        _document.node(index)["name"] = path.back().string();
        _document.insert(parent, index, row);
    }

protected:
    [[nodiscard]] Json* rootNode() const override { return &_document.scene(); }
    [[nodiscard]] std::vector<Json*> childNodes(Json* node) const override
    {
        return _document.childNodes(*node);
    }
    [[nodiscard]] Child described(Json* node) const override
    {
        return {GltfDocument::nameOf(*node), GltfDocument::typeOf(*node)};
    }

private:
    static Part part(Index index) { return std::make_shared<Index>(index); }

    mutable GltfDocument _document;
};

namespace {

using TreePtr = std::shared_ptr<GltfTree>;

/// A node has a matrix, or translation, rotation and scale.
kit::MatrixAccess matrices(const TreePtr& tree)
{
    const auto get = [tree](const Kiv::Path& path) -> std::optional<Kiv::Matrix4d> {
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
    };
    return {get, [tree](const Kiv::Path& path, const Kiv::Matrix4d& matrix) {
                GltfDocument::setMatrix(*tree->existing(path), matrix.matrix);
            }};
}

/// The cameras, with a film back of 24 millimetres in height; they are only read.
kit::CameraAccess cameras(const TreePtr& tree)
{
    const auto get = [tree](const Kiv::Path& path) -> std::optional<kit::CameraValues> {
        const auto lens = tree->document().lens(tree->find(path));
        if (!lens) {
            return std::nullopt;
        }
        kit::CameraValues values;
        values.horizontalAperture = values.verticalAperture * lens->aspectRatio;
        values.focalLength = values.verticalAperture / 2 / std::tan(lens->verticalFov / 2);
        values.nearClipPlane = lens->near;
        values.farClipPlane = lens->far;
        values.projection =
            lens->isPerspective ? Kiv::Camera::Perspective : Kiv::Camera::Orthographic;
        return values;
    };
    return {get, nullptr};
}

/// The extras of the nodes, each of the type that it has in the document.
kit::AttributeTable::ItemValues extras(const TreePtr& tree)
{
    const auto get = [tree](const Kiv::Path& path) {
        std::vector<std::pair<std::string, Kiv::AttributeVariant>> values;
        const auto all = GltfDocument::extras(tree->find(path));
        for (const auto& [name, value] : all.items()) {
            values.emplace_back(name, kit::valueFromJson(value.dump()));
        }
        return values;
    };
    const auto set = [tree](const Kiv::Path& path, const std::string& name, const auto& value) {
        tree->existing(path)->at("extras")[name] = Json::parse(kit::jsonOf(value));
    };
    return {get, set};
}

} // namespace

GltfRunTime::GltfRunTime(GltfDocument document)
    : _registration("glTF", kSeparator),
      _tree(std::make_shared<GltfTree>(_registration.id(), std::move(document)))
{
    const auto id = _registration.id();
    const auto table = std::make_shared<kit::AttributeTable>();
    table->addItemValues(extras(_tree));
    auto& manager = Kiv::RunTimeMgr::instance();
    kit::registerTree(id, _tree);
    manager.setTransform3dHandler(id, kit::transformHandler(matrices(_tree)));
    manager.setCameraHandler(id, kit::cameraHandler(cameras(_tree)));
    manager.setAttributesHandler(id, kit::attributesHandler(table));
}

const Json& GltfRunTime::json() const
{
    return _tree->document().json();
}
