#include "logs.h"

namespace bound {

namespace {

/// The exception as Python sees it: the object that Python code raised, or what nanobind makes of a
/// C++ one.
nb::object raised(const std::exception_ptr& error)
{
    if (!error) {
        return nb::none();
    }
    const auto rethrow = nb::cpp_function([&] { std::rethrow_exception(error); });
    try {
        rethrow();
    } catch (nb::python_error& caught) {
        auto value = nb::borrow(caught.value());
        if (caught.traceback().is_valid()) {
            PyException_SetTraceback(value.ptr(), caught.traceback().ptr());
        }
        return value;
    }
    return nb::none();
}

int visitRecord(PyObject* self, visitproc visit, void* arg)
{
    Py_VISIT(Py_TYPE(self));
    if (nb::inst_ready(self)) {
        Py_VISIT(nb::inst_ptr<Record>(self)->error.ptr());
    }
    return 0;
}

int clearRecord(PyObject* self)
{
    if (nb::inst_ready(self)) {
        nb::inst_ptr<Record>(self)->error.reset();
    }
    return 0;
}

// A traceback leads to frames, and those lead anywhere.
PyType_Slot kRecordSlots[] = {
    {Py_tp_traverse, reinterpret_cast<void*>(&visitRecord)},
    {Py_tp_clear, reinterpret_cast<void*>(&clearRecord)},
    {0, nullptr},
};

} // namespace

Record::Record(const kiv::LogRecord& record)
    : function(record.function), file(record.file), line(record.line), message(record.message),
      error(raised(record.error))
{}

std::function<void(const kiv::LogRecord&)> recordReceiver(nb::callable receive)
{
    // Through nanobind's own wrapper, which knows when the interpreter has ended.
    return [receive =
                nb::cast<std::function<void(nb::object)>>(receive)](const kiv::LogRecord& record) {
        if (nb::is_alive()) {
            const nb::gil_scoped_acquire held;
            receive(nb::cast(Record(record)));
        }
    };
}

void bindLogs(nb::module_& module)
{
    Class<Record> type(module, "LogRecord", "LogRecord", nb::type_slots(kRecordSlots));
    type.field("function", &Record::function);
    type.field("file", &Record::file);
    type.field("line", &Record::line);
    type.field("message", &Record::message);
    type.field("error", &Record::error);
    function(
        module, "", "log",
        [](const std::string& message, const std::string& where, const std::string& file,
           int line) { kiv::log(where.c_str(), file.c_str(), line, message); },
        "message"_a, "function"_a = "", "file"_a = "", "line"_a = 0);
    function(
        module, "", "setLogListener",
        [](nb::object listener) {
            kiv::setLogListener(
                listener.is_none() ? nullptr : recordReceiver(nb::cast<nb::callable>(listener)));
        },
        "listener"_a.none());
    atExit([] { kiv::setLogListener({}); });
}

} // namespace bound
