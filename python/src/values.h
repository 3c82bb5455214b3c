#pragma once

#include "bound.h"

// Numbers of fixed count, and values of any type.

namespace bound {

/// The value as plain Python: `None`, `bool`, `int`, `float`, `str`, or one of the classes for
/// colours, vectors and matrices.
nb::object pythonValue(const kiv::AttributeVariant& value);

/// The value for an attribute of that type. Throws `TypeError` for what cannot be one.
kiv::AttributeVariant cppValue(nb::handle value, const std::string& type);

/// The value for an attribute of the type that the value tells: `int` is `Int`, `float` `Double`,
/// `None` no value. Throws `TypeError` for what cannot be one.
kiv::AttributeVariant ownValue(nb::handle value);

/// Metadata as plain Python; `None` for a value without a type.
nb::object pythonValue(const kiv::Value& value);

/// From `bool`, `int`, `float`, `str` or `Value`.
kiv::Value cppValue(nb::handle value);

} // namespace bound
