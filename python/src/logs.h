#pragma once

#include "kiv/log.h"

#include "bound.h"

namespace bound {

/// A diagnostic record as a value.
struct Record
{
    explicit Record(const kiv::LogRecord& record);

    std::string function;
    std::string file;
    int line;
    std::string message;
    nb::object error; ///< The exception that was being handled, with its traceback; None without.
};

/// What C++ calls with each record, for a Python function.
std::function<void(const kiv::LogRecord&)> recordReceiver(nb::callable receive);

void bindLogs(nb::module_& module);

} // namespace bound
