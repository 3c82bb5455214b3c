#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

class Attribute;
class Connection;
class Path;

// Commands with a result, which exists once the command has run.

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

/// Adds or renames an attribute.
class KIV_EXPORT AttributeResultUndoableCommand : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<AttributeResultUndoableCommand>;

    ~AttributeResultUndoableCommand() override;

    /// The attribute added or renamed; null before the command has run.
    [[nodiscard]] virtual std::shared_ptr<Attribute> attribute() const = 0;
};

/// Connects two attributes.
class KIV_EXPORT ConnectionResultUndoableCommand : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<ConnectionResultUndoableCommand>;

    ~ConnectionResultUndoableCommand() override;

    /// The connection made; null before the command has run.
    [[nodiscard]] virtual std::shared_ptr<Connection> connection() const = 0;
};

/// Makes another item, such as a duplicate, for each item of a selection.
class KIV_EXPORT SelectionUndoableCommand : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SelectionUndoableCommand>;

    ~SelectionUndoableCommand() override;

    /// The item that the command made for the selected item at `sourcePath`; null if that was not
    /// selected, or before the command has run.
    [[nodiscard]] virtual SceneItem::Ptr targetItem(const Path& sourcePath) const = 0;
};

} // namespace Kiv_v4
