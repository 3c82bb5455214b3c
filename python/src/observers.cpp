#include "observers.h"

namespace bound {

namespace {

int visitObservation(PyObject* self, visitproc visit, void* arg)
{
    Py_VISIT(Py_TYPE(self));
    if (nb::inst_ready(self)) {
        const auto* const observation = nb::inst_ptr<Observation>(self);
        Py_VISIT(observation->subject().ptr());
        if (observation->isOpen()) {
            Py_VISIT(observation->observer()->function().ptr());
        }
    }
    return 0;
}

int clearObservation(PyObject* self)
{
    if (nb::inst_ready(self)) {
        nb::inst_ptr<Observation>(self)->close();
    }
    return 0;
}

PyType_Slot kObservationSlots[] = {
    {Py_tp_traverse, reinterpret_cast<void*>(&visitObservation)},
    {Py_tp_clear, reinterpret_cast<void*>(&clearObservation)},
    {0, nullptr},
};

} // namespace

nb::object told(const kiv::Notification& notification)
{
    auto known = nb::find(notification);
    return known.is_valid() ? known : nb::cast(notification, nb::rv_policy::copy);
}

FunctionObserver::FunctionObserver(nb::callable function) : _function(std::move(function)) {}

FunctionObserver::~FunctionObserver()
{
    if (nb::is_alive()) {
        const nb::gil_scoped_acquire held;
        _function.reset();
    } else {
        static_cast<void>(_function.release());
    }
}

void FunctionObserver::operator()(const kiv::Notification& notification)
{
    const nb::gil_scoped_acquire held;
    const auto function = _function; // may end its own observation
    function(told(notification));
}

Observation::Observation(std::shared_ptr<FunctionObserver> observer, nb::object subject,
                         Remove remove)
    : _observer(std::move(observer)), _subject(std::move(subject)), _remove(std::move(remove))
{}

Observation::~Observation()
{
    if (_observer &&
        PyErr_WarnEx(PyExc_ResourceWarning,
                     "an observer was dropped and observes nothing any more: keep what "
                     "add_observer gives, and close it in the end",
                     1) < 0) {
        PyErr_WriteUnraisable(_observer->function().ptr());
    }
    close();
}

void Observation::close()
{
    if (!_observer) {
        return;
    }
    const auto observer = std::move(_observer);
    const auto subject = std::move(_subject);
    std::exchange(_remove, nullptr)(observer);
}

void bindObservation(nb::module_& module)
{
    nb::class_<Observation> type(
        module, "Observation", nb::type_slots(kObservationSlots),
        "An observer at its subject, as `add_observer` gives it. It observes "
        "until `close()`, the end of a `with` block, or the end of this object: "
        "keep it.");
    type.def("close", &Observation::close,
             "Ends the observation; nothing happens when it has ended.");
    type.def_prop_ro("is_open", &Observation::isOpen, "Whether it observes.");
    type.def_prop_ro(
        "function",
        [](const Observation& self) -> nb::object {
            return self.isOpen() ? nb::object(self.observer()->function()) : nb::none();
        },
        "What is called; None once it is closed.");
    type.def("__enter__", [](nb::object self) { return self; });
    type.def("__exit__", [](Observation& self, nb::args) { self.close(); });
}

} // namespace bound
