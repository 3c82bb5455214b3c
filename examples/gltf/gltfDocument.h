#pragma once

#include <algorithm>
#include <array>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// A glTF document, as it was parsed: the application's own data, which know nothing of kiv. A node
/// that is taken out of its parent stays in the list of nodes, so that no index changes.
class GltfDocument
{
public:
    using Json = nlohmann::json;
    using Index = std::size_t; ///< Of a node.
    using Matrix = std::array<std::array<double, 4>, 4>;

    /// The lens of a camera, in radians and scene units.
    struct Lens
    {
        bool isPerspective;
        float verticalFov;
        float aspectRatio;
        float near;
        float far;
    };

    explicit GltfDocument(Json json) : _json(std::move(json)) {}

    /// Reads a file. Throws if it is not JSON or cannot be read.
    [[nodiscard]] static GltfDocument read(const std::string& name)
    {
        std::ifstream file(name);
        if (!file) {
            throw std::runtime_error("'" + name + "' cannot be read");
        }
        return GltfDocument(Json::parse(file));
    }

    [[nodiscard]] const Json& json() const noexcept { return _json; }

    /// The first scene. Throws if there is none.
    [[nodiscard]] Json& scene() { return _json.at("scenes").at(0); }
    [[nodiscard]] Json& node(Index index) { return _json.at("nodes").at(index); }

    [[nodiscard]] static std::string nameOf(const Json& object) { return object.value("name", ""); }

    [[nodiscard]] static std::string typeOf(const Json& object)
    {
        return object.contains("nodes")    ? "scene"
               : object.contains("camera") ? "camera"
               : object.contains("mesh")   ? "mesh"
                                           : "node";
    }

    /// The list of indices of the children of a scene or node.
    [[nodiscard]] static Json& children(Json& parent)
    {
        auto& list = parent[parent.contains("nodes") ? "nodes" : "children"];
        return list.is_null() ? list = Json::array() : list;
    }

    [[nodiscard]] std::vector<Json*> childNodes(Json& parent)
    {
        std::vector<Json*> nodes;
        for (const Index child : children(parent)) {
            nodes.push_back(&node(child));
        }
        return nodes;
    }

    /// Inserts a node before the child at `row`, or last.
    void insert(Json& parent, Index child, std::size_t row)
    {
        auto& list = children(parent);
        list.insert(list.begin() + static_cast<int>(std::min(row, list.size())), child);
    }

    /// Takes the child out of the list of its parent.
    Index take(Json& parent, const Json& child)
    {
        auto& list = children(parent);
        const auto found = std::find_if(list.begin(), list.end(),
                                        [&](Index index) { return &node(index) == &child; });
        const Index index = *found;
        list.erase(found);
        return index;
    }

    Index add(Json node)
    {
        auto& nodes = _json.at("nodes");
        nodes.push_back(std::move(node));
        return nodes.size() - 1;
    }

    /// Adds a copy of a node and everything under it.
    Index copy(const Json& original)
    {
        const auto top = add(original);
        std::vector<Index> pending{top};
        while (!pending.empty()) {
            const auto copied = pending.back();
            pending.pop_back();
            auto list = children(node(copied));
            for (auto& child : list) {
                child = pending.emplace_back(add(node(child)));
            }
            children(node(copied)) = list;
        }
        return top;
    }

    /// The lens of the camera of a node, which may be null.
    [[nodiscard]] std::optional<Lens> lens(const Json* node) const
    {
        if (!node || !node->contains("camera")) {
            return std::nullopt;
        }
        const auto& camera = _json.at("cameras").at(node->at("camera").get<Index>());
        const std::string type = camera.at("type");
        const auto& lens = camera.at(type);
        return Lens{type == "perspective", lens.value("yfov", 0.6F),
                    lens.value("aspectRatio", 1.5F), lens.value("znear", 0.1F),
                    lens.value("zfar", 10000.F)};
    }

    /// The extras of a node, which may be null, as an object; empty if it has none.
    [[nodiscard]] static Json extras(const Json* node)
    {
        auto extras = node ? node->value("extras", Json::object()) : Json();
        return extras.is_object() ? extras : Json::object();
    }

    /// Gives the node a matrix in the place of translation, rotation and scale. It is written by
    /// columns for column vectors, which is by rows for row vectors.
    static void setMatrix(Json& node, const Matrix& rows)
    {
        for (const auto* factor : {"translation", "rotation", "scale"}) {
            node.erase(factor);
        }
        auto& elements = node["matrix"] = Json::array();
        for (const auto& row : rows) {
            for (const auto element : row) {
                elements.push_back(element);
            }
        }
    }

    [[nodiscard]] static Matrix matrix(const Json& node)
    {
        const auto elements = node.at("matrix").get<std::array<double, 16>>();
        Matrix rows{};
        for (std::size_t i = 0; i < elements.size(); ++i) {
            rows[i / 4][i % 4] = elements[i];
        }
        return rows;
    }

private:
    Json _json;
};
