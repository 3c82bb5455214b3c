#include <array>
#include <cmath>
#include <cstring>
#include <nanobind/stl/array.h>

#include "values.h"

namespace bound {

namespace {

template <class T>
constexpr char kFormat = std::is_same_v<T, int>     ? 'i'
                         : std::is_same_v<T, float> ? 'f'
                                                    : 'd';

/// How a type of the library is a block of numbers: `Rows` by `Columns`, or `Rows` alone.
template <class T>
struct Numbers;

template <class T, std::size_t N>
struct Numbers<kiv::TypedVectorN<T, N>>
{
    using Element = T;
    static constexpr Py_ssize_t shape[] = {N};
    static auto& of(kiv::TypedVectorN<T, N>& value) { return value.vector; }
};

template <class T, std::size_t N>
struct Numbers<kiv::TypedColorN<T, N>>
{
    using Element = T;
    static constexpr Py_ssize_t shape[] = {N};
    static auto& of(kiv::TypedColorN<T, N>& value) { return value.color; }
};

template <class T, std::size_t N>
struct Numbers<kiv::TypedSquareMatrixN<T, N>>
{
    using Element = T;
    static constexpr Py_ssize_t shape[] = {N, N};
    static auto& of(kiv::TypedSquareMatrixN<T, N>& value) { return value.matrix; }
};

/// The buffer protocol: the numbers themselves, not a copy, for as long as the object.
template <class T>
int getBuffer(PyObject* self, Py_buffer* view, int flags)
{
    using Element = typename Numbers<T>::Element;
    static char format[] = {kFormat<Element>, '\0'};
    static Py_ssize_t shape[2] = {};
    static Py_ssize_t strides[2] = {};
    constexpr int dimensions = std::size(Numbers<T>::shape);
    Py_ssize_t step = sizeof(Element);
    for (int axis = dimensions; axis-- > 0;) {
        shape[axis] = Numbers<T>::shape[axis];
        strides[axis] = step;
        step *= shape[axis];
    }
    view->obj = Py_NewRef(self);
    view->buf = Numbers<T>::of(*nb::inst_ptr<T>(self)).data();
    view->len = step;
    view->readonly = 0;
    view->itemsize = sizeof(Element);
    view->format = (flags & PyBUF_FORMAT) != 0 ? format : nullptr;
    view->ndim = dimensions;
    view->shape = shape;
    view->strides = strides;
    view->suboffsets = nullptr;
    view->internal = nullptr;
    return 0;
}

template <class T>
PyType_Slot* bufferSlots()
{
    static PyType_Slot slots[] = {{Py_bf_getbuffer, reinterpret_cast<void*>(&getBuffer<T>)},
                                  {0, nullptr}};
    return slots;
}

/// Copies the numbers of a buffer of exactly this shape and type; returns false for anything else.
template <class T>
bool assignBuffer(T& to, nb::handle source)
{
    Py_buffer view;
    if (!PyObject_CheckBuffer(source.ptr()) ||
        PyObject_GetBuffer(source.ptr(), &view, PyBUF_FORMAT | PyBUF_C_CONTIGUOUS) != 0) {
        PyErr_Clear();
        return false;
    }
    const auto& shape = Numbers<T>::shape;
    const auto isAlike =
        view.format && view.format[0] == kFormat<typename Numbers<T>::Element> &&
        view.format[1] == '\0' &&
        std::equal(std::begin(shape), std::end(shape), view.shape, view.shape + view.ndim);
    if (isAlike) {
        std::memcpy(Numbers<T>::of(to).data(), view.buf, static_cast<std::size_t>(view.len));
    }
    PyBuffer_Release(&view);
    return isAlike;
}

template <class Element>
Element element(nb::handle number)
{
    Element result{};
    if (!nb::try_cast(number, result)) {
        throw nb::type_error("expected numbers");
    }
    return result;
}

template <class Element, std::size_t N>
void assign(std::array<Element, N>& to, nb::handle numbers)
{
    if (nb::len(numbers) != N) {
        throw nb::value_error(("expected " + std::to_string(N) + " elements").c_str());
    }
    std::size_t index = 0;
    for (auto number : numbers) {
        to[index++] = element<Element>(number);
    }
}

template <class Element, std::size_t N>
void assign(std::array<std::array<Element, N>, N>& to, nb::handle rows)
{
    if (nb::len(rows) != N) {
        throw nb::value_error(("expected " + std::to_string(N) + " rows").c_str());
    }
    std::size_t index = 0;
    for (auto row : rows) {
        assign(to[index++], row);
    }
}

std::size_t position(Py_ssize_t index, std::size_t size)
{
    const auto count = static_cast<Py_ssize_t>(size);
    if (index < 0) {
        index += count;
    }
    if (index < 0 || index >= count) {
        throw nb::index_error("no such element");
    }
    return static_cast<std::size_t>(index);
}

/// `name(1, 2, 3)`.
template <class T>
nb::str represented(nb::handle self)
{
    const auto& numbers = Numbers<T>::of(*nb::inst_ptr<T>(self));
    const auto listed = nb::steal<nb::str>(PyObject_Repr(nb::tuple(nb::cast(numbers)).ptr()));
    return nb::str("{}{}").format(self.type().attr("__name__"), listed);
}

/// What all blocks of numbers have: a sequence of numbers (of rows, for a matrix), made from any
/// other, which can be compared and shown, and whose numbers NumPy sees without a copy.
template <class T>
nb::class_<T> bindNumbers(nb::module_& module, const char* name, const char* key)
{
    using Access = Numbers<T>;
    nb::class_<T> type(module, name, contract(key), nb::type_slots(bufferSlots<T>()));
    type.def(nb::init<>());
    type.def(
        "__init__",
        [](T* self, const nb::sequence& numbers) {
            T value;
            if (!assignBuffer(value, numbers)) {
                assign(Access::of(value), numbers);
            }
            new (self) T(std::move(value));
        },
        "elements"_a);
    type.def("__len__", [](T& self) { return Access::of(self).size(); });
    type.def(
        "__getitem__",
        [](T& self, Py_ssize_t index) {
            auto& numbers = Access::of(self);
            return numbers[position(index, numbers.size())];
        },
        "index"_a);
    type.def(
        "__setitem__",
        [](T& self, Py_ssize_t index, const nb::object& number) {
            auto& numbers = Access::of(self);
            auto& place = numbers[position(index, numbers.size())];
            using Place = std::remove_reference_t<decltype(place)>;
            if constexpr (std::is_arithmetic_v<Place>) {
                place = element<Place>(number);
            } else {
                assign(place, number);
            }
        },
        "index"_a, "number"_a);
    type.def("__repr__", [](nb::handle self) { return represented<T>(self); });
    type.def(
        "__eq__", [](const T& self, const T& other) { return self == other; }, nb::is_operator());
    type.def(
        "__ne__", [](const T& self, const T& other) { return self != other; }, nb::is_operator());
    type.def("__hash__", [](T& self) { return nb::hash(nb::tuple(nb::cast(Access::of(self)))); });
    type.def("__copy__", [](const T& self) { return self; });
    nb::implicitly_convertible<nb::sequence, T>();
    return type;
}

template <class T>
void bindVector(nb::module_& module, const char* name)
{
    using Vector = T;
    auto type = bindNumbers<T>(module, name, "TypedVectorN");
    constexpr const char* names[] = {"x", "y", "z", "w"};
    const auto bindElement = [&](auto index) {
        constexpr std::size_t at = decltype(index)::value;
        if constexpr (at < std::tuple_size_v<decltype(Vector::vector)>) {
            type.def_prop_rw(
                names[at], [](const Vector& self) { return self.vector[at]; },
                [](Vector& self, typename Numbers<Vector>::Element number) {
                    self.vector[at] = number;
                });
        }
    };
    bindElement(std::integral_constant<std::size_t, 0>());
    bindElement(std::integral_constant<std::size_t, 1>());
    bindElement(std::integral_constant<std::size_t, 2>());
    bindElement(std::integral_constant<std::size_t, 3>());
}

template <class T>
nb::class_<T> bindColor(nb::module_& module, const char* name)
{
    auto type = bindNumbers<T>(module, name, "TypedColorN");
    type.def_prop_ro("r", [](const T& self) { return self.r(); });
    type.def_prop_ro("g", [](const T& self) { return self.g(); });
    type.def_prop_ro("b", [](const T& self) { return self.b(); });
    return type;
}

template <class T>
void bindMatrix(nb::module_& module, const char* name)
{
    auto type = bindNumbers<T>(module, name, "TypedSquareMatrixN");
    const auto product = [](const T& left, const T& right) { return left * right; };
    type.def("__mul__", product, nb::is_operator());
    type.def("__matmul__", product, nb::is_operator());
}

void bindValueTexts(nb::module_& module)
{
    const auto bindText = [&]<class T>(T*, const char* name) {
        Class<T> type(module, name);
        type.def(
            "__init__", [](T* self, std::string text) { new (self) T{std::move(text)}; }, "text"_a);
        type.field("text", &T::text);
        type.def("__str__", [](const T& self) { return self.text; });
        type.def(
            "__eq__", [](const T& self, const T& other) { return self == other; },
            nb::is_operator());
        type.def("__hash__", [](const T& self) { return nb::hash(nb::cast(self.text)); });
        type.def("__repr__", [name = std::string(name)](const T& self) {
            return nb::str("{}({!r})").format(name, self.text);
        });
    };
    bindText(static_cast<kiv::FilenameValue*>(nullptr), "FilenameValue");
    bindText(static_cast<kiv::EnumStringValue*>(nullptr), "EnumStringValue");
}

void bindValue(nb::module_& module)
{
    Class<kiv::Value> type(module, "Value");
    type.def(nb::init<>());
    type.def(nb::init<bool>(), nb::arg("value").noconvert());
    type.def(nb::init<int>(), nb::arg("value").noconvert());
    type.def(nb::init<double>(), nb::arg("value").noconvert());
    type.def(nb::init<std::string>(), nb::arg("value"));
    type.def_static(
        "of_float", [](float number) { return kiv::Value(number); }, "number"_a,
        "The value of a number of single precision.");
    type.property("typeName", &kiv::Value::typeName);
    type.method("get", [](const kiv::Value& self) { return pythonValue(self); });
    type.method(
        "safeGet",
        [](const kiv::Value& self, nb::object otherwise) {
            auto value = pythonValue(self);
            return value.is_none() || !nb::isinstance(value, otherwise.type()) ? otherwise : value;
        },
        nb::arg("default_value"));
    type.method(
        "isType",
        [](const kiv::Value& self, nb::handle wanted) {
            const auto value = pythonValue(self);
            return !value.is_none() && value.type().is(wanted);
        },
        "type"_a);
    type.def("__bool__", [](const kiv::Value& self) { return !self.empty(); });
    type.def(
        "__eq__", [](const kiv::Value& self, const kiv::Value& other) { return self == other; },
        nb::is_operator());
    type.def("__hash__",
             [](const kiv::Value& self) { return nb::hash(nb::cast(self.get<std::string>())); });
    type.def("__repr__", [](const kiv::Value& self) {
        return nb::str("Value({!r})").format(pythonValue(self));
    });
    nb::implicitly_convertible<bool, kiv::Value>();
    nb::implicitly_convertible<int, kiv::Value>();
    nb::implicitly_convertible<double, kiv::Value>();
    nb::implicitly_convertible<std::string, kiv::Value>();
}

void bindBox(nb::module_& module)
{
    using Box = kiv::BoundingBox3d;
    Class<Box> type(module, "BoundingBox3d");
    type.def(nb::init<>());
    type.def(nb::init<const kiv::Vector3d&, const kiv::Vector3d&>(), "minimum"_a, "maximum"_a);
    type.field("min", &Box::min);
    type.field("max", &Box::max);
    type.property("empty", &Box::empty);
    type.method("extend", nb::overload_cast<const kiv::Vector3d&>(&Box::extend), "point"_a);
    type.method("extend", nb::overload_cast<const Box&>(&Box::extend), "other"_a);
    type.def(
        "__eq__", [](const Box& self, const Box& other) { return self == other; },
        nb::is_operator());
    type.def("__repr__", [](const Box& self) {
        return self.empty() ? nb::str("BoundingBox3d()")
                            : nb::str("BoundingBox3d({}, {})")
                                  .format(nb::cast(self.min.vector), nb::cast(self.max.vector));
    });
}

} // namespace

nb::object pythonValue(const kiv::AttributeVariant& value)
{
    return std::visit(
        [](const auto& held) -> nb::object {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::monostate>) {
                return nb::none();
            } else if constexpr (std::is_same_v<Held, kiv::FilenameValue> ||
                                 std::is_same_v<Held, kiv::EnumStringValue>) {
                return nb::cast(held.text);
            } else {
                return nb::cast(held);
            }
        },
        value);
}

