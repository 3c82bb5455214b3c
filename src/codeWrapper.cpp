#include "kiv/codeWrapper.h"

#include <exception>
#include <unordered_set>

#include "kiv/runTimeMgr.h"
#include "kiv/selection.h"

#include "detail/dispatch.h"

namespace Kiv_v4 {

CodeWrapper::CodeWrapper() = default;

CodeWrapper::~CodeWrapper() = default;

CodeWrapperHandler::CodeWrapperHandler() = default;

CodeWrapperHandler::~CodeWrapperHandler() = default;

CodeWrapper::Ptr CodeWrapperHandler::createCodeWrapper(const Selection&, const std::string&)
{
    return nullptr;
}

CodeWrapperContainer::CodeWrapperContainer(const Selection& selection,
                                           const std::string& operationName)
{
    std::unordered_set<Rtid> asked;
    for (const auto& item : selection) {
        const auto runTimeId = item->runTimeId();
        if (!asked.insert(runTimeId).second) {
            continue;
        }
        const auto handler = RunTimeMgr::instance().codeWrapperHandler(runTimeId);
        if (!handler || !handler->wraps(operationName)) {
            continue;
        }
        if (auto wrapper = handler->createCodeWrapper(selection, operationName)) {
            _wrappers.push_back(std::move(wrapper));
        }
    }
}

CodeWrapperContext::CodeWrapperContext(const CodeWrapperContainer& container,
                                       const std::string& subOperation)
    : _wrappers(container.wrappers()), _subOperation(subOperation)
{}

CodeWrapperContext::~CodeWrapperContext()
{
    try {
        detail::logAndRethrow("cleanup", "src/codeWrapper", [this] { cleanup(); });
    } catch (...) {
        // Logged; a destructor must not throw.
    }
}

void CodeWrapperContext::prelude()
{
    for (; _nbOpen < _wrappers.size(); ++_nbOpen) {
        _wrappers[_nbOpen]->prelude(_subOperation);
    }
}

void CodeWrapperContext::cleanup()
{
    std::exception_ptr first;
    while (_nbOpen > 0) {
        try {
            _wrappers[--_nbOpen]->cleanup(_subOperation);
        } catch (...) {
            first = first ? first : std::current_exception();
        }
    }
    if (first) {
        std::rethrow_exception(first);
    }
}

} // namespace Kiv_v4
