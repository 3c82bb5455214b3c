#include "detail/setValueCommand.h"

namespace Kiv_v4 {

template <class T>
SetValue2UndoableCommand<T>::SetValue2UndoableCommand(const Path& path) : BaseUndoableCommand(path)
{}

template <class T>
SetValue2UndoableCommand<T>::~SetValue2UndoableCommand() = default;

template <class T>
SetValue3UndoableCommand<T>::SetValue3UndoableCommand(const Path& path) : BaseUndoableCommand(path)
{}

template <class T>
SetValue3UndoableCommand<T>::~SetValue3UndoableCommand() = default;

template <class T>
SetValue4UndoableCommand<T>::SetValue4UndoableCommand(const Path& path) : BaseUndoableCommand(path)
{}

template <class T>
SetValue4UndoableCommand<T>::~SetValue4UndoableCommand() = default;

template class SetValueUndoableCommand<bool>;
template class SetValueUndoableCommand<int>;
template class SetValueUndoableCommand<float>;
template class SetValueUndoableCommand<double>;
template class SetValueUndoableCommand<const TypedColorN<float, 3>&>;
template class SetValueUndoableCommand<const TypedColorN<float, 4>&>;
template class SetValueUndoableCommand<const TypedSquareMatrixN<double, 3>&>;
template class SetValueUndoableCommand<const TypedSquareMatrixN<double, 4>&>;
template class SetValue2UndoableCommand<float>;
template class SetValue3UndoableCommand<float>;
template class SetValue3UndoableCommand<double>;
template class SetValue4UndoableCommand<float>;

} // namespace Kiv_v4
