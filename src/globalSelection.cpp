#include "kiv/globalSelection.h"

#include "kiv/observableSelection.h"

#include "detail/singleton.h"

namespace Kiv_v4 {

namespace {

ObservableSelection::Ptr& installed()
{
    static detail::NoDestructor<ObservableSelection::Ptr> selection;
    static const detail::EmptiedAtExit<ObservableSelection::Ptr> emptied(selection);
    return *selection;
}

} // namespace

void GlobalSelection::initializeInstance(const ObservableSelection::Ptr& sel)
{
    detail::installSingleton(installed(), sel,
                             "Cannot initialize global selection more than once.");
}

const ObservableSelection::Ptr& GlobalSelection::get()
{
    return installed();
}

} // namespace Kiv_v4
