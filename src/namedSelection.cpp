#include "kiv/namedSelection.h"

#include <map>

#include "kiv/selection.h"

#include "detail/singleton.h"

namespace Kiv_v4 {

namespace {

using Selections = std::map<std::string, Selection::Ptr>;

Selections& selections()
{
    static detail::NoDestructor<Selections> named;
    static const detail::EmptiedAtExit<Selections> emptied(named);
    return *named;
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
