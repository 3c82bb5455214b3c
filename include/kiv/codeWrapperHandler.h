#pragma once

#include <memory>
#include <string>

#include "kiv/codeWrapper.h"
#include "kiv/export.h"

namespace Kiv_v4 {

/// Makes a run-time's code wrappers. A run-time installs its handler with
/// `RunTimeMgr::setCodeWrapperHandler`; unregistering the run-time removes it.
class KIV_EXPORT CodeWrapperHandler
{
public:
    using Ptr = std::shared_ptr<CodeWrapperHandler>;

    CodeWrapperHandler();
    CodeWrapperHandler(const CodeWrapperHandler&) = delete;
    CodeWrapperHandler& operator=(const CodeWrapperHandler&) = delete;
    virtual ~CodeWrapperHandler();

    /// Whether the run-time wants to wrap operations of that name; otherwise `createCodeWrapper` is
    /// not called.
    [[nodiscard]] virtual bool wraps(const std::string& operationName) const = 0;

    /// A wrapper for the operation `name` on `selection`, which holds items of this run-time and
    /// may hold others. By default returns null, for no wrapper.
    [[nodiscard]] virtual CodeWrapper::Ptr createCodeWrapper(const Selection& selection,
                                                             const std::string& name);
};

} // namespace Kiv_v4
