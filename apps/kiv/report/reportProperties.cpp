#include "kiv/host/itemProperties.h"

#include "report/itemReport.h"

namespace app {

using namespace Kiv_v4;

Fact propertyFact(const host::ItemProperties& item, const host::Property& property)
{
    return {property.name, property.label, json(*item.value(property)), property.unit};
}

Section properties(const SceneItem::Ptr& item, const char* group)
{
    Section section{group, group};
    const host::ItemProperties all(item);
    for (const auto* property : all.of(group)) {
        section.facts.push_back(propertyFact(all, *property));
    }
    return section;
}

} // namespace app
