#include "kiv/material.h"
#include "kiv/object3d.h"

#include "sections.h"

namespace app {

using namespace Kiv_v4;

namespace {

Fact boundingBoxFact(const BoundingBox3d& box)
{
    Fact fact{"boundingBox", "bounding box", Json()};
    if (!box.empty()) {
        const auto least = json(box.min);
        const auto most = json(box.max);
        fact.value = {{"min", least}, {"max", most}};
        fact.lines = {textOf(least) + kSceneUnits, textOf(most) + kSceneUnits};
    }
    return fact;
}

void addMaterials(std::vector<Fact>& facts, const Material& material)
{
    Fact fact{"materials", "materials", Json::array()};
    for (const auto& item : material.materials()) {
        fact.value.push_back(pathOf(item));
        fact.lines.push_back(textOf(fact.value.back()));
    }
    if (!fact.lines.empty()) {
        facts.push_back(std::move(fact));
    }
}

} // namespace

Section object(const SceneItem::Ptr& item)
{
    Section section{"object", "object"};
    if (const auto object = Object3d::object3d(item)) {
        section.facts = {{"visible", "visible", object->visibility()},
                         boundingBoxFact(object->boundingBox())};
    }
    if (const auto material = Material::material(item)) {
        addMaterials(section.facts, *material);
    }
    return section;
}

} // namespace app
