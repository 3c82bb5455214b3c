#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kiv/host/itemProperties.h"

namespace Kiv_v4::document {

// The properties in documents.

/// A property in a document, and the value of a new item if that can be left out.
struct StoredProperty
{
    const host::Property* property;
    std::optional<host::PropertyValue> initial{};
};
using PropertyList = std::vector<StoredProperty>;

/// Returns those of items in memory: all of the group that can be set. `group` must be one of
/// transforms, cameras, lights and nodes of graphs.
[[nodiscard]] const PropertyList& propertiesOf(const std::string& group);

/// Returns those of the transforms of scene files' items: the matrix, and the set factors that it
/// does not determine exactly.
[[nodiscard]] const PropertyList& fileTransformProperties();

/// Returns whether items are shown.
[[nodiscard]] const host::Property& visibleProperty();

/// Returns whether two values are the same bit for bit, which distinguishes 0 from -0.
[[nodiscard]] bool sameBits(const host::PropertyValue& left, const host::PropertyValue& right);

} // namespace Kiv_v4::document
