#include "kiv/connectionHandler.h"

#include "kiv/runTimeMgr.h"

#include "detail/executeIfAny.h"

namespace Kiv_v4 {

ConnectionHandler::Ptr ConnectionHandler::connectionHandler(Rtid runTimeId)
{
    return RunTimeMgr::instance().connectionHandler(runTimeId);
}

ConnectionHandler::ConnectionHandler() = default;

ConnectionHandler::~ConnectionHandler() = default;

Connection::Ptr ConnectionHandler::connect(Attribute::Ptr const& src,
                                           Attribute::Ptr const& dst) const
{
    const auto command = connectCmd(src, dst);
    return detail::executeIfAny(command) ? command->connection() : nullptr;
}

Connection::Ptr ConnectionHandler::connect(AttributeInfo const& src, AttributeInfo const& dst) const
{
    const auto source = src.attribute();
    return connect(source, dst.attribute());
}

void ConnectionHandler::disconnect(Attribute::Ptr const& src, Attribute::Ptr const& dst) const
{
    detail::executeIfAny(disconnectCmd(src, dst));
}

void ConnectionHandler::disconnect(AttributeInfo const& src, AttributeInfo const& dst) const
{
    const auto source = src.attribute();
    disconnect(source, dst.attribute());
}

} // namespace Kiv_v4
