#include "kiv/connections.h"

#include <algorithm>
#include <iterator>

namespace Kiv_v4 {

namespace {

/// Whether a connection has the attribute at a wanted end.
auto hasAt(const Attribute& attribute, Connections::AttributeType type)
{
    return [info = AttributeInfo(attribute.sceneItem()->path(), attribute.name()),
            type](const Connection::Ptr& connection) {
        return ((type & Connections::Source) != 0 && connection->src() == info) ||
               ((type & Connections::Destination) != 0 && connection->dst() == info);
    };
}

} // namespace

Connections::Connections() = default;

Connections::~Connections() = default;

bool Connections::hasConnection(const Attribute::Ptr& attribute, AttributeType type) const
{
    const auto all = attribute ? allConnections() : std::vector<Connection::Ptr>();
    return !all.empty() && std::any_of(all.begin(), all.end(), hasAt(*attribute, type));
}

std::vector<Connection::Ptr> Connections::connections(const Attribute::Ptr& attribute,
                                                      AttributeType type) const
{
    std::vector<Connection::Ptr> found;
    if (attribute) {
        const auto all = allConnections();
        std::copy_if(all.begin(), all.end(), std::back_inserter(found), hasAt(*attribute, type));
    }
    return found;
}

} // namespace Kiv_v4
