#include "memoryNodeDef.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "kiv/attributes.h"
#include "kiv/compositeUndoableCommand.h"
#include "kiv/runTimeCommand.h"

#include "editCommands.h"
#include "nodeTypes.h"

namespace Kiv_v4::memory {

namespace {

using Descriptions = std::vector<TypeAttribute>;
using Names = std::vector<std::string>;

template <class Number>
std::string shortest(Number number)
{
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    return {buffer, end};
}

/// The type constant of `Attribute`, and the value as text, of each type of default value.
struct TypeName
{
    std::string operator()(bool) const { return Attribute::kBool; }
    std::string operator()(int) const { return Attribute::kInt; }
    std::string operator()(float) const { return Attribute::kFloat; }
    std::string operator()(const std::string&) const { return Attribute::kString; }
    std::string operator()(const Color3f&) const { return Attribute::kColorFloat3; }
};

struct Text
{
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(int value) const { return shortest(value); }
    std::string operator()(float value) const { return shortest(value); }
    std::string operator()(const std::string& value) const { return value; }
    std::string operator()(const Color3f& value) const
    {
        return "(" + shortest(value.r()) + ", " + shortest(value.g()) + ", " + shortest(value.b()) +
               ")";
    }
};

class TypeAttributeDef : public AttributeDef
{
public:
    explicit TypeAttributeDef(const TypeAttribute& attribute) : _attribute(attribute) {}

    [[nodiscard]] std::string name() const override { return _attribute.name; }
    [[nodiscard]] std::string displayName() const override { return _attribute.displayName; }
    [[nodiscard]] std::string type() const override
    {
        return std::visit(TypeName(), _attribute.defaultValue);
    }
    [[nodiscard]] std::string defaultValue() const override
    {
        return std::visit(Text(), _attribute.defaultValue);
    }
    [[nodiscard]] Names enumValues() const override { return {}; }
    [[nodiscard]] Value metadata(const std::string& key) const override
    {
        return key == "description" ? Value(_attribute.description) : Value();
    }

private:
    const TypeAttribute& _attribute; ///< In the table of types, which is never destroyed.
};

AttributeDef::Ptr find(const Descriptions& descriptions, const std::string& name)
{
    const auto found = std::find_if(descriptions.begin(), descriptions.end(),
                                    [&](const auto& known) { return known.name == name; });
    return found == descriptions.end() ? nullptr : std::make_shared<TypeAttributeDef>(*found);
}

/// Makes an item, then, through the attributes that its run-time offers, those of its type.
class CreateNodeCommand : public SceneItemResultUndoableCommand, public RunTimeCommand
{
public:
    CreateNodeCommand(Ptr create, const NodeType& type, Rtid runTimeId)
        : _create(std::move(create)), _type(type), _runTimeId(runTimeId)
    {}

    [[nodiscard]] bool belongsTo(Rtid runTimeId) const override { return runTimeId == _runTimeId; }

    [[nodiscard]] std::string commandString() const override { return _create->commandString(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _create->sceneItem(); }

    void execute() override
    {
        const auto done = std::make_shared<CompositeUndoableCommand>();
        try {
            carryOut(_create, *done);
            if (const auto attributes = Attributes::attributes(sceneItem())) {
                addTo(*attributes, _type.inputs, *done);
                addTo(*attributes, _type.outputs, *done);
            }
        } catch (...) {
            done->undo();
            throw;
        }
        _done = done;
    }

    void undo() override { _done->undo(); }
    void redo() override { _done->redo(); }

private:
    static void carryOut(const UndoableCommand::Ptr& command, CompositeUndoableCommand& done)
    {
        command->execute();
        done.append(command);
    }

    static void addTo(Attributes& attributes, const Descriptions& descriptions,
                      CompositeUndoableCommand& done)
    {
        for (const auto& description : descriptions) {
            const auto type = std::visit(TypeName(), description.defaultValue);
            if (const auto add = attributes.addAttributeCmd(type, description.name)) {
                carryOut(add, done);
                setDefault(add->attribute(), description, done);
            }
        }
    }

    static void setDefault(const Attribute::Ptr& attribute, const TypeAttribute& description,
                           CompositeUndoableCommand& done)
    {
        std::visit(
            [&](const auto& value) {
                using Typed = TypedAttribute<std::decay_t<decltype(value)>>;
                if (const auto typed = std::dynamic_pointer_cast<Typed>(attribute)) {
                    carryOut(typed->setCmd(value), done);
                }
            },
            description.defaultValue);
    }

    const Ptr _create;
    const NodeType& _type; ///< In the table of types, which is never destroyed.
    const Rtid _runTimeId;
    UndoableCommand::Ptr _done = std::make_shared<CompositeUndoableCommand>();
};

class MemoryNodeDef : public NodeDef
{
public:
    MemoryNodeDef(TreePtr tree, const NodeType& type) : _tree(std::move(tree)), _type(type) {}

