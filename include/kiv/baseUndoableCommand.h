#pragma once

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// A command on one item, which it remembers by path.
class KIV_EXPORT BaseUndoableCommand : public UndoableCommand
{
public:
    explicit BaseUndoableCommand(const Path& path);
    ~BaseUndoableCommand() override;

    /// The path of the item that the command acts on.
    [[nodiscard]] const Path& path() const noexcept { return _path; }

private:
    const Path _path;
};

} // namespace Kiv_v4
