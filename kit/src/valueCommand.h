#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace Kiv_v4::kit {

/// Sets a value with `set`, which also announces it. While executed, keeps the previous value, read
/// with `get`, for undo. `Base` is the class of commands that it belongs to.
template <class Value, class Base>
class ValueCommand : public Base
{
public:
    template <class... Arguments>
    ValueCommand(std::string text, std::function<Value()> get,
                 std::function<void(const Value&)> set, Value value, Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...), _text(std::move(text)), _get(std::move(get)),
          _set(std::move(set)), _value(std::move(value))
    {}

    [[nodiscard]] std::string commandString() const override { return _text; }

    void undo() override
    {
        if (_before) {
            _set(*_before);
            _before.reset();
        }
    }

    void redo() override
    {
        auto before = _before ? std::nullopt : std::optional(_get());
        _set(_value);
        if (before) {
            _before = std::move(before);
        }
    }

protected:
    [[nodiscard]] const Value& value() const noexcept { return _value; }

    /// Gives the command another value, and sets it.
    void change(Value value)
    {
        _value = std::move(value);
        redo();
    }

private:
    const std::string _text;
    const std::function<Value()> _get;
    const std::function<void(const Value&)> _set;
    Value _value;
    std::optional<Value> _before; ///< Set while the command is executed.
};

} // namespace Kiv_v4::kit
