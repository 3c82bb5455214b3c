#pragma once

#include "kiv/baseUndoableCommand.h"
#include "kiv/export.h"
#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"

namespace Kiv_v4 {

// Commands that set a value of an item and can set another value after they were executed, for
// interactive manipulation: it executes one command, calls `set` again and again while the user
// drags, and leaves one entry in the undo history. `set` changes the item at once and returns false
// if the run-time refuses; `redo` sets the last value again.

/// Sets one value.
template <class T>
class KIV_EXPORT SetValueUndoableCommand : public BaseUndoableCommand
{
public:
    explicit SetValueUndoableCommand(const Path& path);
    ~SetValueUndoableCommand() override;

    /// Sets the item to `value` at once. Returns false if the run-time refuses.
    virtual bool set(T value) = 0;
};

/// Sets two values.
template <class T>
class KIV_EXPORT SetValue2UndoableCommand : public BaseUndoableCommand
{
public:
    explicit SetValue2UndoableCommand(const Path& path);
    ~SetValue2UndoableCommand() override;

    /// Sets the item to both values at once. Returns false if the run-time refuses.
    virtual bool set(T first, T second) = 0;
};

/// Sets three values.
template <class T>
class KIV_EXPORT SetValue3UndoableCommand : public BaseUndoableCommand
{
public:
    explicit SetValue3UndoableCommand(const Path& path);
    ~SetValue3UndoableCommand() override;

    /// Sets the item to the three values at once. Returns false if the run-time refuses.
    virtual bool set(T first, T second, T third) = 0;
};

/// Sets four values.
template <class T>
class KIV_EXPORT SetValue4UndoableCommand : public BaseUndoableCommand
{
public:
    explicit SetValue4UndoableCommand(const Path& path);
    ~SetValue4UndoableCommand() override;

    /// Sets the item to the four values at once. Returns false if the run-time refuses.
    virtual bool set(T first, T second, T third, T fourth) = 0;
};

extern template class SetValueUndoableCommand<bool>;
extern template class SetValueUndoableCommand<int>;
extern template class SetValueUndoableCommand<float>;
extern template class SetValueUndoableCommand<double>;
extern template class SetValueUndoableCommand<const TypedColorN<float, 3>&>;
extern template class SetValueUndoableCommand<const TypedColorN<float, 4>&>;
extern template class SetValueUndoableCommand<const TypedSquareMatrixN<double, 3>&>;
extern template class SetValueUndoableCommand<const TypedSquareMatrixN<double, 4>&>;
extern template class SetValue2UndoableCommand<float>;
extern template class SetValue3UndoableCommand<float>;
extern template class SetValue3UndoableCommand<double>;
extern template class SetValue4UndoableCommand<float>;

/// Set values of that type. `light.h` has the ones for the properties of lights.
using SetBoolUndoableCommand = SetValueUndoableCommand<bool>;
using SetIntUndoableCommand = SetValueUndoableCommand<int>;
using SetFloatUndoableCommand = SetValueUndoableCommand<float>;
using SetDoubleUndoableCommand = SetValueUndoableCommand<double>;
using SetColor3fUndoableCommand = SetValueUndoableCommand<const TypedColorN<float, 3>&>;
using SetColor4fUndoableCommand = SetValueUndoableCommand<const TypedColorN<float, 4>&>;
using SetMatrix3dUndoableCommand = SetValueUndoableCommand<const TypedSquareMatrixN<double, 3>&>;
using SetMatrix4dUndoableCommand = SetValueUndoableCommand<const TypedSquareMatrixN<double, 4>&>;
using SetFloat2UndoableCommand = SetValue2UndoableCommand<float>;
using SetFloat3UndoableCommand = SetValue3UndoableCommand<float>;
using SetDouble3UndoableCommand = SetValue3UndoableCommand<double>;
using SetFloat4UndoableCommand = SetValue4UndoableCommand<float>;

} // namespace Kiv_v4
