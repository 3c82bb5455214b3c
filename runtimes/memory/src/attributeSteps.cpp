#include "attributeSteps.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "kiv/pathString.h"
#include "kiv/uniqueName.h"

#include "announcements.h"
#include "connectionEnds.h"
#include "itemNames.h"

namespace Kiv_v4::memory {

namespace {

/// Null also if there is no item.
AttributeData* attributeOf(const Node* item, const std::string& name) noexcept
{
    return item && item->attributes ? item->attributes->find(name) : nullptr;
}

AttributeTable& tableOf(Node& item)
{
    if (!item.attributes) {
        item.attributes = std::make_unique<AttributeTable>(item);
    }
    return *item.attributes;
}

void requireFree(const Node& item, const Path& path, const std::string& name)
{
    if (item.attributes && item.attributes->find(name)) {
        refuse(path, "has an attribute '" + name + "' already.");
    }
}

std::string described(const AttributeInfo& attribute)
{
    return "'" + PathString::string(attribute.path()) + "' '" + attribute.name() + "'";
}

/// An attribute at its place.
class PlacedAttribute
{
public:
    PlacedAttribute(std::shared_ptr<Tree> tree, AttributeInfo info, AttributeDataPtr outside)
        : _tree(std::move(tree)), _info(std::move(info)), _outside(std::move(outside))
    {}

    void enter()
    {
        auto& item = existing(*_tree, _info.path());
        requireFree(item, _info.path(), _info.name());
        tableOf(item).insert(_outside, _position);
        _outside.reset();
        announceAttribute(_info.path(), _info.name());
    }

    void leave()
    {
        const auto& attribute = existing(*_tree, _info);
        auto& table = *attribute.item->attributes;
        _position = table.positionOf(attribute);
        _outside = table.take(_position);
        announceAttribute(_info.path(), _info.name());
    }

private:
    std::shared_ptr<Tree> _tree;
    AttributeInfo _info;
    AttributeDataPtr _outside;
    std::size_t _position = std::numeric_limits<std::size_t>::max();
};

class AttributeRenaming : public Step
{
public:
    AttributeRenaming(std::shared_ptr<Tree> tree, AttributeInfo from, AttributeInfo to)
        : _tree(std::move(tree)), _from(std::move(from)), _to(std::move(to))
    {}

    void apply() override { rename(_from, _to); }
    void revert() override { rename(_to, _from); }

private:
    void rename(const AttributeInfo& from, const AttributeInfo& to)
    {
        auto& attribute = existing(*_tree, from);
        requireFree(*attribute.item, from.path(), to.name());
        attribute.name = to.name();
        announceAttribute(from.path(), from.name());
        announceAttribute(to.path(), to.name());
    }

    const std::shared_ptr<Tree> _tree;
    const AttributeInfo _from;
    const AttributeInfo _to;
};

/// A connection between two attributes.
class PlacedConnection
{
public:
    PlacedConnection(std::shared_ptr<Tree> tree, AttributeInfo source, AttributeInfo destination)
        : _tree(std::move(tree)), _source(std::move(source)), _destination(std::move(destination))
    {}

    void enter()
    {
        auto& source = existing(*_tree, _source);
        auto& destination = existing(*_tree, _destination);
        if (!canConnect(*_tree, source, destination)) {
            refuse(_destination.path(),
                   "cannot let " + described(_source) + " feed '" + _destination.name() + "'.");
        }
        if (_number == 0) {
            _number = _tree->nextConnectionNumber();
        }
        link(_number, source, destination);
        announceEnds();
    }

    void leave()
    {
        auto& source = existing(*_tree, _source);
        auto& destination = existing(*_tree, _destination);
        const auto feed = feedOf(*_tree, destination);
        if (feed.source.get() != &source) {
            refuse(_destination.path(),
                   "has no '" + _destination.name() + "' that " + described(_source) + " feeds.");
        }
        _number = feed.number;
        unlink(_number, source, destination);
        announceEnds();
    }

private:
    void announceEnds() const
    {
        announceAttribute(_source.path(), _source.name());
        announceAttribute(_destination.path(), _destination.name());
    }

    std::shared_ptr<Tree> _tree;
    AttributeInfo _source;
    AttributeInfo _destination;
    std::uint64_t _number = 0;
};

} // namespace

StepPtr attributeAddition(const std::shared_ptr<Tree>& tree, const Path& item,
                          AttributeDataPtr attribute)
{
    AttributeInfo info(item, attribute->name);
    return std::make_unique<Insertion<PlacedAttribute>>(
        PlacedAttribute(tree, std::move(info), std::move(attribute)));
}

StepPtr attributeRemoval(const std::shared_ptr<Tree>& tree, const AttributeInfo& attribute)
{
    return std::make_unique<Removal<PlacedAttribute>>(PlacedAttribute(tree, attribute, nullptr));
}

StepPtr attributeRenaming(const std::shared_ptr<Tree>& tree, const AttributeInfo& attribute,
                          const std::string& newName)
{
    return std::make_unique<AttributeRenaming>(tree, attribute,
                                               AttributeInfo(attribute.path(), newName));
}

StepPtr connection(const std::shared_ptr<Tree>& tree, const AttributeInfo& source,
                   const AttributeInfo& destination)
{
    return std::make_unique<Insertion<PlacedConnection>>(
        PlacedConnection(tree, source, destination));
}

StepPtr disconnection(const std::shared_ptr<Tree>& tree, const AttributeInfo& source,
                      const AttributeInfo& destination)
{
    return std::make_unique<Removal<PlacedConnection>>(PlacedConnection(tree, source, destination));
}

AttributeData* find(Tree& tree, const AttributeInfo& attribute)
{
    return attributeOf(tree.find(attribute.path()), attribute.name());
}

AttributeData* find(Tree& tree, const SceneItem& item, const std::string& name)
{
    return attributeOf(tree.find(item), name);
}

AttributeData& existing(Tree& tree, const AttributeInfo& attribute)
{
    auto* found = attributeOf(&existing(tree, attribute.path()), attribute.name());
    if (!found) {
        refuse(attribute.path(), "has no attribute '" + attribute.name() + "'.");
    }
    return *found;
}

std::string freeAttributeName(const Node& item, const std::string& name, const std::string& allowed)
{
    return uniqueName(validName(name), [&](const std::string& candidate) {
        return candidate != allowed && item.attributes && item.attributes->find(candidate);
    });
}

} // namespace Kiv_v4::memory
