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
/// released then. So are further separators registered for the id and its single-segment path
/// function, by whomever they were given to `PathString`. Raw addresses of objects that have died
/// are forgotten, too, as are the observers of single items of the run-time
/// (`Transform3d::addObserver(item, ...)` and the like).
///
/// **Unloading a plug-in.** Destroy this object before the code of the handlers goes, and after
/// - everybody, selections and undo histories included, has released the run-time's items,
///   interface objects, attributes and commands;
/// - the plug-in has removed its observers from their subjects. Releasing them is not enough: until
///   a subject forgets a dead observer, what it keeps leads into the plug-in's code.
///
/// Paths and values made in the plug-in may stay; a path creator or string function that it gave to
/// `PathString`, which serve all run-times, is replaced first. With g++, compile the plug-in with
/// `-fno-gnu-unique`: without, an object with certain instances of templates, of `std::make_shared`
/// for one, stays loaded to the end of the process.
class KIV_EXPORT RunTimeRegistration
{
public:
    /// Throws `InvalidRunTimeName` when the name is registered already; nothing is registered then.
    RunTimeRegistration(const std::string& name, char separator,
                        const RunTimeMgr::Handlers& handlers = {});
    RunTimeRegistration(const RunTimeRegistration&) = delete;
    RunTimeRegistration& operator=(const RunTimeRegistration&) = delete;
    ~RunTimeRegistration();

    /// The id that the run-time was given.
    [[nodiscard]] Rtid id() const noexcept { return _id; }

private:
    const Rtid _id;
};

} // namespace Kiv_v4
