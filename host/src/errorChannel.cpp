#include "kiv/host/errorChannel.h"

#include <utility>

#include "receivers.h"

namespace Kiv_v4::host {

namespace {

using Channels = detail::Receivers<const LogRecord&>;

Channels& channels()
{
    static auto& open =
        *new Channels("An error channel"); // never destroyed: channels may close late
    return open;
}

} // namespace

ErrorChannel::ErrorChannel(Receive receive)
    : _receive(std::make_shared<Receive>(std::move(receive)))
{
    if (channels().empty()) {
        setLogListener([](const LogRecord& record) { channels()(record); });
    }
    channels().add(_receive);
}

ErrorChannel::~ErrorChannel()
{
    channels().remove(_receive);
    if (channels().empty()) {
        setLogListener(nullptr);
    }
}

} // namespace Kiv_v4::host
