#pragma once

#include <string>

#include "kiv/export.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

/// Returns `name`, or a name like it when a child of another run-time has it under the gateway
/// `parent`. Run-times keep names apart among their own children only, but own and mounted children
/// of one name are one item to selections and whatever else looks items up by their names. Give it
/// to commands that create, rename, group or move to `parent`, which must not be null.
///
/// Cost: linear in the children of a gateway, constant for other items.
[[nodiscard]] KIV_EXPORT std::string freeName(const SceneItem::Ptr& parent,
                                              const std::string& name);

} // namespace Kiv_v4::host
