#include "attributeObject.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <utility>
#include <variant>

#include "kiv/baseUndoableCommand.h"

#include "announcements.h"
#include "attributeSteps.h"
#include "memoryItem.h"

namespace Kiv_v4::memory {

namespace {

/// An attribute of a scene by path and name, of one type.
class Handle
{
public:
    Handle(std::shared_ptr<Tree> tree, AttributeInfo info, std::size_t alternative)
        : _tree(std::move(tree)), _info(std::move(info)), _alternative(alternative)
    {}

    [[nodiscard]] const Path& path() const noexcept { return _info.path(); }
    [[nodiscard]] const std::string& name() const noexcept { return _info.name(); }

    /// The text of a command on the attribute.
    [[nodiscard]] std::string titled(const std::string& verb) const
    {
        return verb + " " + _info.name() + " of " + _info.path().back().string();
    }

    [[nodiscard]] const AttributeData* find() const
    {
        const auto* found = memory::find(*_tree, _info);
        return found && found->value.index() == _alternative ? found : nullptr;
    }

    /// Throws `std::invalid_argument` if it no longer exists.
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

/// Changes an attribute, with undo. It keeps neither the attribute nor its item.
class AttributeEdit : public BaseUndoableCommand
{
public:
    using Change = std::function<void(const Handle&)>;

    AttributeEdit(Handle handle, std::string text, Change change, Change changeBack)
        : BaseUndoableCommand(handle.path()), _handle(std::move(handle)), _text(std::move(text)),
          _change(std::move(change)), _changeBack(std::move(changeBack))
    {}

    [[nodiscard]] std::string commandString() const override { return _text; }
    void undo() override { _changeBack(_handle); }
    void redo() override { _change(_handle); }

private:
    const Handle _handle;
    const std::string _text;
    const Change _change;
    const Change _changeBack;
};

/// The common part of all classes of attributes. `Base` is the public class.
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

    [[nodiscard]] UndoableCommand::Ptr setMetadataCmd(const std::string& key,
                                                      const Value& value) override
    {
        const auto set = [key](const Value& wanted) {
            return [key, wanted](const Handle& handle) { handle.setMetadata(key, wanted); };
        };
        const auto clear = [key](const Handle& handle) { (void)handle.clearMetadata(key); };
        return edit("Set " + key + " of", set(value),
                    hasMetadata(key) ? AttributeEdit::Change(set(metadata(key))) : clear);
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

    [[nodiscard]] const Handle& handle() const noexcept { return _handle; }

    [[nodiscard]] UndoableCommand::Ptr edit(const std::string& verb, AttributeEdit::Change change,
                                            AttributeEdit::Change changeBack) const
    {
        return std::make_shared<AttributeEdit>(_handle, _handle.titled(verb), std::move(change),
                                               std::move(changeBack));
    }

private:
    const Handle _handle;
};

// The values that clients read and write of an alternative, and whether it takes a value.

template <class T>
T& contentOf(T& value) noexcept
{
    return value;
}
template <class T>
void requireFit(const T&, const T&, const std::string&)
{}

std::string& contentOf(Filename& value) noexcept
{
    return value.text;
}
void requireFit(const Filename&, const std::string&, const std::string&) {}

std::string& contentOf(Enumeration& value) noexcept
{
    return value.text;
}
void requireFit(const Enumeration& value, const std::string& text, const std::string& name)
{
    const auto& allowed = value.allowed;
    if (std::find(allowed.begin(), allowed.end(), text) == allowed.end()) {
        throw std::invalid_argument("'" + text + "' is not a value of '" + name + "'.");
    }
}

/// An attribute whose value of type `T` is that of the alternative `Kept`.
template <class Base, class T, class Kept>
class MemorySettable : public MemoryAttribute<Base>
{
public:
    using MemoryAttribute<Base>::MemoryAttribute;

    [[nodiscard]] T get() const override { return contentOf(this->template value<Kept>()); }
    void set(const T& value) override { setter(value)(this->handle()); }

    [[nodiscard]] UndoableCommand::Ptr setCmd(const T& value) override
    {
        return this->edit("Set", setter(value), setter(get()));
    }

private:
    static auto setter(const T& value)
    {
        return [value](const Handle& handle) {
            auto& kept = std::get<Kept>(handle.get().value);
            requireFit(kept, value, handle.name());
            contentOf(kept) = value;
            handle.announce();
        };
    }
};

template <class T>
using MemoryTyped = MemorySettable<TypedAttribute<T>, T, T>;

using MemoryFilename = MemorySettable<AttributeFilename, std::string, Filename>;

class MemoryEnumString : public MemorySettable<AttributeEnumString, std::string, Enumeration>
{
public:
    using MemorySettable::MemorySettable;

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
    const auto* attribute = find(*tree, *item, name);
    if (!attribute) {
        return nullptr;
    }
    return std::visit(
        [&]<class T>(const T&) -> Attribute::Ptr {
            return std::make_shared<typename ClassFor<T>::Type>(
                item, Handle(tree, {item->path(), name}, attribute->value.index()));
        },
        attribute->value);
}

Attribute::Ptr makeAttribute(const std::shared_ptr<Tree>& tree, const AttributeInfo& attribute)
{
    auto* node = tree->find(attribute.path());
    return node ? makeAttribute(tree, makeItem(*tree, attribute.path(), *node), attribute.name())
                : nullptr;
}

} // namespace Kiv_v4::memory
