#pragma once

#include <exception>
#include <memory>
#include <string>

#include "kiv/log.h"
#include "kiv/runTimeMgr.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::detail {

/// Runs `work`; a standard exception that escapes it is written to the log, under name, file and
/// line of the operation that the client called, and passes through unchanged. (The line is a
/// builtin, since Clang 14 lacks `std::source_location`.)
template <class Work>
auto logAndRethrow(const char* function, const char* file, Work work, int line = __builtin_LINE())
    -> decltype(work())
{
    try {
        return work();
    } catch (const std::exception& caught) {
        log(function, file, line, std::string("caught exception ") + caught.what() + "\n");
        throw;
    }
}

/// The common part of all entry points that take an item. Returns null for a null item, an item
/// without a path, or a run-time without a handler of that kind; otherwise the result of `make`
/// with the handler.
template <class Handler, class Make>
auto dispatch(const char* function, const char* file, const SceneItem::Ptr& item,
              std::shared_ptr<Handler> (RunTimeMgr::*handlerOf)(const Rtid&) const, Make make,
              int line = __builtin_LINE()) -> decltype(make(std::declval<Handler&>()))
{
    const auto work = [&]() -> decltype(make(std::declval<Handler&>())) {
        if (!item || item->path().empty()) {
            return nullptr;
        }
        const auto handler = (RunTimeMgr::instance().*handlerOf)(item->runTimeId());
        if (!handler) {
            return nullptr;
        }
        return make(*handler);
    };
    return logAndRethrow(function, file, work, line);
}

} // namespace Kiv_v4::detail
