#include "snapshot.h"

#include <charconv>
#include <deque>
#include <set>
#include <unordered_map>

#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/connection.h"
#include "kiv/connectionHandler.h"
#include "kiv/connections.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/material.h"
#include "kiv/object3d.h"
#include "kiv/transform3d.h"

#include "attributeKinds.h"
#include "checking.h"

namespace Kiv_v4::conformance {

namespace {

std::string childNames(const SceneItem::Ptr& item)
{
    std::string names;
    const auto hierarchy = Hierarchy::hierarchy(item);
    for (const auto& child : hierarchy ? hierarchy->children() : SceneItemList{}) {
        names += (names.empty() ? "" : ", ") + (child ? child->nodeName() : "(null)");
    }
    return names.empty() ? "none" : names;
}

void addAttributes(std::vector<Fact>& facts, const SceneItem::Ptr& item)
{
    const auto attributes = Attributes::attributes(item);
    if (!attributes) {
        return;
    }
    std::string names;
    for (const auto& name : attributes->attributeNames()) {
        names += (names.empty() ? "" : ", ") + name;
        const auto attribute = attributes->attribute(name);
        auto text = std::string("null");
        if (attribute) {
            text = attribute->type() + ' ' + exactValue(attribute) + " ('" + attribute->string() +
                   "')";
            if (attribute->hasMetadata(kMetadataKey)) {
                text += " metadata " + attribute->metadata(kMetadataKey).get<std::string>();
            }
        }
        facts.emplace_back("attribute " + name, text);
    }
    facts.emplace_back("attributes", names);
}

void addTransform(std::vector<Fact>& facts, const SceneItem::Ptr& item)
{
    if (const auto transform = Transform3d::transform3d(item)) {
        facts.emplace_back("matrix", textOf(numbersOf(transform->matrix())));
        facts.emplace_back("translation", textOf(numbersOf(transform->translation())));
        facts.emplace_back("rotation", textOf(numbersOf(transform->rotation())));
        facts.emplace_back("scale", textOf(numbersOf(transform->scale())));
        facts.emplace_back("rotate pivot", textOf(numbersOf(transform->rotatePivot())));
        facts.emplace_back("scale pivot", textOf(numbersOf(transform->scalePivot())));
    }
}

void addCamera(std::vector<Fact>& facts, const SceneItem::Ptr& item)
{
    if (const auto camera = Camera::camera(item)) {
        facts.emplace_back(
            "camera", textOf({camera->horizontalAperture(), camera->verticalAperture(),
                              camera->horizontalApertureOffset(), camera->verticalApertureOffset(),
                              camera->fStop(), camera->focalLength(), camera->focusDistance(),
                              camera->nearClipPlane(), camera->farClipPlane(),
                              static_cast<double>(camera->projection())}));
    }
}

void addLight(std::vector<Fact>& facts, const SceneItem::Ptr& item)
{
    if (const auto light = Light::light(item)) {
        const auto color = light->color();
        facts.emplace_back("light", textOf({light->intensity(), color.r(), color.g(), color.b(),
                                            light->shadowEnable() ? 1.0 : 0.0, light->diffuse(),
                                            light->specular()}));
    }
}

void addConnections(std::vector<Fact>& facts, const SceneItem::Ptr& item)
{
    const auto handler = ConnectionHandler::connectionHandler(item->runTimeId());
    const auto connections = handler ? handler->connections(item) : nullptr;
    if (!connections) {
        return;
    }
    const auto textOfEnd = [](const AttributeInfo& end) {
        return textOf(end.path()) + '.' + end.name();
    };
    std::set<std::string> ends; // in no promised order
    for (const auto& connection : connections->allConnections()) {
        ends.insert(textOfEnd(connection->src()) + " to " + textOfEnd(connection->dst()));
    }
    std::string text;
    for (const auto& one : ends) {
        text += (text.empty() ? "" : ", ") + one;
    }
    facts.emplace_back(kConnections, text);
}

void addMaterials(std::vector<Fact>& facts, const SceneItem::Ptr& item)
{
    if (const auto material = Material::material(item)) {
        std::string text;
        for (const auto& one : material->materials()) {
            text += (text.empty() ? "" : ", ") + (one ? textOf(one->path()) : "(null)");
        }
        facts.emplace_back(kMaterials, text);
    }
}

ItemState stateOf(const SceneItem::Ptr& item)
{
    ItemState state{item->path(), {}};
    auto& facts = state.facts;
    facts.emplace_back("children", childNames(item));
    facts.emplace_back("node type", item->nodeType());
    addAttributes(facts, item);
    addTransform(facts, item);
    if (const auto object = Object3d::object3d(item)) {
        facts.emplace_back("visibility", object->visibility() ? "shown" : "hidden");
    }
    addCamera(facts, item);
    addLight(facts, item);
    addConnections(facts, item);
    addMaterials(facts, item);
    return state;
}

using ByPath = std::unordered_map<Path, const ItemState*>;

ByPath byPath(const Snapshot& snapshot)
{
    ByPath found;
    for (const auto& state : snapshot) {
        found.emplace(state.path, &state);
    }
    return found;
}

std::string answer(const ItemState& state, const std::string& fact)
{
    for (const auto& [name, text] : state.facts) {
        if (name == fact) {
            return text;
        }
    }
    return "nothing";
}

} // namespace

std::string textOf(const std::vector<double>& numbers)
{
    std::string text;
    for (const auto number : numbers) {
        char one[40];
        // -0 and 0 are the same number.
        const auto written = std::to_chars(one, one + sizeof one, number == 0 ? 0.0 : number,
                                           std::chars_format::general, 9);
        text += (text.empty() ? "" : " ") + std::string(one, written.ptr);
    }
    return text;
}

std::string exactValue(const Attribute::Ptr& attribute)
{
    std::string text;
    if (attribute->hasValue()) {
        visitKind(attribute, [&](const auto& kind) {
            const auto value = kind.get();
            if constexpr (std::is_same_v<decltype(kind.get()), std::string>) {
                text = value;
            } else {
                text = textOf(numbersOf(value));
            }
        });
    }
    return text;
}

std::vector<SceneItem::Ptr> walk(const std::vector<Path>& roots, std::size_t most)
{
    std::vector<SceneItem::Ptr> items;
    std::deque<SceneItem::Ptr> ahead;
    for (const auto& root : roots) {
        ahead.push_back(Hierarchy::createItem(root));
    }
    while (!ahead.empty() && items.size() < most) {
        const auto item = ahead.front();
        ahead.pop_front();
        if (!item || item->runTimeId() != roots.front().runTimeId()) {
            continue; // a finding of its own, or a mounted item
        }
        items.push_back(item);
        if (const auto hierarchy = Hierarchy::hierarchy(item)) {
            const auto children = hierarchy->children();
            ahead.insert(ahead.begin(), children.begin(), children.end());
        }
    }
    return items;
}

Snapshot snapshot(const std::vector<Path>& roots, std::size_t most)
{
    Snapshot states;
    for (const auto& item : walk(roots, most)) {
        states.push_back(stateOf(item));
    }
    return states;
}

std::optional<Difference> difference(const Snapshot& expected, const Snapshot& seen)
{
    const auto there = byPath(seen);
    for (const auto& state : expected) {
        const auto found = there.find(state.path);
        if (found == there.end()) {
            return Difference{state.path, "the item", "no item at that path"};
        }
        for (const auto& [fact, text] : state.facts) {
            const auto other = answer(*found->second, fact);
            if (other != text) {
                return Difference{state.path, fact + ": " + text, fact + ": " + other};
            }
        }
        for (const auto& [fact, text] : found->second->facts) {
            if (answer(state, fact) == "nothing") {
                return Difference{state.path, fact + ": nothing", fact + ": " + text};
            }
        }
    }
    const auto known = byPath(expected);
    for (const auto& state : seen) {
        if (known.count(state.path) == 0) {
            return Difference{state.path, "no item at that path", "an item"};
        }
    }
    return std::nullopt;
}

std::vector<Change> changes(const Snapshot& before, const Snapshot& after)
{
    std::vector<Change> found;
    const auto then = byPath(before);
    for (const auto& state : after) {
        const auto known = then.find(state.path);
        if (known == then.end()) {
            continue;
        }
        for (const auto& [fact, text] : state.facts) {
            if (fact != "children" && answer(*known->second, fact) != text) {
                found.push_back({state.path, fact});
            }
        }
    }
    return found;
}

} // namespace Kiv_v4::conformance
