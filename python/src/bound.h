#pragma once

#include <nanobind/nanobind.h>
#include <nanobind/operators.h>
#include <nanobind/stl/function.h>
#include <nanobind/stl/list.h>
#include <nanobind/stl/optional.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/set.h>
#include <nanobind/stl/shared_ptr.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/string_view.h>
#include <nanobind/stl/tuple.h>
#include <nanobind/stl/vector.h>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "kiv/kiv.h"

#include "directCall.h"
#include "dynamicTypes.h"

namespace bound {

namespace nb = nanobind;
namespace kiv = Kiv_v4;
using namespace nanobind::literals;

/// The Python name of a C++ name: `nbSegments` gives `nb_segments`, `kFloat` and `PreDelete`, as
/// constants, `FLOAT` and `PRE_DELETE`.
std::string snakeCase(std::string_view name);
std::string constantCase(std::string_view name);

/// The contract that stands in the C++ header at `Class::member`, in Python's names. Throws
/// `std::logic_error` when there is none, so that nothing is bound without a contract.
const char* contract(const std::string& key);

/// A class under its C++ name: its members are given by their C++ names, from which the Python
/// names and the docstrings come.
template <class T, class... Extra>
class Class : public nb::class_<T, Extra...>
{
public:
    using Base = nb::class_<T, Extra...>;

    /// `key` is the C++ name with the classes around it, when it is not `name`.
    template <class... More>
    Class(nb::handle scope, const char* name, std::string key, const More&... more)
        : Base(scope, name, contract(key), more...), _key(std::move(key))
    {}
    template <class... More>
    Class(nb::handle scope, const char* name, const char* key, const More&... more)
        : Class(scope, name, std::string(key), more...)
    {}
    template <class... More>
    explicit Class(nb::handle scope, const char* name, const More&... more)
        : Class(scope, name, std::string(name), more...)
    {}

    /// A method; `work` may be a function that takes the object first.
    template <class Work, class... More>
    Class& method(const char* name, Work&& work, const More&... more)
    {
        this->def(snakeCase(name).c_str(), direct<T>(name, std::forward<Work>(work)), doc(name),
                  more...);
        return *this;
    }

    /// What C++ has as a question or a noun without parameters.
    template <class Getter, class... More>
    Class& property(const char* name, Getter&& getter, const More&... more)
    {
        this->def_prop_ro(snakeCase(name).c_str(), direct<T>(name, std::forward<Getter>(getter)),
                          doc(name), more...);
        return *this;
    }

    /// The same, which can be assigned to, too.
    template <class Getter, class Setter>
    Class& settable(const char* name, Getter&& getter, Setter&& setter)
    {
        this->def_prop_rw(snakeCase(name).c_str(), std::forward<Getter>(getter),
                          std::forward<Setter>(setter), doc(name));
        return *this;
    }

    /// A public field of a plain record.
    template <class Field>
    Class& field(const char* name, Field T::*field)
    {
        this->def_rw(snakeCase(name).c_str(), field, doc(name));
        return *this;
    }

    template <class Work, class... More>
    Class& function(const char* name, Work&& work, const More&... more)
    {
        this->def_static(snakeCase(name).c_str(), std::forward<Work>(work), doc(name), more...);
        return *this;
    }

    /// A static constant, `kFloat`.
    template <class Value>
    Class& constant(const char* name, const Value& value)
    {
        this->attr(constantCase(name).c_str()) = nb::cast(value);
        return *this;
    }

private:
    const char* doc(const char* name) { return contract(_key + "::" + name); }

    std::string _key;
};

/// A function of a module, under its C++ name; `space` is what stands before it, `host::`.
template <class Work, class... More>
void function(nb::module_& module, const std::string& space, const char* name, Work&& work,
              const More&... more)
{
    module.def(snakeCase(name).c_str(), std::forward<Work>(work), contract(space + name), more...);
}

/// An enumeration under its C++ name; `values` are pairs of C++ names and values.
template <class T>
void enumeration(nb::handle scope, const char* name, const std::string& key,
                 std::initializer_list<std::pair<const char*, T>> values)
{
    nb::enum_<T> type(scope, name, contract(key), nb::is_arithmetic());
    for (const auto& [valueName, value] : values) {
        type.value(constantCase(valueName).c_str(), value, contract(key + "::" + valueName));
    }
}

/// What ends when Python does, or before: places of the process in which Python objects may stay.
void atExit(void (*clear)());

/// The functions of a module by which `kiv` ends what is installed, and tests ask what is bound.
void bindBookkeeping(nb::module_& module);

} // namespace bound
