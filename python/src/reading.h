#pragma once

#include <stdexcept>

#include "bound.h"

namespace bound {

/// Returns what `work` does, which reads a scene file in Python. What Python raises because the
/// file cannot be read is what C++ expects: `std::runtime_error` with the reason.
template <class Work>
auto reading(const Work& work) -> decltype(work())
{
    const nb::gil_scoped_acquire held;
    try {
        return work();
    } catch (nb::python_error& error) {
        if (error.matches(PyExc_OSError) || error.matches(PyExc_RuntimeError) ||
            error.matches(PyExc_ValueError)) {
            const auto value = nb::borrow(error.value());
            const auto reason = nb::getattr(value, "strerror", nb::none());
            throw std::runtime_error(
                nb::cast<std::string>(nb::str(reason.is_none() ? value : reason)));
        }
        throw;
    }
}

} // namespace bound
