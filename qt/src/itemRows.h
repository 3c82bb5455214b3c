#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/host/propertyValue.h"
#include "kiv/qt/attributeModel.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4::qt {

/// A value that an item has: one of its attributes, or a property of one of its interfaces.
struct AttributeModel::Row
{
    std::string name;
    std::string label;
    std::string type;
    std::string unit{};
    std::vector<std::string> choices{};
    host::PropertyValue value{};
    std::optional<host::PropertyValue> standard{}; ///< Of the definition.
    bool isSettable = true;
    bool isMixed = false; ///< Another value in another item.

    bool operator==(const Row& other) const = default;
};

/// Rows under a title.
struct AttributeModel::Group
{
    std::string key; ///< The group of properties; empty for attributes.
    std::vector<Row> rows;

    bool operator==(const Group& other) const = default;
};

namespace detail {

using AttributeGroups = std::vector<AttributeModel::Group>;

/// Returns all that the item has, in groups of one row at least. Of what throws, complains and
/// leaves it out.
[[nodiscard]] AttributeGroups groupsOf(const SceneItem::Ptr& item);

/// Leaves the rows that the item has too, mixed where its value is another one.
void keepShared(AttributeGroups& groups, const SceneItem::Ptr& item);

/// Returns a command that sets the value in the item. Throws where there is no such row any more.
[[nodiscard]] UndoableCommand::Ptr setRowCmd(const SceneItem::Ptr& item, const std::string& group,
                                             const std::string& name,
                                             const host::PropertyValue& value);

/// Returns the title of a group of rows.
[[nodiscard]] QString titleOf(const std::string& group);

} // namespace detail

} // namespace Kiv_v4::qt
