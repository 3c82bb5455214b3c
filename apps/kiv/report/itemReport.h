#pragma once

#include <string>
#include <vector>

#include "kiv/document/workspace.h"
#include "kiv/sceneItem.h"

#include "report/reportSection.h"
#include "terminal/output.h"

namespace app {

// What the library's interfaces tell of an item, whatever its run-time. The item is not null; the
// sections of interfaces that it does not have are without facts. Exceptions of run-times pass
// through.

/// Where the item stands in the hierarchy.
[[nodiscard]] Section place(const Kiv_v4::SceneItem::Ptr& item);

/// Its attributes with type, value and metadata.
[[nodiscard]] Section attributes(const Kiv_v4::SceneItem::Ptr& item);

/// The connections that begin or end at its attributes.
[[nodiscard]] Section connections(const Kiv_v4::SceneItem::Ptr& item);

/// Its matrices and what its own is made of.
[[nodiscard]] Section transform(const Kiv_v4::SceneItem::Ptr& item);

/// The properties of a group, under its name.
[[nodiscard]] Section properties(const Kiv_v4::SceneItem::Ptr& item, const char* group);
[[nodiscard]] inline Section camera(const Kiv_v4::SceneItem::Ptr& item)
{
    return properties(item, host::kCamera);
}
[[nodiscard]] inline Section light(const Kiv_v4::SceneItem::Ptr& item)
{
    return properties(item, host::kLight);
}

/// One property, which the item has.
[[nodiscard]] Fact propertyFact(const host::ItemProperties& item, const host::Property& property);

/// Visibility, bounding box and materials.
[[nodiscard]] Section object(const Kiv_v4::SceneItem::Ptr& item);

/// The definition of its node type.
[[nodiscard]] Section nodeDefinition(const Kiv_v4::SceneItem::Ptr& item);

/// How a user interface shows it: icon, tooltip, context menu, place in a node graph.
[[nodiscard]] Section userInterface(const Kiv_v4::SceneItem::Ptr& item);

/// The path of the item as a string; null for no item.
[[nodiscard]] Json pathOf(const Kiv_v4::SceneItem::Ptr& item);

/// Writes all that one item offers. What one interface fails to tell gets a complaint that begins
/// with `name`, and the rest is shown; false then.
bool show(const document::Workspace& scene, const Kiv_v4::SceneItem::Ptr& item,
          const std::string& name, bool asJson, Output& output);

/// Writes a table with a row for each item and a column for each property or attribute that is
/// named, separated by commas; without names, for each property that one of the items has and that
/// is no matrix. Throws `std::runtime_error` for a name that none of the items has.
void showTable(const std::vector<Kiv_v4::SceneItem::Ptr>& items, const std::string& columns,
               bool asJson, Output& output);

} // namespace app
