#include "kiv/namedSelection.h"

#include <map>

#include "kiv/selection.h"

#include "processWide.h"

namespace Kiv_v4 {

namespace {

std::map<std::string, Selection::Ptr>& selections()
{
    return detail::processWide<std::map<std::string, Selection::Ptr>>();
}

} // namespace

const Selection::Ptr& NamedSelection::get(const std::string& name)
{
    auto& selection = selections()[name];
    if (!selection) {
        selection = std::make_shared<Selection>();
    }
    return selection;
}

void NamedSelection::remove(const std::string& name)
{
    selections().erase(name);
}

} // namespace Kiv_v4
