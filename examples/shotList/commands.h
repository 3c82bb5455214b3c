#pragma once

#include <functional>
#include <string>

#include "entries.h"

/// Adds the entry that `make` gives as the last child of `parent`.
[[nodiscard]] Kiv::SceneItemResultUndoableCommand::Ptr
addCmd(const EntriesPtr& entries, const Kiv::Path& parent, const std::function<Entry()>& make);

/// Removes the entry at `path` with all that is under it.
[[nodiscard]] Kiv::UndoableCommand::Ptr removeCmd(const EntriesPtr& entries, const Kiv::Path& path);

/// Gives the entry at `path` another name.
[[nodiscard]] Kiv::SceneItemResultUndoableCommand::Ptr
renameCmd(const EntriesPtr& entries, const Kiv::Path& path, const std::string& name);

/// Gives the children of the entry at `parent` the order of `names`, which holds each once.
[[nodiscard]] Kiv::UndoableCommand::Ptr
reorderCmd(const EntriesPtr& entries, const Kiv::Path& parent, const std::list<std::string>& names);
