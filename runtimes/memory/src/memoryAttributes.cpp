#include "memoryAttributes.h"

#include <utility>
#include <variant>

#include "attributeObject.h"
#include "attributeSteps.h"
#include "memoryNodeDef.h"
#include "recordedCommand.h"

namespace Kiv_v4::memory {

namespace {

class AttributeCommand : public RecordedCommand<AttributeResultUndoableCommand, AttributeInfo>
{
public:
    using RecordedCommand::RecordedCommand;

    [[nodiscard]] Attribute::Ptr attribute() const override
    {
        return result() ? makeAttribute(_tree, *result()) : nullptr;
    }
};

/// An attribute as it was when the description was made, with the description from its item's type.
class MemoryAttributeDef : public AttributeDef
{
public:
    explicit MemoryAttributeDef(const AttributeData& attribute)
        : _name(attribute.name), _type(typeOf(attribute.value)), _metadata(attribute.metadata),
          _known(attributeOfType(attribute.item->type, _name))
    {
        if (_known && _known->type() != _type) {
            _known = nullptr;
        }
        if (const auto* enumeration = std::get_if<Enumeration>(&attribute.value)) {
            _enumValues = enumeration->allowed;
        }
    }

    [[nodiscard]] std::string name() const override { return _name; }
    [[nodiscard]] std::string displayName() const override
    {
        return _known ? _known->displayName() : _name;
    }
    [[nodiscard]] std::string type() const override { return _type; }
    [[nodiscard]] std::vector<std::string> enumValues() const override { return _enumValues; }

    [[nodiscard]] std::string defaultValue() const override
    {
        if (_known) {
            return _known->defaultValue();
        }
        return _enumValues.empty() ? textOf(*initialValue(_type)) : _enumValues.front();
    }

    [[nodiscard]] Value metadata(const std::string& key) const override
    {
        const auto found = _metadata.find(key);
        if (found != _metadata.end()) {
            return found->second;
        }
        return _known ? _known->metadata(key) : Value();
    }

private:
    const std::string _name;
    const std::string _type;
    const std::map<std::string, Value> _metadata;
    AttributeDef::Ptr _known; ///< Null for an attribute that the type does not have.
    std::vector<std::string> _enumValues;
};

} // namespace

MemoryAttributes::MemoryAttributes(std::shared_ptr<Tree> tree, SceneItem::Ptr item)
    : _tree(std::move(tree)), _item(std::move(item))
{}

SceneItem::Ptr MemoryAttributes::sceneItem() const
{
    return _item;
}

std::string MemoryAttributes::attributeType(const std::string& name) const
{
    const auto* attribute = find(name);
    return attribute ? typeOf(attribute->value) : Attribute::kInvalid;
}

Attribute::Ptr MemoryAttributes::attribute(const std::string& name)
{
    return makeAttribute(_tree, _item, name);
}

std::vector<std::string> MemoryAttributes::attributeNames() const
{
    std::vector<std::string> names;
    const auto* node = _tree->find(*_item);
    if (node && node->attributes) {
        for (const auto& attribute : node->attributes->all()) {
            names.push_back(attribute->name);
        }
    }
    return names;
}

bool MemoryAttributes::hasAttribute(const std::string& name) const
{
    return find(name) != nullptr;
}

AttributeResultUndoableCommand::Ptr MemoryAttributes::addAttributeCmd(const std::string& type,
                                                                      const std::string& name)
{
    const auto initial = initialValue(type);
    if (!initial || !_tree->find(*_item)) {
        return nullptr;
    }
    return std::make_shared<AttributeCommand>(
        _tree, "Add attribute " + name,
        [tree = _tree, path = _item->path(), value = *initial,
         wanted = name.empty() ? type : name](ChangeLog& log) {
            const auto free = freeAttributeName(existing(*tree, path), wanted);
            log.carryOut(
                attributeAddition(tree, path, std::make_shared<AttributeData>(free, value)));
            return AttributeInfo(path, free);
        });
}

UndoableCommand::Ptr MemoryAttributes::removeAttributeCmd(const std::string& name)
{
    if (!find(name)) {
        return nullptr;
    }
    return std::make_shared<EditCommand>(
        _tree, "Remove attribute " + name,
        [tree = _tree, path = _item->path(), name](ChangeLog& log) {
            log.carryOut(attributeRemoval(tree, AttributeInfo(path, name)));
            return path;
        });
}

AttributeResultUndoableCommand::Ptr MemoryAttributes::renameAttributeCmd(const std::string& name,
                                                                         const std::string& newName)
{
    if (newName.empty() || !find(name)) {
        return nullptr;
    }
    return std::make_shared<AttributeCommand>(
        _tree, "Rename attribute " + name,
        [tree = _tree, from = AttributeInfo(_item->path(), name), newName](ChangeLog& log) {
            const auto& item = *existing(*tree, from).item;
            const auto free = freeAttributeName(item, newName, from.name());
            if (free != from.name()) {
                log.carryOut(attributeRenaming(tree, from, free));
            }
            return AttributeInfo(from.path(), free);
        });
}

AttributeDef::Ptr MemoryAttributes::attributeDef(const std::string& name) const
{
    const auto* attribute = find(name);
    return attribute ? std::make_shared<MemoryAttributeDef>(*attribute) : nullptr;
}

const AttributeData* MemoryAttributes::find(const std::string& name) const
{
    return memory::find(*_tree, *_item, name);
}

MemoryAttributesHandler::MemoryAttributesHandler(std::shared_ptr<Tree> tree)
    : _tree(std::move(tree))
{}

Attributes::Ptr MemoryAttributesHandler::attributes(const SceneItem::Ptr& item)
{
    return std::make_shared<MemoryAttributes>(_tree, item);
}

} // namespace Kiv_v4::memory
