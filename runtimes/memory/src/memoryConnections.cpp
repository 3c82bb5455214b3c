#include "memoryConnections.h"

#include <utility>

#include "attributeSteps.h"
#include "connectionEnds.h"
#include "recordedCommand.h"

namespace Kiv_v4::memory {

namespace {

/// The scene's own object for `attribute`; null if there is none.
AttributeData* find(Tree& tree, const Attribute::Ptr& attribute)
{
    return attribute ? memory::find(tree, AttributeInfo(attribute)) : nullptr;
}

bool isFed(const Tree& tree, const AttributeData* source, const AttributeData* destination)
{
    return source && destination && feedOf(tree, *destination).source.get() == source;
}

std::string titled(const char* verb, const AttributeInfo& source, const AttributeInfo& destination)
{
    return std::string(verb) + ' ' + source.name() + ' ' + destination.name();
}

class ConnectCommand : public RecordedCommand<ConnectionResultUndoableCommand, Connection::Ptr>
{
public:
    using RecordedCommand::RecordedCommand;

    [[nodiscard]] Connection::Ptr connection() const override
    {
        const auto made = result().value_or(nullptr);
        const auto isThere = made && isFed(*_tree, memory::find(*_tree, made->src()),
                                           memory::find(*_tree, made->dst()));
        return isThere ? made : nullptr;
    }
};

} // namespace

MemoryConnections::MemoryConnections(std::shared_ptr<Tree> tree, SceneItem::Ptr item)
    : _tree(std::move(tree)), _item(std::move(item))
{}

std::vector<Connection::Ptr> MemoryConnections::allConnections() const
{
    std::vector<Connection::Ptr> all;
    const auto* node = _tree->find(*_item);
    if (!node || !node->attributes) {
        return all;
    }
    for (const auto& attribute : node->attributes->all()) {
        const AttributeInfo own(_item->path(), attribute->name);
        if (const auto feed = feedOf(*_tree, *attribute); feed.source) {
            all.push_back(std::make_shared<Connection>(infoOf(*_tree, *feed.source), own));
        }
        for (const auto& target : fedBy(*_tree, *attribute)) {
            if (target->item !=
                node) { // connections within the item are found at their destination
                all.push_back(std::make_shared<Connection>(own, infoOf(*_tree, *target)));
            }
        }
    }
    return all;
}

MemoryConnectionHandler::MemoryConnectionHandler(std::shared_ptr<Tree> tree)
    : _tree(std::move(tree))
{}

Connections::Ptr MemoryConnectionHandler::connections(const SceneItem::Ptr& item) const
{
    return item && _tree->find(*item) ? std::make_shared<MemoryConnections>(_tree, item) : nullptr;
}

ConnectionResultUndoableCommand::Ptr
MemoryConnectionHandler::connectCmd(const Attribute::Ptr& src, const Attribute::Ptr& dst) const
{
    const auto* from = find(*_tree, src);
    const auto* to = find(*_tree, dst);
    if (!from || !to || !canConnect(*_tree, *from, *to)) {
        return nullptr;
    }
    const AttributeInfo source(src);
    const AttributeInfo destination(dst);
    return std::make_shared<ConnectCommand>(
        _tree, titled("Connect", source, destination),
        [tree = _tree, source, destination](ChangeLog& log) {
            log.carryOut(memory::connection(tree, source, destination));
            return std::make_shared<Connection>(source, destination);
        });
}

UndoableCommand::Ptr MemoryConnectionHandler::disconnectCmd(const Attribute::Ptr& src,
                                                            const Attribute::Ptr& dst) const
{
    if (!isFed(*_tree, find(*_tree, src), find(*_tree, dst))) {
        return nullptr;
    }
    const AttributeInfo source(src);
    const AttributeInfo destination(dst);
    return std::make_shared<EditCommand>(_tree, titled("Disconnect", source, destination),
                                         [tree = _tree, source, destination](ChangeLog& log) {
                                             log.carryOut(disconnection(tree, source, destination));
                                             return destination.path();
                                         });
}

} // namespace Kiv_v4::memory
