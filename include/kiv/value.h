#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "kiv/export.h"

namespace Kiv_v4 {

/// A loosely typed datum, such as attribute or item metadata: a `bool`, an `int`, a `float`, a
/// `double` or a `std::string`, remembered as text together with its type.
///
/// A value behaves like a text stream: assignment appends text, and reading a number consumes it.
///
/// - The text has the default format of stream insertion in the classic locale, whatever the global
///   locale: `bool` as "1" or "0", floating point with six significant digits. So a `double` is not
///   kept exactly.
/// - Equality and emptiness depend on the text only: `Value(1) == Value(true)`.
/// - Assigning a named value appends: "5", assigned `seven`, becomes "57". Moving one in replaces,
///   so `value = Value(7)` gives "7", and `value = Value(seven)` too.
///
/// **Reentrancy.** Reading a number moves the read position, and the first use of a number's text,
/// also in a comparison, writes it. So two threads must not read one value at once, although
/// reading is const. Copy it first: copying does neither.
///
/// **Cost.** Making and reading a number takes no allocation. Reading a number that its text
/// represents exactly, such as a whole number below a million, does not write the text. Text with
/// more than one number goes through a stream and costs an allocation or two.
class KIV_EXPORT Value
{
    template <class T>
    static constexpr bool isSupported =
        std::is_same_v<T, bool> || std::is_same_v<T, int> || std::is_same_v<T, float> ||
        std::is_same_v<T, double> || std::is_same_v<T, std::string>;

public:
    /// A value without type, with an empty text.
    Value() = default;

    /// A value of type `T`, one of the five. Deliberately implicit.
    template <class T, class = std::enable_if_t<isSupported<T>>>
    Value(const T& v) : _type(&typeOf<T>())
    {
        if constexpr (std::is_same_v<T, std::string>) {
            _text = v;
        } else {
            _number = v;
            _isWritten = false;
        }
    }

    /// The same as from a `std::string`, so that a literal does not become a `bool`.
    Value(const char* text) : Value(std::string(text)) {}
    Value(std::nullptr_t) = delete;

    /// The text and type of `other`, read from the beginning.
    Value(const Value& other)
        : _text(other._text), _type(other._type), _number(other._number),
          _isWritten(other._isWritten)
    {}

    /// Afterwards `other` must only be destroyed or assigned to.
    Value(Value&& other) noexcept
        : _text(std::move(other._text)), _type(std::exchange(other._type, nullptr)),
          _number(other._number), _readPosition(std::exchange(other._readPosition, 0)),
          _isWritten(std::exchange(other._isWritten, true))
    {
        other._text.clear();
    }

    ~Value() = default;

    /// Appends `other`'s text and takes over its type; a value assigned to itself doubles its text.
    ///
    /// If a number was read to the end of the text, the value takes no more text, like a stream at
    /// its end, only the type.
    Value& operator=(const Value& other);

    /// Replaces this value by `other`, which must afterwards only be destroyed or assigned to.
    Value& operator=(Value&& other) noexcept
    {
        if (this != &other) {
            _text = std::move(other._text);
            other._text.clear();
            _type = std::exchange(other._type, nullptr);
            _number = other._number;
            _readPosition = std::exchange(other._readPosition, 0);
            _isWritten = std::exchange(other._isWritten, true);
        }
        return *this;
    }

    /// Whether the value was made from, or last assigned, a `T`. False without type.
    template <class T>
    [[nodiscard]] bool isType() const noexcept
    {
        requireSupported<T>();
        return _type && *_type == typeid(T);
    }

    /// For a number or `bool`: extracts the next `T` from the text, as stream extraction in the
    /// classic locale does; throws `InvalidValueGet` and reads nothing if the type is not `T`. Once
    /// the text was read to its end, or contained no `T`, every further read returns 0 or false.
    ///
    /// For `std::string`: the whole text, whatever the type and however much of it was read.
    template <class T>
    T get() const;

    /// As `get`, but returns `defaultValue` if the type is not `T`.
    template <class T>
    T safeGet(T defaultValue) const;

    /// The type's `std::type_info::name()`; an empty text without type. For diagnostics only: the
    /// text differs between platforms.
    [[nodiscard]] std::string typeName() const;

    /// Whether the text is empty: true for `Value(std::string())`, although it has a type.
    [[nodiscard]] bool empty() const noexcept { return _isWritten && _text.empty(); }

    /// Same text, whatever the types.
    bool operator==(const Value& other) const noexcept { return text() == other.text(); }
    bool operator!=(const Value& other) const noexcept { return !(*this == other); }

private:
    static constexpr auto kExhausted = std::string::npos;

    template <class T>
    static constexpr void requireSupported()
    {
        static_assert(isSupported<T>, "a Value holds a bool, int, float, double or std::string");
    }

    template <class T>
    static const std::type_info& typeOf() noexcept
    {
        if constexpr (std::is_same_v<T, std::string>) {
            return typeOfText();
        } else {
            return typeid(T);
        }
    }

    // The library's own object: the caller's would vanish when the caller is unloaded.
    static const std::type_info& typeOfText() noexcept;

    /// Whether six digits represent the number exactly; false for NaN.
    template <class T>
    static bool isExactAsText(T v) noexcept
    {
        if constexpr (std::is_floating_point_v<T>) {
            return v > -1'000'000 && v < 1'000'000 && v == static_cast<T>(static_cast<int>(v));
        } else {
            return true;
        }
    }

    const std::string& text() const noexcept
    {
        if (!_isWritten) {
            write();
        }
        return _text;
    }

    void write() const noexcept;

    template <class T>
    T read() const;

    template <class T>
    T readText() const;

    template <class T>
    KIV_HIDDEN T readByStream() const;

    [[noreturn]] void refuse() const;

    mutable std::string _text; // empty until the number is written
    const std::type_info* _type = nullptr;
    double _number = 0; // holds any bool, int and float exactly
    mutable std::size_t _readPosition =
        0; // kExhausted once the stream would be at its end or failed
    mutable bool _isWritten = true;
};

/// A value was asked for a type that it does not have. The message is the value's `typeName()`.
class KIV_EXPORT InvalidValueGet : public std::invalid_argument
{
public:
    explicit InvalidValueGet(const Value& value);
    InvalidValueGet(const InvalidValueGet&) = default;
    ~InvalidValueGet() override;
};

template <class T>
T Value::get() const
{
    requireSupported<T>();
    if constexpr (std::is_same_v<T, std::string>) {
        return text();
    } else {
        if (!isType<T>()) {
            refuse();
        }
        return read<T>();
    }
}

template <class T>
T Value::safeGet(T defaultValue) const
{
    requireSupported<T>();
    if constexpr (std::is_same_v<T, std::string>) {
        return text();
    } else {
        return isType<T>() ? read<T>() : defaultValue;
    }
}

template <class T>
T Value::read() const
{
    if (_readPosition == kExhausted) {
        return T();
    }
    if (!_isWritten) {
        if (const auto v = static_cast<T>(_number); isExactAsText(v)) {
            _readPosition = kExhausted;
            return v;
        }
    }
    return readText<T>();
}

extern template bool Value::readText<bool>() const;
extern template int Value::readText<int>() const;
extern template float Value::readText<float>() const;
extern template double Value::readText<double>() const;

} // namespace Kiv_v4