kiv::AttributeVariant cppValue(nb::handle value, const std::string& type)
{
    kiv::AttributeVariant result;
    if (value.is_none()) {
        return result;
    }
    const auto known = kiv::visitAttributeClass(type, [&](auto attributeClass) {
        using Type = decltype(attributeClass);
        typename Type::Get read{};
        // `bool` is a number to Python; here it is one only where nothing else is lost.
        constexpr auto isBool = std::is_same_v<typename Type::Get, bool>;
        if (isBool != PyBool_Check(value.ptr()) &&
            (isBool || std::is_arithmetic_v<typename Type::Get>)) {
            throw nb::type_error(("no value of an attribute of type " + type).c_str());
        }
        if (!nb::try_cast(value, read)) {
            throw nb::type_error(("no value of an attribute of type " + type).c_str());
        }
        result = Type::wrapped(std::move(read));
    });
    if (!known) {
        throw nb::type_error(("attributes of type " + type + " have no value").c_str());
    }
    return result;
}

kiv::AttributeVariant ownValue(nb::handle value)
{
    if (nb::isinstance<nb::float_>(value)) {
        return nb::cast<double>(value);
    }
    const char* type = nb::isinstance<nb::str>(value)     ? kiv::Attribute::kString
                       : nb::isinstance<nb::bool_>(value) ? kiv::Attribute::kBool
                       : nb::isinstance<nb::int_>(value)  ? kiv::Attribute::kInt
                                                          : kiv::Attribute::kGeneric;
    std::apply(
        [&](auto... classes) {
            const auto isOne = [&](auto attributeClass) {
                using Get = typename decltype(attributeClass)::Get;
                if constexpr (std::is_class_v<Get> && !std::is_same_v<Get, std::string>) {
                    if (nb::isinstance<Get>(value)) {
                        type = attributeClass.name;
                    }
                }
            };
            (isOne(classes), ...);
        },
        kiv::attributeClasses());
    return cppValue(value, type);
}

