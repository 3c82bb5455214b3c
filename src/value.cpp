#include "kiv/value.h"

#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

namespace Kiv_v4 {

namespace {

// <charconv> writes and reads most numbers exactly as a stream of the classic locale does, at a
// fraction of the cost. Whatever it might treat otherwise goes through such a stream.

template <class T>
std::string writtenByStream(T v)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << v;
    return std::move(stream).str();
}

template <class T>
void writeFloating(std::string& text, T v)
{
    if (!std::isfinite(v)) {
        text = writtenByStream(v);
        return;
    }
    constexpr auto digits = 6; // the default precision of streams
    char buffer[16];           // the longest: -1.23457e-308
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, v, std::chars_format::general, digits).ptr;
    text.assign(buffer, end);
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
    if (_readPosition != kExhausted) {
        _text += other._text;
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

void Value::write(bool v)
{
    _text = v ? '1' : '0';
}

void Value::write(int v)
{
    char buffer[12]; // the longest: -2147483648
    _text.assign(buffer, std::to_chars(buffer, buffer + sizeof buffer, v).ptr);
}

void Value::write(float v)
{
    writeFloating(_text, v);
}

void Value::write(double v)
{
    writeFloating(_text, v);
}

void Value::write(const std::string& v)
{
    _text = v;
}

template <class T>
T Value::read() const
{
    if (_readPosition == kExhausted) {
        return T();
    }
    T v{};
    const auto last = _text.data() + _text.size();
    if (!isPlain(_text.data() + _readPosition, last, v)) {
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

template bool Value::read<bool>() const;
template int Value::read<int>() const;
template float Value::read<float>() const;
template double Value::read<double>() const;

void Value::refuse() const
{
    throw InvalidValueGet(*this);
}

InvalidValueGet::InvalidValueGet(const Value& value) : std::invalid_argument(value.typeName()) {}

InvalidValueGet::~InvalidValueGet() = default;

} // namespace Kiv_v4
