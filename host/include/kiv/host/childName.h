#pragma once

#include <string>

#include "kiv/export.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

class Transaction;

/// Returns `name`, or a similar name if a child of another run-time has it under the gateway
/// `parent`. A run-time keeps names unique only among its own children, but for selections and
/// other lookups by name, an own child and a mounted child of one name are the same item. Use the
/// result in commands that create, rename, group or move to `parent`, which must not be null.
///
/// Cost: linear in the children of a gateway, constant for other items.
[[nodiscard]] KIV_EXPORT std::string freeName(const SceneItem::Ptr& parent,
                                              const std::string& name);

/// Moves `item` under `parent`, before the child `before` or, if that is null, to the end, as steps
/// of `edits`. If a mounted child there has its name, renames it first. No argument but `before`
/// may be null. Returns the moved item. Throws `std::runtime_error`, which names the item, if a
/// run-time refuses; `edits` may then contain the renaming.
KIV_EXPORT SceneItem::Ptr moveUnder(Transaction& edits, const SceneItem::Ptr& item,
                                    const SceneItem::Ptr& parent, const SceneItem::Ptr& before);

} // namespace Kiv_v4::host
