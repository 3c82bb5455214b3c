#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

// Commands that tell what they made. The result is there once the command has run.

/// Makes or changes one item.
class KIV_EXPORT SceneItemResultUndoableCommand : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SceneItemResultUndoableCommand>;

    ~SceneItemResultUndoableCommand() override;

    /// The item made or changed; null before the command has run.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;
};

/// Inserts one child under an item.
class KIV_EXPORT InsertChildCommand : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<InsertChildCommand>;

    ~InsertChildCommand() override;

    /// The child at its new path; null before the command has run.
    [[nodiscard]] virtual SceneItem::Ptr insertedChild() const = 0;
};

} // namespace Kiv_v4
