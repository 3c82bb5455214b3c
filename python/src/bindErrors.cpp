#include "bound.h"

namespace bound {

namespace {

/// An exception of the library as a class of `kiv` that is also one that Python programmers know.
template <class T>
void bindError(nb::module_& module, nb::handle error, const char* name, PyObject* alike)
{
    nb::exception<T> type(module, name, nb::make_tuple(error, nb::handle(alike)));
    type.attr("__doc__") = contract(name);
}

} // namespace

void bindErrors(nb::module_& module)
{
    const auto error = nb::steal(PyErr_NewExceptionWithDoc(
        "kiv.Error", "What the library reports, whatever the class.", nullptr, nullptr));
    module.attr("Error") = error;
    bindError<kiv::InvalidOperationOnPath>(module, error, "InvalidOperationOnPath",
                                           PyExc_ValueError);
    bindError<kiv::InvalidOperationOnPathSegment>(module, error, "InvalidOperationOnPathSegment",
                                                  PyExc_ValueError);
    bindError<kiv::EmptyPathSegment>(module, error, "EmptyPathSegment", PyExc_ValueError);
    bindError<kiv::InvalidPath>(module, error, "InvalidPath", PyExc_ValueError);
    bindError<kiv::InvalidPathComponentSeparator>(module, error, "InvalidPathComponentSeparator",
                                                  PyExc_ValueError);
    bindError<kiv::InvalidRunTimeId>(module, error, "InvalidRunTimeId", PyExc_LookupError);
    bindError<kiv::InvalidRunTimeName>(module, error, "InvalidRunTimeName", PyExc_LookupError);
    bindError<kiv::InvalidValueGet>(module, error, "InvalidValueGet", PyExc_TypeError);
    bindError<kiv::AssertionException>(module, error, "AssertionException", PyExc_AssertionError);
}

} // namespace bound
