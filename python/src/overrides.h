#pragma once

#include <nanobind/trampoline.h>

#include "bound.h"

// Classes of the library that can be derived from in Python. What Python overrides is called for
// C++ callers: methods with arguments, and nouns as Python has them, that is as a property, a class
// attribute or an attribute of the object.

namespace bound {

/// The Python half of an object whose class is derived from `Bound` in Python.
class PythonHalf
{
public:
    explicit PythonHalf(void* object) : _half(object) {}

    /// Whether the class of the object defines `name` anew, below `bound`.
    [[nodiscard]] bool overrides(const nb::object& name, nb::handle bound) const
    {
        auto* const type = reinterpret_cast<PyObject*>(Py_TYPE(_half.base().ptr()));
        return type != bound.ptr() && found(type, name) != found(bound.ptr(), name);
    }

    [[nodiscard]] nb::handle self() const { return _half.base(); }

private:
    // Borrowed; the class keeps it.
    static const PyObject* found(PyObject* type, const nb::object& name)
    {
        return _PyType_Lookup(reinterpret_cast<PyTypeObject*>(type), name.ptr());
    }

    nanobind::detail::trampoline _half;
};

/// A Python name, made once and kept as long as the interpreter.
class Name
{
public:
    explicit Name(const char* cppName)
        : _name(nb::steal(PyUnicode_InternFromString(snakeCase(cppName).c_str())).release())
    {}

    [[nodiscard]] nb::object get() const { return nb::borrow(_name); }

private:
    nb::handle _name;
};

/// What must be overridden and is not.
[[noreturn]] void refuse(const PythonHalf& half, const nb::object& name);

/// `Trampoline` is derived from `Bound`, a class that is bound, and overrides its virtual functions
/// by the macros below.
template <class Bound_>
class Derivable : public Bound_
{
public:
    using Bound = Bound_;
    using Bound::Bound;

protected:
    PythonHalf _python{this};
};

} // namespace bound

// The formatter takes the const of functions for that of their results.
// clang-format off

// KIV_METHOD(result, (name)(parameters) const, name, (arguments)): calls the Python method, or else
// that of C++. KIV_NOUN reads the Python attribute. With PURE, Python must have it.

#define KIV_CALL_PYTHON(Result, name, call, otherwise)                                             \
    {                                                                                              \
        const nb::gil_scoped_acquire held;                                                         \
        static const bound::Name pythonName(#name);                                                \
        const auto pythonKey = pythonName.get();                                                   \
        if (!bound::DirectCall::take(*this, #name) &&                                              \
            this->_python.overrides(pythonKey, nb::type<Bound>())) {                               \
            return nb::cast<Result>(call);                                                         \
        }                                                                                          \
        otherwise;                                                                                 \
    }

#define KIV_METHOD(Result, name, parameters, arguments)                                            \
    Result name parameters override KIV_CALL_PYTHON(                                               \
        Result, name, this->_python.self().attr(pythonKey) arguments,                              \
        return Bound::name arguments)

#define KIV_CONST_METHOD(Result, name, parameters, arguments)                                      \
    Result name parameters const override KIV_CALL_PYTHON(                                         \
        Result, name, this->_python.self().attr(pythonKey) arguments,                              \
        return Bound::name arguments)

#define KIV_NOUN(Result, name)                                                                     \
    Result name() const override KIV_CALL_PYTHON(                                                  \
        Result, name, this->_python.self().attr(pythonKey), return Bound::name())

#define KIV_PURE_METHOD(Result, name, parameters, arguments)                                       \
    Result name parameters override KIV_CALL_PYTHON(                                               \
        Result, name, this->_python.self().attr(pythonKey) arguments,                              \
        bound::refuse(this->_python, pythonKey))

#define KIV_PURE_CONST_METHOD(Result, name, parameters, arguments)                                 \
    Result name parameters const override KIV_CALL_PYTHON(                                         \
        Result, name, this->_python.self().attr(pythonKey) arguments,                              \
        bound::refuse(this->_python, pythonKey))

#define KIV_PURE_NOUN(Result, name)                                                                \
    Result name() const override KIV_CALL_PYTHON(Result, name,                                     \
                                                 this->_python.self().attr(pythonKey),             \
                                                 bound::refuse(this->_python, pythonKey))

// clang-format on
