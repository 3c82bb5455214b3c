#pragma once

#include "kiv/setValueCommands.h"

namespace Kiv_v4 {

// For the sources that instantiate it.

template <class T>
SetValueUndoableCommand<T>::SetValueUndoableCommand(const Path& path) : BaseUndoableCommand(path)
{}

template <class T>
SetValueUndoableCommand<T>::~SetValueUndoableCommand() = default;

} // namespace Kiv_v4
