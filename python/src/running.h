#pragma once

#include <nanobind/nanobind.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/vector.h>
#include <utility>
#include <vector>

#include "kiv/conformance/conformance.h"

namespace bound {

/// What opens a run-time in Python returns: an object, and the paths of the roots.
using MadeInPython = std::pair<nanobind::object, std::vector<Kiv_v4::Path>>;

/// The run-time, which the object's `close()` ends, or its end when it has none. For callers with
/// the interpreter's lock.
inline Kiv_v4::conformance::Running running(MadeInPython made)
{
    namespace nb = nanobind;
    Kiv_v4::conformance::Running running;
    running.roots = std::move(made.second);
    running.runTime = {made.first.release().ptr(), [](void* object) {
                           if (const nb::detail::cleanup_guard alive; alive) {
                               const auto runTime = nb::steal(static_cast<PyObject*>(object));
                               if (nb::hasattr(runTime, "close")) {
                                   runTime.attr("close")();
                               }
                           }
                       }};
    return running;
}

} // namespace bound
