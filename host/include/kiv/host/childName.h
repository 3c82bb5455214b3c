#pragma once

#include <string>

#include "kiv/export.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

/// Returns `name`, or a similar name if a child of another run-time has it under the gateway
/// `parent`. A run-time keeps names unique only among its own children, but for selections and
/// other lookups by name, an own child and a mounted child of one name are the same item. Use the
/// result in commands that create, rename, group or move to `parent`, which must not be null.
///
/// Cost: linear in the children of a gateway, constant for other items.
[[nodiscard]] KIV_EXPORT std::string freeName(const SceneItem::Ptr& parent,
                                              const std::string& name);

} // namespace Kiv_v4::host
