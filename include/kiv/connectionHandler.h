#pragma once

#include <memory>

#include "kiv/attribute.h"
#include "kiv/attributeInfo.h"
#include "kiv/connections.h"
#include "kiv/export.h"
#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// Makes, breaks and lists the connections between attributes of a run-time.
///
/// The command makers change nothing and return null if the run-time refuses, for instance because
/// the types do not match or an end is null. The conveniences execute the command and drop it;
/// hosts that want undo execute the command through their undo system. The conveniences that take
/// an `AttributeInfo` resolve it first; exceptions of `AttributeInfo::attribute` pass through.
class KIV_EXPORT ConnectionHandler
{
public:
    using Ptr = std::shared_ptr<ConnectionHandler>;

    /// The handler of a run-time; null if it has none.
    [[nodiscard]] static Ptr connectionHandler(Rtid runTimeId);

    ConnectionHandler();
    ConnectionHandler(const ConnectionHandler&) = delete;
    ConnectionHandler& operator=(const ConnectionHandler&) = delete;
    virtual ~ConnectionHandler();

    /// The connections of `item`; null if it has no attributes to connect.
    [[nodiscard]] virtual Connections::Ptr connections(const SceneItem::Ptr& item) const = 0;

    /// Returns a command that lets `src` feed `dst`; the command has the connection that it made.
    [[nodiscard]] virtual ConnectionResultUndoableCommand::Ptr
    connectCmd(const Attribute::Ptr& src, const Attribute::Ptr& dst) const = 0;

    /// Returns a command that breaks the connection from `src` to `dst`.
    [[nodiscard]] virtual UndoableCommand::Ptr disconnectCmd(const Attribute::Ptr& src,
                                                             const Attribute::Ptr& dst) const = 0;

    /// Connects and returns the new connection; null if the run-time refuses.
    Connection::Ptr connect(const Attribute::Ptr& src, const Attribute::Ptr& dst) const;
    Connection::Ptr connect(const AttributeInfo& src, const AttributeInfo& dst) const;

    /// Breaks the connection; does nothing if the run-time refuses.
    void disconnect(const Attribute::Ptr& src, const Attribute::Ptr& dst) const;
    void disconnect(const AttributeInfo& src, const AttributeInfo& dst) const;
};

} // namespace Kiv_v4
