#pragma once

#include <memory>
#include <string>

#include "kiv/attribute.h"
#include "kiv/attributeInfo.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The attribute of that name of the item, as an object of the class of its type; null if there is
/// none.
///
/// The object looks the attribute up in the scene at each call. If the item is no longer at its
/// path, or has no attribute of that name and type, its operations throw `std::invalid_argument`
/// with the path and the name in the message; then `hasValue` and `hasMetadata` return false, and
/// name and type are unchanged. Setting a value or metadata announces one change, even if the value
/// is the same.
[[nodiscard]] Attribute::Ptr makeAttribute(const std::shared_ptr<Tree>& tree,
                                           const SceneItem::Ptr& item, const std::string& name);

/// The same on a new item.
[[nodiscard]] Attribute::Ptr makeAttribute(const std::shared_ptr<Tree>& tree,
                                           const AttributeInfo& attribute);

} // namespace Kiv_v4::memory
