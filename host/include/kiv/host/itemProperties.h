#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/attribute.h"
#include "kiv/export.h"
#include "kiv/host/propertyValue.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4::host {

// What the interfaces offer of an item as one table: what property editors, reports, documents and
// scripts read and write without a line for each property. Attributes, which each item has of its
// own, are told with the same types by `kiv/attributeVariant.h`.
//
//     ItemProperties lamp(item);
//     for (const auto* property : lamp.of(kLight)) {
//         show(property->label, valueText(*lamp.value(*property)), property->unit);
//     }
//     transaction.run(lamp.setCmd(*findProperty(kLight, "intensity"), 2.5f));

/// The groups of the table, each for one interface.
inline constexpr const char* kTransform = "transform";
inline constexpr const char* kCamera = "camera";
inline constexpr const char* kLight = "light";
inline constexpr const char* kObject = "object";
inline constexpr const char* kGraphNode = "graphNode";

/// The units of properties; other ones have none.
inline constexpr const char* kMillimetres = "mm";
inline constexpr const char* kSceneUnits = "scene units";
inline constexpr const char* kDegrees = "degrees";

/// One row of the table: a property, whichever item has it.
struct Property
{
    /// The interface that has it, as `kLight`.
    std::string group;
    std::string name;                   ///< As scripts and documents have it: `focalLength`.
    std::string label;                  ///< For people: `focal length`.
    std::string type;                   ///< As attributes have it: `Attribute::kFloat`.
    std::string unit{};                 ///< Empty for none.
    std::vector<std::string> choices{}; ///< Of a property of type `Attribute::kEnumString`.
    /// Whether it can be set at all.
    bool isSettable = true;
    std::string owner{}; ///< For messages: what items must be to have it, as in "is no spot light".
};

/// Returns all rows, group by group.
[[nodiscard]] KIV_EXPORT const std::vector<Property>& propertyTable();

/// Returns the row, or null when there is none.
[[nodiscard]] KIV_EXPORT const Property* findProperty(const std::string& group,
                                                      const std::string& name);

/// The properties of one item. Interface objects are made once, by the first question that needs
/// them.
///
/// **Lifetime.** Holds the item and interface objects, so it is for the moment: an item that is
/// renamed or moved needs a new one. Exceptions of run-times pass through.
class KIV_EXPORT ItemProperties
{
public:
    /// Throws `std::invalid_argument` for a null item.
    explicit ItemProperties(const SceneItem::Ptr& item);
    ItemProperties(const ItemProperties&) = delete;
    ItemProperties& operator=(const ItemProperties&) = delete;
    ~ItemProperties();

    /// Returns the rows of the group that the item has, in the order of the table.
    [[nodiscard]] std::vector<const Property*> of(const std::string& group) const;

    /// Returns the value, or nothing when the item does not have the property. `property` must be a
    /// row of the table.
    [[nodiscard]] std::optional<PropertyValue> value(const Property& property) const;

    /// Returns a command that sets the property, or null when its run-time refuses. Throws
    /// `std::invalid_argument` with the reason when the item does not have the property, when it
    /// cannot be set, and for a value of another type or that is none of the choices.
    [[nodiscard]] UndoableCommand::Ptr setCmd(const Property& property,
                                              const PropertyValue& value) const;

    struct Interfaces;

private:
    const std::unique_ptr<Interfaces> _interfaces;
};

} // namespace Kiv_v4::host
