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

// The properties that the interfaces offer for an item, as one table: property editors, reports,
// documents and scripts use it to read and write them without code for each property.
// `kiv/attributeVariant.h` reads and writes attributes, which differ from item to item, with the
// same types.
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

/// The units of properties; other properties have none.
inline constexpr const char* kMillimetres = "mm";
inline constexpr const char* kSceneUnits = "scene units";
inline constexpr const char* kDegrees = "degrees";

/// One row of the table: a property, independent of any item.
struct Property
{
    /// The group of its interface, such as `kLight`.
    std::string group;
    std::string name;                   ///< The name in scripts and documents: `focalLength`.
    std::string label;                  ///< The name for people: `focal length`.
    std::string type;                   ///< A type constant: `Attribute::kFloat`.
    std::string unit{};                 ///< Empty for none.
    std::vector<std::string> choices{}; ///< Of a property of type `Attribute::kEnumString`.
    /// Whether it can be set at all.
    bool isSettable = true;
    std::string owner{}; ///< The kind of item that has it, for messages: `spot light`.
};

/// Returns all rows, group by group.
[[nodiscard]] KIV_EXPORT const std::vector<Property>& propertyTable();

/// Returns the row; null if there is none.
[[nodiscard]] KIV_EXPORT const Property* findProperty(const std::string& group,
                                                      const std::string& name);

/// The properties of one item. The first query that needs an interface object makes it, once.
///
/// **Lifetime.** Holds the item and interface objects, so keep it only for a short time: after a
/// rename or a move of the item, you must make a new one. Exceptions of run-times pass through.
class KIV_EXPORT ItemProperties
{
public:
    /// Throws `std::invalid_argument` if the item is null.
    explicit ItemProperties(const SceneItem::Ptr& item);
    ItemProperties(const ItemProperties&) = delete;
    ItemProperties& operator=(const ItemProperties&) = delete;
    ~ItemProperties();

    /// Returns the rows of the group that the item has, in the order of the table.
    [[nodiscard]] std::vector<const Property*> of(const std::string& group) const;

    /// Returns the value; `std::nullopt` if the item does not have the property. `property` must be
    /// a row of the table.
    [[nodiscard]] std::optional<PropertyValue> value(const Property& property) const;

    /// Returns a command that sets the property; null if its run-time refuses. Throws
    /// `std::invalid_argument` with the reason if the item does not have the property, if it cannot
    /// be set, and if the value is of another type or is not one of the choices.
    [[nodiscard]] UndoableCommand::Ptr setCmd(const Property& property,
                                              const PropertyValue& value) const;

    struct Interfaces;

private:
    const std::unique_ptr<Interfaces> _interfaces;
};

} // namespace Kiv_v4::host
