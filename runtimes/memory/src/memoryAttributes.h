#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/attributes.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The attributes of one item, looked up in the scene at each call; none for an item that is no
/// longer at its path.
class MemoryAttributes : public Attributes_v4_2
{
public:
    MemoryAttributes(std::shared_ptr<Tree> tree, SceneItem::Ptr item);

    [[nodiscard]] SceneItem::Ptr sceneItem() const override;
    [[nodiscard]] std::string attributeType(const std::string& name) const override;
    [[nodiscard]] Attribute::Ptr attribute(const std::string& name) override;
    [[nodiscard]] std::vector<std::string> attributeNames() const override;
    [[nodiscard]] bool hasAttribute(const std::string& name) const override;
    [[nodiscard]] AttributeResultUndoableCommand::Ptr
    addAttributeCmd(const std::string& type, const std::string& name) override;
    [[nodiscard]] UndoableCommand::Ptr removeAttributeCmd(const std::string& name) override;
    [[nodiscard]] AttributeResultUndoableCommand::Ptr
    renameAttributeCmd(const std::string& name, const std::string& newName) override;
    [[nodiscard]] AttributeDef::Ptr attributeDef(const std::string& name) const override;

private:
    [[nodiscard]] const AttributeData* find(const std::string& name) const;

    const std::shared_ptr<Tree> _tree;
    const SceneItem::Ptr _item;
};

class MemoryAttributesHandler : public AttributesHandler
{
public:
    explicit MemoryAttributesHandler(std::shared_ptr<Tree> tree);

    [[nodiscard]] Attributes::Ptr attributes(const SceneItem::Ptr& item) override;

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
