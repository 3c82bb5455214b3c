#pragma once

#include <string>
#include <vector>

#include "kiv/attribute.h"
#include "kiv/undoableCommand.h"

#include "checking.h"

namespace Kiv_v4::conformance {

/// A command, and its purpose.
struct Edit
{
    std::string text; ///< Empty if the run-time refused.
    Path item;        ///< The item that it was made for.
    UndoableCommand::Ptr command;
    bool renames = false; ///< Whether it takes items away from their paths.
};

/// The families of edits: each makes one command for the item, chosen at random, or none.
using EditMaker = Edit (*)(Checking& checking, const std::vector<SceneItem::Ptr>& items,
                           const SceneItem::Ptr& item);
[[nodiscard]] const std::vector<EditMaker>& editMakers();

/// A random edit of a random item of the scene, made but not executed; one without a command if
/// nothing can be edited. An exception of a maker counts as a refusal.
[[nodiscard]] Edit randomEdit(Checking& checking);

/// A name for testing run-times: taken, empty, with separators, long, or an ordinary one.
[[nodiscard]] std::string randomName(Checking& checking, const SceneItem::Ptr& item);

/// A number that every type of attribute holds exactly.
[[nodiscard]] double randomNumber(Checking& checking);

/// A command that sets the attribute to a value made of such numbers; null if there is no value to
/// set, or the run-time refuses.
[[nodiscard]] UndoableCommand::Ptr randomSetCmd(Checking& checking,
                                                const Attribute::Ptr& attribute);

} // namespace Kiv_v4::conformance
