#include "assimpAttributes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <utility>

namespace Kiv_v4::assimp {

namespace {

/// The shortest text that reads back as the number.
template <class Number>
std::string text(Number number)
{
    char digits[32];
    return {digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr};
}

std::string text(bool value)
{
    return value ? "true" : "false";
}

std::string text(const std::string& value)
{
    return value;
}

std::string text(const NativeValue& value)
{
    return value.text;
}

template <class T, std::size_t N>
std::string text(const std::array<T, N>& elements)
{
    std::string list;
    for (const auto element : elements) {
        list += (list.empty() ? "" : ", ") + text(element);
    }
    return "(" + list + ")";
}

template <class T, std::size_t N>
std::string text(const TypedVectorN<T, N>& value)
{
    return text(value.vector);
}

template <class T, std::size_t N>
std::string text(const TypedColorN<T, N>& value)
{
    return text(value.color);
}

/// The common part of all attributes of files: they are locked, and nothing can be set.
template <class Base, class Value>
class FromFile : public Base
{
public:
    FromFile(const SceneItem::Ptr& item, std::string name, Value value)
        : Base(item), _name(std::move(name)), _value(std::move(value))
    {}

    [[nodiscard]] bool hasValue() const override { return true; }
    [[nodiscard]] std::string name() const override { return _name; }
    [[nodiscard]] std::string displayName() const override { return _name; }
    [[nodiscard]] std::string string() const override { return text(_value); }

    [[nodiscard]] Kiv_v4::Value metadata(const std::string& key) const override
    {
        return hasMetadata(key) ? Kiv_v4::Value(true) : Kiv_v4::Value();
    }
    bool setMetadata(const std::string&, const Kiv_v4::Value&) override { return false; }
    [[nodiscard]] UndoableCommand::Ptr setMetadataCmd(const std::string&,
                                                      const Kiv_v4::Value&) override
    {
        return nullptr;
    }
    bool clearMetadata(const std::string&) override { return false; }
    [[nodiscard]] bool hasMetadata(const std::string& key) const override
    {
        return key == Attribute::kLocked;
    }

protected:
    const std::string _name;
    const Value _value;
};

template <class T, class Base = TypedAttribute<T>>
class FileValue : public FromFile<Base, T>
{
public:
    using FromFile<Base, T>::FromFile;

    [[nodiscard]] T get() const override { return this->_value; }

    void set(const T&) override
    {
        throw std::invalid_argument("The attribute '" + this->_name +
                                    "' is a file's and cannot be set.");
    }
    [[nodiscard]] UndoableCommand::Ptr setCmd(const T&) override { return nullptr; }
};

class FileGeneric : public FromFile<AttributeGeneric, NativeValue>
{
public:
    using FromFile::FromFile;

    [[nodiscard]] std::string nativeType() const override { return _value.type; }
};

template <class T>
Attribute::Ptr made(const SceneItem::Ptr& item, const std::string& name, const T& value)
{
    return std::make_shared<FileValue<T>>(item, name, value);
}

Attribute::Ptr made(const SceneItem::Ptr& item, const std::string& name, const FileName& value)
{
    return std::make_shared<FileValue<std::string, AttributeFilename>>(item, name, value.text);
}

Attribute::Ptr made(const SceneItem::Ptr& item, const std::string& name, const NativeValue& value)
{
    return std::make_shared<FileGeneric>(item, name, value);
}

class AssimpAttributes : public Attributes_v4_2
{
public:
    explicit AssimpAttributes(MountedNode node) : _node(std::move(node)) {}

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _node.item(); }

    [[nodiscard]] std::string attributeType(const std::string& name) const override
    {
        const auto found = make(name);
        return found ? found->type() : Attribute::kInvalid;
    }

    [[nodiscard]] Attribute::Ptr attribute(const std::string& name) override { return make(name); }

    [[nodiscard]] std::vector<std::string> attributeNames() const override
    {
        std::vector<std::string> names;
        for (const auto& known : all()) {
            names.push_back(known.name);
        }
        return names;
    }

    [[nodiscard]] bool hasAttribute(const std::string& name) const override
    {
        return find(name) != nullptr;
    }

    [[nodiscard]] AttributeResultUndoableCommand::Ptr addAttributeCmd(const std::string&,
                                                                      const std::string&) override
    {
        return nullptr;
    }

    [[nodiscard]] UndoableCommand::Ptr removeAttributeCmd(const std::string&) override
    {
        return nullptr;
    }

    [[nodiscard]] AttributeResultUndoableCommand::Ptr
    renameAttributeCmd(const std::string&, const std::string&) override
    {
        return nullptr;
    }

    [[nodiscard]] AttributeDef::Ptr attributeDef(const std::string&) const override
    {
        return nullptr;
    }

private:
    [[nodiscard]] const FileAttributes& all() const
    {
        static const FileAttributes none;
        const auto* attributes = _node.file().contents().attributes(_node.index());
        return attributes ? *attributes : none;
    }

    [[nodiscard]] const FileAttribute* find(const std::string& name) const
    {
        const auto found = std::find_if(all().begin(), all().end(),
                                        [&name](const auto& known) { return known.name == name; });
        return found == all().end() ? nullptr : &*found;
    }

    [[nodiscard]] Attribute::Ptr make(const std::string& name) const
    {
        const auto* found = find(name);
        if (!found) {
            return nullptr;
        }
        return std::visit([&](const auto& value) { return made(_node.item(), name, value); },
                          found->value);
    }

    const MountedNode _node;
};

class AssimpAttributesHandler : public AttributesHandler
{
public:
    explicit AssimpAttributesHandler(std::shared_ptr<const Mounts> mounts)
        : _mounts(std::move(mounts))
    {}

    [[nodiscard]] Attributes::Ptr attributes(const SceneItem::Ptr& item) override
    {
        const auto node = _mounts->nodeOrMaterial(item);
        return node ? std::make_shared<AssimpAttributes>(*node) : nullptr;
    }

private:
    const std::shared_ptr<const Mounts> _mounts;
};

} // namespace

AttributesHandler::Ptr makeAttributesHandler(const std::shared_ptr<const Mounts>& mounts)
{
    return std::make_shared<AssimpAttributesHandler>(mounts);
}

} // namespace Kiv_v4::assimp
