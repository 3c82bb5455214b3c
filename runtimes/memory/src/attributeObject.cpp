#include "attributeObject.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>
#include <variant>

#include "announcements.h"
#include "attributeSteps.h"
#include "item.h"

namespace Kiv_v4::memory {

namespace {

/// An attribute of a scene by path and name, of one type.
class Handle
{
public:
    Handle(std::shared_ptr<Tree> tree, AttributeInfo info, std::size_t alternative)
        : _tree(std::move(tree)), _info(std::move(info)), _alternative(alternative)
    {}

    [[nodiscard]] const std::string& name() const noexcept { return _info.name(); }

    [[nodiscard]] const AttributeData* find() const
    {
        const auto* found = memory::find(*_tree, _info);
        return found && found->value.index() == _alternative ? found : nullptr;
    }

    /// Throws `std::invalid_argument` when it is gone.
    [[nodiscard]] AttributeData& get() const
    {
        auto& attribute = existing(*_tree, _info);
        if (attribute.value.index() != _alternative) {
            refuse(_info.path(), "has an attribute '" + _info.name() +
                                     "' of another type: " + typeOf(attribute.value) + ".");
        }
        return attribute;
    }

    void setMetadata(const std::string& key, const Value& value) const
    {
        get().metadata.insert_or_assign(key, Value(value)); // moved in: assigning would append
        announceMetadata(_info.path(), _info.name(), key);
    }

    [[nodiscard]] bool clearMetadata(const std::string& key) const
    {
        const auto cleared = get().metadata.erase(key) != 0;
        if (cleared) {
            announceMetadata(_info.path(), _info.name(), key);
        }
        return cleared;
    }

    void announce() const { announceAttribute(_info.path(), _info.name()); }

private:
    const std::shared_ptr<Tree> _tree;
    const AttributeInfo _info;
    const std::size_t _alternative;
};

/// What all classes of attributes do alike. `Base` is the public class.
template <class Base>
class MemoryAttribute : public Base
{
public:
    MemoryAttribute(const SceneItem::Ptr& item, Handle handle)
        : Base(item), _handle(std::move(handle))
    {}

    [[nodiscard]] bool hasValue() const override
    {
        const auto* attribute = _handle.find();
        return attribute && memory::hasValue(attribute->value);
    }

    [[nodiscard]] std::string name() const override { return _handle.name(); }
    [[nodiscard]] std::string displayName() const override { return _handle.name(); }
    [[nodiscard]] std::string string() const override { return textOf(_handle.get().value); }

    [[nodiscard]] Value metadata(const std::string& key) const override
    {
        const auto& metadata = _handle.get().metadata;
        const auto found = metadata.find(key);
        return found == metadata.end() ? Value() : found->second;
    }

    bool setMetadata(const std::string& key, const Value& value) override
    {
        _handle.setMetadata(key, value);
        return true;
    }

    bool clearMetadata(const std::string& key) override { return _handle.clearMetadata(key); }

    [[nodiscard]] bool hasMetadata(const std::string& key) const override
    {
        const auto* attribute = _handle.find();
        return attribute && attribute->metadata.count(key) != 0;
    }

protected:
    /// The value as the alternative of the class.
    template <class T>
    [[nodiscard]] T& value() const
    {
        return std::get<T>(_handle.get().value);
    }

    void announce() const { _handle.announce(); }

private:
    const Handle _handle;
};

template <class T>
class MemoryTyped : public MemoryAttribute<TypedAttribute<T>>
{
public:
    using MemoryAttribute<TypedAttribute<T>>::MemoryAttribute;

    [[nodiscard]] T get() const override { return this->template value<T>(); }

    void set(const T& newValue) override
    {
        this->template value<T>() = newValue;
        this->announce();
    }
};

class MemoryFilename : public MemoryAttribute<AttributeFilename>
{
public:
    using MemoryAttribute::MemoryAttribute;

    [[nodiscard]] std::string get() const override { return value<Filename>().text; }

    void set(const std::string& newValue) override
    {
        value<Filename>().text = newValue;
        announce();
    }
};

class MemoryEnumString : public MemoryAttribute<AttributeEnumString>
{
public:
    using MemoryAttribute::MemoryAttribute;

    [[nodiscard]] std::string get() const override { return value<Enumeration>().text; }

    void set(const std::string& newValue) override
    {
        auto& enumeration = value<Enumeration>();
        const auto& allowed = enumeration.allowed;
        if (std::find(allowed.begin(), allowed.end(), newValue) == allowed.end()) {
            throw std::invalid_argument("'" + newValue + "' is none of the values of '" + name() +
                                        "'.");
        }
        enumeration.text = newValue;
        announce();
    }

    [[nodiscard]] EnumValues enumValues() const override { return value<Enumeration>().allowed; }
};

class MemoryGeneric : public MemoryAttribute<AttributeGeneric>
{
public:
    using MemoryAttribute::MemoryAttribute;

    [[nodiscard]] std::string nativeType() const override { return value<Native>().typeName; }
};

template <class Value>
struct ClassFor
{
    using Type = MemoryTyped<Value>;
};

template <>
struct ClassFor<Filename>
{
    using Type = MemoryFilename;
};

template <>
struct ClassFor<Enumeration>
{
    using Type = MemoryEnumString;
};

template <>
struct ClassFor<Native>
{
    using Type = MemoryGeneric;
};

} // namespace

Attribute::Ptr makeAttribute(const std::shared_ptr<Tree>& tree, const SceneItem::Ptr& item,
                             const std::string& name)
{
    const AttributeInfo info(item->path(), name);
    const auto* attribute = find(*tree, info);
    if (!attribute) {
        return nullptr;
    }
    return std::visit(
        [&]<class T>(const T&) -> Attribute::Ptr {
            return std::make_shared<typename ClassFor<T>::Type>(
                item, Handle(tree, info, attribute->value.index()));
        },
        attribute->value);
}

Attribute::Ptr makeAttribute(const std::shared_ptr<Tree>& tree, const AttributeInfo& attribute)
{
    const auto* node = tree->find(attribute.path());
    return node ? makeAttribute(tree, makeItem(attribute.path(), *node), attribute.name())
                : nullptr;
}

} // namespace Kiv_v4::memory
