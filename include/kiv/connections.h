#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "kiv/attribute.h"
#include "kiv/connection.h"
#include "kiv/export.h"

namespace Kiv_v4 {

/// The connections of one scene item: those that have one of its attributes at either end.
class KIV_EXPORT Connections
{
public:
    using Ptr = std::shared_ptr<Connections>;

    /// The ends of a connection at which an attribute is looked for: a set of flags.
    enum AttributeType : std::uint8_t {
        Source = 1,
        Destination = 2,
        SourceOrDestination = Source | Destination
    };

    Connections();
    Connections(const Connections&) = delete;
    Connections& operator=(const Connections&) = delete;
    virtual ~Connections();

    /// All connections of the item, each once.
    [[nodiscard]] virtual std::vector<Connection::Ptr> allConnections() const = 0;

    /// Whether `connections(attribute, type)` is not empty.
    [[nodiscard]] virtual bool hasConnection(const Attribute::Ptr& attribute,
                                             AttributeType type) const;

    /// The connections of the item that have `attribute` at one of the ends that `type` names. An
    /// attribute is at an end if the path of its item and its name are those of the end. Returns
    /// none for a null attribute. Linear in the number of the item's connections.
    [[nodiscard]] virtual std::vector<Connection::Ptr> connections(const Attribute::Ptr& attribute,
                                                                   AttributeType type) const;
};

} // namespace Kiv_v4
