#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "kiv/baseUndoableCommand.h"
#include "kiv/kit/setting.h"

#include "announcements.h"
#include "memoryTree.h"
#include "steps.h"

namespace Kiv_v4::memory {

// One mechanism for everything that is set on an item. A property is an access: a callable that
// returns, from a record in the node's `Properties`, the value itself; for most a pointer to a
// member. The record's static function `announce(path, node)` notifies the observers of a change.

/// The access to a record as a whole.
template <class Record>
struct Whole
{
    Record& operator()(Record& record) const noexcept { return record; }
};

template <class Access>
struct RecordOf;
template <class Record>
struct RecordOf<Whole<Record>>
{
    using Type = Record;
};
template <class Record, class Value>
struct RecordOf<Value Record::*>
{
    using Type = Record;
};

template <class Access>
using RecordOfT = typename RecordOf<Access>::Type;
template <class Access>
using ValueOfT = std::remove_cvref_t<std::invoke_result_t<Access, RecordOfT<Access>&>>;

/// As `kit::Setting`, for the types of this run-time, too.
template <class Value>
struct Setting : kit::Setting<Value>
{};

/// Sets a property of the item at a path. While executed, keeps the previous value for undo.
template <class Access>
class PropertyCommand : public Setting<ValueOfT<Access>>::Command
{
public:
    using Value = ValueOfT<Access>;
    using Base = typename Setting<Value>::Command;

    PropertyCommand(std::shared_ptr<Tree> tree, const Path& path, std::string name, Access access,
                    Value value)
        : Base(path), _tree(std::move(tree)), _name(std::move(name)), _access(access),
          _value(std::move(value))
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }

    void undo() override
    {
        if (!_before) {
            return;
        }
        auto& node = existing(*_tree, Base::path());
        place(node) = std::move(*_before);
        _before.reset();
        announced([&] { RecordOfT<Access>::announce(Base::path(), node); });
    }

    void redo() override
    {
        auto value = _value;
        auto& node = existing(*_tree, Base::path());
        auto& current = place(node);
        if (!_before) {
            _before = current;
        }
        current = std::move(value);
        announced([&] { RecordOfT<Access>::announce(Base::path(), node); });
    }

protected:
    bool change(std::optional<Value> value)
    {
        if (!value || !_tree->find(Base::path())) {
            return false;
        }
        _value = std::move(*value);
        redo();
        return true;
    }

private:
    [[nodiscard]] Value& place(Node& node) const
    {
        return std::invoke(_access, node.properties.edit<RecordOfT<Access>>());
    }

    const std::shared_ptr<Tree> _tree;
    const std::string _name;
    const Access _access;
    Value _value;
    std::optional<Value> _before; ///< Set while the command is done.
};

/// The same with the `set` of the library's set-value commands.
template <class Access, class Set>
class SettablePropertyCommand;
template <class Access, class Base, class... Arguments>
class SettablePropertyCommand<Access, bool (Base::*)(Arguments...)> : public PropertyCommand<Access>
{
public:
    using PropertyCommand<Access>::PropertyCommand;

    bool set(Arguments... arguments) override
    {
        return this->change(Setting<ValueOfT<Access>>::from(arguments...));
    }
};

/// A command that sets a property of the item at `path`. Null if there is no item or the arguments
/// are refused.
template <class Access, class... Arguments>
[[nodiscard]] UndoableCommand::Ptr propertyCmd(const std::shared_ptr<Tree>& tree, const Path& path,
                                               const std::string& verb, Access access,
                                               const Arguments&... arguments)
{
    using Value = ValueOfT<Access>;
    using Base = typename Setting<Value>::Command;
    auto value = Setting<Value>::from(arguments...);
    if (!value || !tree->find(path)) {
        return nullptr;
    }
    const auto name = verb + " " + path.back().string();
    if constexpr (requires { &Base::set; }) {
        return std::make_shared<SettablePropertyCommand<Access, decltype(&Base::set)>>(
            tree, path, name, access, std::move(*value));
    } else {
        return std::make_shared<PropertyCommand<Access>>(tree, path, name, access,
                                                         std::move(*value));
    }
}

/// The properties of one item, looked up in the scene at each call.
class ItemProperties
{
public:
    ItemProperties(std::shared_ptr<Tree> tree, SceneItem::Ptr item)
        : _tree(std::move(tree)), _item(std::move(item))
    {}

    [[nodiscard]] const std::shared_ptr<Tree>& tree() const noexcept { return _tree; }
    [[nodiscard]] const SceneItem::Ptr& item() const noexcept { return _item; }
    [[nodiscard]] const Path& path() const noexcept { return _item->path(); }

    /// Null for an item that is no longer in the scene.
    [[nodiscard]] Node* node() const noexcept { return _tree->find(*_item); }

    /// The value; for an item that is no longer in the scene, that of a new item.
    template <class Record, class Value>
    [[nodiscard]] const Value& get(Value Record::*member) const noexcept
    {
        static const Properties none;
        const auto* found = node();
        return (found ? found->properties : none).get<Record>().*member;
    }

    template <class Access, class... Arguments>
    [[nodiscard]] UndoableCommand::Ptr setCmd(const std::string& verb, Access access,
                                              const Arguments&... arguments) const
    {
        return propertyCmd(_tree, path(), verb, access, arguments...);
    }

private:
    std::shared_ptr<Tree> _tree;
    SceneItem::Ptr _item;
};

/// The same for members of a base class of `Record`.
template <class Record>
class RecordProperties : public ItemProperties
{
public:
    using ItemProperties::ItemProperties;

    template <class Base, class Value>
    [[nodiscard]] const Value& get(Value Base::*member) const noexcept
    {
        return ItemProperties::get<Record, Value>(member);
    }

    template <class Base, class Value, class... Arguments>
    [[nodiscard]] UndoableCommand::Ptr setCmd(const std::string& verb, Value Base::*member,
                                              const Arguments&... arguments) const
    {
        return ItemProperties::setCmd(verb, static_cast<Value Record::*>(member), arguments...);
    }
};

} // namespace Kiv_v4::memory
