#pragma once

#include <memory>
#include <string>

#include "kiv/attribute.h"
#include "kiv/attributeInfo.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The attribute of that name of the item, as an object of the class of its type; null when there
/// is none.
///
/// The object looks the attribute up in the scene at each call. When the item is not at its path
/// any more, or has no attribute of that name and type, its operations throw
/// `std::invalid_argument` with the path and the name in the message; `hasValue` and `hasMetadata`
/// are false then, and name and type stay as they are. Each value that is set is announced once,
/// whether or not it differs from the old one, and so are metadata.
[[nodiscard]] Attribute::Ptr makeAttribute(const std::shared_ptr<Tree>& tree,
                                           const SceneItem::Ptr& item, const std::string& name);

/// The same on a new item.
[[nodiscard]] Attribute::Ptr makeAttribute(const std::shared_ptr<Tree>& tree,
                                           const AttributeInfo& attribute);

} // namespace Kiv_v4::memory
