#include "kiv/material.h"
#include "kiv/object3d.h"

#include "report/itemReport.h"

namespace app {

using namespace Kiv_v4;

namespace {

Fact boundingBoxFact(const BoundingBox3d& box)
{
    Fact fact{"boundingBox", "bounding box", Json()};
    if (!box.empty()) {
        const auto unit = std::string(" ") + host::kSceneUnits;
        const auto least = json(box.min);
        const auto most = json(box.max);
        fact.value = {{"min", least}, {"max", most}};
        fact.lines = {textOf(least) + unit, textOf(most) + unit};
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
    auto section = properties(item, host::kObject);
    if (const auto object = Object3d::object3d(item)) {
        section.facts.push_back(boundingBoxFact(object->boundingBox()));
    }
    if (const auto material = Material::material(item)) {
        addMaterials(section.facts, *material);
    }
    return section;
}

} // namespace app
