#pragma once

#include <memory>
#include <vector>

#include "kiv/connectionHandler.h"
#include "kiv/connections.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The connections of one item, looked up in the scene at each call: attribute by attribute, its
/// source before its destinations.
class MemoryConnections : public Connections
{
public:
    MemoryConnections(std::shared_ptr<Tree> tree, SceneItem::Ptr item);

    [[nodiscard]] std::vector<Connection::Ptr> allConnections() const override;

private:
    const std::shared_ptr<Tree> _tree;
    const SceneItem::Ptr _item;
};

/// Records connections between attributes of the scene; they transfer no values. Attributes of the
/// same type, or one of them generic, can be connected; an attribute is fed by at most one other.
class MemoryConnectionHandler : public ConnectionHandler
{
public:
    explicit MemoryConnectionHandler(std::shared_ptr<Tree> tree);

    [[nodiscard]] Connections::Ptr connections(const SceneItem::Ptr& item) const override;
    [[nodiscard]] ConnectionResultUndoableCommand::Ptr
    connectCmd(const Attribute::Ptr& src, const Attribute::Ptr& dst) const override;
    [[nodiscard]] UndoableCommand::Ptr disconnectCmd(const Attribute::Ptr& src,
                                                     const Attribute::Ptr& dst) const override;

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
