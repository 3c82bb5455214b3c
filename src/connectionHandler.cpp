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

Connection::Ptr ConnectionHandler::connect(const Attribute::Ptr& src,
                                           const Attribute::Ptr& dst) const
{
    const auto command = connectCmd(src, dst);
    return detail::executeIfAny(command) ? command->connection() : nullptr;
}

Connection::Ptr ConnectionHandler::connect(const AttributeInfo& src, const AttributeInfo& dst) const
{
    const auto source = src.attribute();
    return connect(source, dst.attribute());
}

void ConnectionHandler::disconnect(const Attribute::Ptr& src, const Attribute::Ptr& dst) const
{
    detail::executeIfAny(disconnectCmd(src, dst));
}

void ConnectionHandler::disconnect(const AttributeInfo& src, const AttributeInfo& dst) const
{
    const auto source = src.attribute();
    disconnect(source, dst.attribute());
}

} // namespace Kiv_v4
