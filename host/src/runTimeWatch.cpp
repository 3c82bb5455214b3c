#include "kiv/host/runTimeWatch.h"

#include <utility>

#include "receivers.h"

namespace Kiv_v4::host {

namespace {

using Watches = detail::Receivers<RunTimeEvent, Rtid>;

Watches& watches()
{
    static auto& all =
        *new Watches("A watch of run-times"); // never destroyed: watches may end late
    return all;
}

} // namespace

RunTimeWatch::RunTimeWatch(Receive receive)
    : _receive(std::make_shared<Receive>(std::move(receive)))
{
    if (watches().empty()) {
        setRunTimeListener([](RunTimeEvent event, Rtid runTimeId) { watches()(event, runTimeId); });
    }
    watches().add(_receive);
}

RunTimeWatch::~RunTimeWatch()
{
    watches().remove(_receive);
    if (watches().empty()) {
        setRunTimeListener(nullptr);
    }
}

} // namespace Kiv_v4::host
