#pragma once

#include <memory>

#include "kiv/export.h"

namespace Kiv_v4 {

class Attributes;
class SceneItem;

// Scene items and attribute sets passed through code that can carry only plain integers, such as a
// scripting binding.

/// Remembers the object by weak reference and returns its address; 0 for null. A second call
/// returns the same integer. Linear in the number of remembered objects, since it forgets those
/// that died.
[[nodiscard]] KIV_EXPORT unsigned long long getRawAddress(const std::shared_ptr<SceneItem>& item);
[[nodiscard]] KIV_EXPORT unsigned long long getRawAddress(const std::shared_ptr<Attributes>& attrs);

/// The remembered object at that address; null if none was remembered there or it has died. Linear
/// in the number of remembered objects.
[[nodiscard]] KIV_EXPORT std::shared_ptr<SceneItem> getSceneItemFromRaw(unsigned long long address);
[[nodiscard]] KIV_EXPORT std::shared_ptr<Attributes>
getAttributesFromRaw(unsigned long long address);

} // namespace Kiv_v4
