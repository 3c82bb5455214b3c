#pragma once

#include <string>

#include "kiv/export.h"
#include "kiv/rtid.h"
#include "kiv/runTimeMgr.h"

namespace Kiv_v4 {

/// A run-time's name, handlers and path component separator, registered for as long as this object
/// lives. A plug-in keeps one from load to unload.
///
///     RunTimeRegistration registration("my data model", '/');
///     RunTimeMgr::instance().setHierarchyHandler(registration.id(), handler);
///
/// **Lifetime.** The destructor takes all of it back, handlers set later included; they are
/// released then. Destroy it before the code of the handlers is unloaded.
class KIV_EXPORT RunTimeRegistration
{
public:
    /// Throws `InvalidRunTimeName` when the name is registered already; nothing is registered then.
    RunTimeRegistration(const std::string& name, char separator,
                        const RunTimeMgr::Handlers& handlers = {});
    RunTimeRegistration(const RunTimeRegistration&) = delete;
    RunTimeRegistration& operator=(const RunTimeRegistration&) = delete;
    ~RunTimeRegistration();

    [[nodiscard]] Rtid id() const noexcept { return _id; }

private:
    const char _separator;
    const Rtid _id;
};

} // namespace Kiv_v4
