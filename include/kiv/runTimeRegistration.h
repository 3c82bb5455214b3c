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
/// **Lifetime.** The destructor unregisters all of it and releases the handlers, those set later
/// included. It also unregisters all other separators of the id and its single-segment path
/// function, and makes the library forget raw addresses of objects that have died and the observers
/// of single items of the run-time (`Transform3d::addObserver(item, ...)` and the like).
///
/// **Unloading a plug-in.** You must destroy this object before the code of the handlers is
/// unloaded, and after
/// - every holder, selections and undo histories included, has released the run-time's items,
///   interface objects, attributes and commands;
/// - the plug-in has removed its observers from their subjects. Releasing them is not enough: until
///   a subject forgets a dead observer, its weak reference leads into the plug-in's code;
/// - the plug-in has replaced every path creator and string function that it gave to `PathString`,
///   since these serve all run-times.
///
/// Paths and values made in the plug-in may stay. With g++, you must compile the plug-in with
/// `-fno-gnu-unique`: otherwise an object with certain instances of templates, of
/// `std::make_shared` for one, stays loaded to the end of the process.
class KIV_EXPORT RunTimeRegistration
{
public:
    /// Throws `InvalidRunTimeName` if the name is already registered; then nothing is registered.
    RunTimeRegistration(const std::string& name, char separator,
                        const RunTimeMgr::Handlers& handlers = {});
    RunTimeRegistration(const RunTimeRegistration&) = delete;
    RunTimeRegistration& operator=(const RunTimeRegistration&) = delete;
    ~RunTimeRegistration();

    /// The id of the run-time.
    [[nodiscard]] Rtid id() const noexcept { return _id; }

private:
    const Rtid _id;
};

} // namespace Kiv_v4
