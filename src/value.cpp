#include "kiv/value.h"

#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

namespace Kiv_v4 {

namespace {

// <charconv> writes numbers, and reads most, exactly as a stream of the classic locale does, at a
// fraction of the cost. Texts that it might read differently go through such a stream.

template <class T>
void writeNumber(std::string& text, T v) noexcept
{
    char buffer[16]; // the longest: -1.23457e-308; the text needs no memory for it
    if constexpr (std::is_floating_point_v<T>) {
        constexpr auto digits = 6;
        text.assign(buffer, std::to_chars(buffer, buffer + sizeof buffer, v,
                                          std::chars_format::general, digits)
                                .ptr);
    } else {
        text.assign(buffer, std::to_chars(buffer, buffer + sizeof buffer, v).ptr);
    }
}

/// Whether [first, last) is, from end to end, a number about which <charconv> and streams agree;
/// `v` is then that number.
template <class T>
bool isPlain(const char* first, const char* last, T& v)
{
    if constexpr (std::is_same_v<T, bool>) {
        v = *first == '1';
        return last - first == 1 && (v || *first == '0');
    } else {
        const auto [end, error] = std::from_chars(first, last, v);
        if constexpr (std::is_floating_point_v<T>) {
            if (!std::isfinite(v)) {
                return false;
            }
        }
        return end == last && error == std::errc();
    }
}

} // namespace

// Nothing to guard: assigned to itself, a value doubles its text.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
Value& Value::operator=(const Value& other)
{
    const auto& added = other.text();
    text(); // before the type changes, since writing needs it
    if (_readPosition != kExhausted) {
        _text += added;
    }
    _type = other._type;
    return *this;
}

std::string Value::typeName() const
{
    return _type ? _type->name() : "";
}

const std::type_info& Value::typeOfText() noexcept
{
    return typeid(std::string);
}

void Value::write() const noexcept
{
    if (*_type == typeid(double)) {
        writeNumber(_text, _number);
    } else if (*_type == typeid(float)) {
        writeNumber(_text, static_cast<float>(_number));
    } else {
        writeNumber(_text, static_cast<int>(_number));
    }
    _isWritten = true;
}

template <class T>
T Value::readText() const
{
    const auto& text = this->text();
    T v{};
    const auto last = text.data() + text.size();
    if (!isPlain(text.data() + _readPosition, last, v)) {
        return readByStream<T>();
    }
    _readPosition = kExhausted;
    return v;
}

template <class T>
T Value::readByStream() const
{
    std::istringstream stream(_text.substr(_readPosition));
    stream.imbue(std::locale::classic());
    T v{};
    stream >> v;
    _readPosition =
        stream.good() ? _readPosition + static_cast<std::size_t>(stream.tellg()) : kExhausted;
    return v;
}

template bool Value::readText<bool>() const;
template int Value::readText<int>() const;
template float Value::readText<float>() const;
template double Value::readText<double>() const;

void Value::refuse() const
{
    throw InvalidValueGet(*this);
}

InvalidValueGet::InvalidValueGet(const Value& value) : std::invalid_argument(value.typeName()) {}

InvalidValueGet::~InvalidValueGet() = default;

} // namespace Kiv_v4
