#include "kiv/globalSelection.h"

#include "kiv/observableSelection.h"

#include "processWide.h"

namespace Kiv_v4 {

void GlobalSelection::initializeInstance(const ObservableSelection::Ptr& sel)
{
    detail::install(sel, "Cannot initialize global selection more than once.");
}

const ObservableSelection::Ptr& GlobalSelection::get()
{
    return detail::processWide<ObservableSelection::Ptr>();
}

} // namespace Kiv_v4
