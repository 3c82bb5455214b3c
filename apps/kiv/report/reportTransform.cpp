#include <algorithm>
#include <iterator>

#include "kiv/host/itemProperties.h"
#include "kiv/host/matrix.h"
#include "kiv/pathString.h"
#include "kiv/transform3dRead.h"

#include "report/itemReport.h"

namespace app {

using namespace Kiv_v4;

namespace {

Fact matrixFact(const host::Property& property, const host::PropertyValue& matrix)
{
    auto value = json(matrix);
    auto lines = rowsOf(value);
    return {property.name, property.label, std::move(value), "", std::move(lines)};
}

/// In place of a world matrix that there is none of.
void addMissingWorld(std::vector<Fact>& facts, const SceneItem& item)
{
    facts.push_back({"worldMatrix", "world matrix", Json()});
    facts.push_back({"gatewayWithoutTransform", "gateway without transform",
                     PathString::string(host::gatewayWithoutTransform(item.path()))});
}

/// Whether the property is one of those that run-times may leave out, and then read as zero.
bool mayBeMissing(const host::Property& property)
{
    constexpr const char* names[] = {"shear", "rotatePivotTranslation", "scalePivotTranslation",
                                     "rotateAxis"};
    return std::ranges::find(names, property.name) != std::end(names);
}

} // namespace

Section transform(const SceneItem::Ptr& item)
{
    Section section{host::kTransform, host::kTransform};
    const host::ItemProperties all(item);
    for (const auto* property : all.of(host::kTransform)) {
        const auto value = *all.value(*property);
        if (property->type == Attribute::kMatrix4d) {
            section.facts.push_back(matrixFact(*property, value));
        } else if (!mayBeMissing(*property) || value != host::PropertyValue(Vector3d())) {
            section.facts.push_back(propertyFact(all, *property));
        }
        if (property->name == "matrix" && !host::worldMatrix(item)) {
            addMissingWorld(section.facts, *item);
        }
    }
    return section;
}

} // namespace app
