#pragma once

#include <QVariant>

#include "kiv/qt/attributeModel.h"

namespace Kiv_v4::qt::detail {

// What a model of attributes shows in its cells, by the roles of Qt and its own.

/// The title of a group.
[[nodiscard]] QVariant groupData(const AttributeModel::Group& group, int role);

/// The name of a value, the value, and its unit.
[[nodiscard]] QVariant labelData(const AttributeModel::Row& row, int role);
[[nodiscard]] QVariant valueData(const AttributeModel::Row& row, int role);
[[nodiscard]] QVariant unitData(const AttributeModel::Row& row, int role);

} // namespace Kiv_v4::qt::detail
