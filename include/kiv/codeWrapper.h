#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

class Selection;

/// The work of a run-time around a batch of edits: `prelude` before it, `cleanup` after it. It may
/// hold state from one to the other, such as a suspended evaluation.
class KIV_EXPORT CodeWrapper
{
public:
    using Ptr = std::shared_ptr<CodeWrapper>;

    CodeWrapper();
    CodeWrapper(const CodeWrapper&) = delete;
    CodeWrapper& operator=(const CodeWrapper&) = delete;
    virtual ~CodeWrapper();

    /// `subOperation` names the run that follows: "execute", "undo" or "redo" for a batch command.
    virtual void prelude(const std::string& subOperation) = 0;

    /// Called once for each prelude that returned, even if the batch threw.
    virtual void cleanup(const std::string& subOperation) = 0;
};

/// The wrappers of one operation on a selection: one from each run-time that the selection touches
/// and that supplies one, in the order in which the selection reaches the run-times.
class KIV_EXPORT CodeWrapperContainer
{
public:
    CodeWrapperContainer(const Selection& selection, const std::string& operationName);

    /// The wrappers, in the order of their preludes.
    [[nodiscard]] const std::vector<CodeWrapper::Ptr>& wrappers() const noexcept
    {
        return _wrappers;
    }

private:
    std::vector<CodeWrapper::Ptr> _wrappers;
};

/// Brackets one run of an operation with the preludes and clean-ups of a container.
///
///     CodeWrapperContext context(container, "undo");
///     context.prelude();
///     // the work
///     context.cleanup(); // or left to the destructor, when the work throws
class KIV_EXPORT CodeWrapperContext
{
public:
    /// `container` must outlive the context. Runs nothing yet.
    CodeWrapperContext(const CodeWrapperContainer& container, const std::string& subOperation);
    CodeWrapperContext(const CodeWrapperContext&) = delete;
    CodeWrapperContext& operator=(const CodeWrapperContext&) = delete;

    /// Runs the clean-ups that are still due. Drops their exceptions and logs the first one if it
    /// derives from `std::exception`.
    ~CodeWrapperContext();

    /// Runs the prelude of each wrapper. If one throws, the exception passes through; the wrappers
    /// whose preludes ran still have to be cleaned up.
    void prelude();

    /// Runs the clean-up of each wrapper whose prelude ran, in reverse order, and all of them even
    /// if one throws; rethrows the first exception at the end.
    void cleanup();

private:
    const std::vector<CodeWrapper::Ptr>& _wrappers;
    const std::string _subOperation;
    std::size_t _nbOpen = 0;
};

} // namespace Kiv_v4

#include "kiv/codeWrapperHandler.h" // for code that knows this header alone