nb::object pythonValue(const kiv::Value& value)
{
    // A copy is read from its beginning, however much was read of the value.
    const kiv::Value fresh(value);
    if (fresh.isType<bool>()) {
        return nb::cast(fresh.get<bool>());
    }
    if (fresh.isType<int>()) {
        return nb::cast(fresh.get<int>());
    }
    if (fresh.isType<float>()) {
        return nb::cast(fresh.get<float>());
    }
    if (fresh.isType<double>()) {
        return nb::cast(fresh.get<double>());
    }
    return fresh.isType<std::string>() ? nb::cast(fresh.get<std::string>()) : nb::none();
}

kiv::Value cppValue(nb::handle value)
{
    return nb::cast<kiv::Value>(value);
}

void bindValues(nb::module_& module)
{
    bindVector<kiv::TypedVectorN<int, 3>>(module, "Int3");
    bindVector<kiv::TypedVectorN<float, 2>>(module, "Float2");
    bindVector<kiv::TypedVectorN<float, 3>>(module, "Float3");
    bindVector<kiv::TypedVectorN<float, 4>>(module, "Float4");
    bindVector<kiv::Vector3d>(module, "Vector3d");
    bindColor<kiv::Color3f>(module, "Color3f");
    bindColor<kiv::TypedColorN<float, 4>>(module, "Color4f")
        .def_prop_ro("a", [](const kiv::TypedColorN<float, 4>& self) { return self.color[3]; });
    bindMatrix<kiv::TypedSquareMatrixN<double, 3>>(module, "Matrix3d");
    bindMatrix<kiv::Matrix4d>(module, "Matrix4d");
    bindValueTexts(module);
    bindValue(module);
    bindBox(module);
}

} // namespace bound