    [[nodiscard]] std::string type() const override { return _type.type; }
    [[nodiscard]] std::string displayName() const override { return _type.displayName; }
    [[nodiscard]] std::string description() const override { return _type.description; }
    [[nodiscard]] Names classifications() const override { return _type.classifications; }

    [[nodiscard]] Names inputNames() const override { return namesOf(_type.inputs); }
    [[nodiscard]] bool hasInput(const std::string& name) const override
    {
        return find(_type.inputs, name) != nullptr;
    }
    [[nodiscard]] AttributeDef::Ptr input(const std::string& name) const override
    {
        return find(_type.inputs, name);
    }
    [[nodiscard]] std::vector<AttributeDef::Ptr> inputs() const override
    {
        return all(_type.inputs);
    }

    [[nodiscard]] Names outputNames() const override { return namesOf(_type.outputs); }
    [[nodiscard]] bool hasOutput(const std::string& name) const override
    {
        return find(_type.outputs, name) != nullptr;
    }
    [[nodiscard]] AttributeDef::Ptr output(const std::string& name) const override
    {
        return find(_type.outputs, name);
    }
    [[nodiscard]] std::vector<AttributeDef::Ptr> outputs() const override
    {
        return all(_type.outputs);
    }

    [[nodiscard]] Value metadata(const std::string& key) const override
    {
        return hasMetadata(key) ? Value(_type.type) : Value();
    }
    [[nodiscard]] bool hasMetadata(const std::string& key) const override { return key == "icon"; }

    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    createNodeCmd(const SceneItem::Ptr& parent, const PathComponent& name) const override
    {
        auto create =
            parent ? memory::createChildCmd(_tree, parent->path(), _type.type, name) : nullptr;
        return create ? std::make_shared<CreateNodeCommand>(std::move(create), _type,
                                                            _tree->runTimeId())
                      : nullptr;
    }

private:
    static Names namesOf(const Descriptions& descriptions)
    {
        Names names;
        for (const auto& description : descriptions) {
            names.push_back(description.name);
        }
        return names;
    }

    static std::vector<AttributeDef::Ptr> all(const Descriptions& descriptions)
    {
        std::vector<AttributeDef::Ptr> definitions;
        for (const auto& description : descriptions) {
            definitions.push_back(std::make_shared<TypeAttributeDef>(description));
        }
        return definitions;
    }

    const TreePtr _tree;
    const NodeType& _type; ///< In the table of types, which is never destroyed.
};

class MemoryNodeDefHandler : public NodeDefHandler
{
public:
    explicit MemoryNodeDefHandler(TreePtr tree) : _tree(std::move(tree)) {}

    [[nodiscard]] NodeDef::Ptr definition(const SceneItem::Ptr& item) override
    {
        return item ? definition(item->nodeType()) : nullptr;
    }

    [[nodiscard]] NodeDef::Ptr definition(const std::string& type) override
    {
        const auto* known = findNodeType(type);
        return known ? std::make_shared<MemoryNodeDef>(_tree, *known) : nullptr;
    }

    [[nodiscard]] std::vector<NodeDef::Ptr> definitions(const std::string& classification) override
    {
        std::vector<NodeDef::Ptr> found;
        for (const auto& type : nodeTypes()) {
            const auto& own = type.classifications;
            if (classification.empty() ||
                std::find(own.begin(), own.end(), classification) != own.end()) {
                found.push_back(std::make_shared<MemoryNodeDef>(_tree, type));
            }
        }
        return found;
    }

private:
    const TreePtr _tree;
};

} // namespace

AttributeDef::Ptr attributeOfType(const std::string& nodeType, const std::string& name)
{
    const auto* known = findNodeType(nodeType);
    const auto input = known ? find(known->inputs, name) : nullptr;
    return input || !known ? input : find(known->outputs, name);
}

NodeDefHandler::Ptr makeNodeDefHandler(const TreePtr& tree)
{
    return std::make_shared<MemoryNodeDefHandler>(tree);
}

} // namespace Kiv_v4::memory
