#pragma once

#include <cmath>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "kiv/baseUndoableCommand.h"
#include "kiv/light.h"
#include "kiv/setValueCommands.h"
#include "kiv/transform3dRead.h"

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

/// The way to set values of a type: `Command`, the base of the command, and `from(arguments...)`,
/// which makes the value from the client's arguments; `std::nullopt` if they are refused.
template <class Value>
struct Setting;

/// The value unless it contains NaN or infinity.
template <class Value, class... Numbers>
[[nodiscard]] std::optional<Value> finiteValue(Numbers... numbers)
{
    return (std::isfinite(numbers) && ...) ? std::optional(Value({numbers...})) : std::nullopt;
}

template <>
struct Setting<bool>
{
    using Command = SetBoolUndoableCommand;
    static std::optional<bool> from(bool value) { return value; }
};

template <>
struct Setting<float>
{
    using Command = SetFloatUndoableCommand;
    static std::optional<float> from(float value)
    {
        return std::isfinite(value) ? std::optional(value) : std::nullopt;
    }
};

template <>
struct Setting<Vector3d>
{
    using Command = SetDouble3UndoableCommand;
    static std::optional<Vector3d> from(double x, double y, double z)
    {
        return finiteValue<Vector3d>(x, y, z);
    }
};

template <>
struct Setting<Color3f>
{
    using Command = SetColor3fUndoableCommand;
    static std::optional<Color3f> from(const Color3f& color)
    {
        const auto& [r, g, b] = color.color;
        return finiteValue<Color3f>(r, g, b);
    }
};

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

} // namespace Kiv_v4::memory
