#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <locale>
#include <sstream>
#include <string>

#include "kiv/value.h"

namespace test {

inline std::string text(const Kiv_v4::Value& value)
{
    return value.get<std::string>();
}

template <class T>
bool sameBits(T left, T right)
{
    using Bytes = std::array<std::byte, sizeof(T)>;
    return std::bit_cast<Bytes>(left) == std::bit_cast<Bytes>(right);
}

/// The reference for a value: a stream of the classic locale.
class Reference
{
public:
    template <class T>
    explicit Reference(const T& v)
    {
        _stream.imbue(std::locale::classic());
        _stream << v;
    }

    Reference(const Reference& other) : Reference(other.text()) {}
    Reference& operator=(Reference&&) = default;

    void assign(const Reference& other) { _stream << other.text(); }

    template <class T>
    T get()
    {
        T v{};
        _stream >> v;
        return v;
    }

    std::string text() const { return _stream.str(); }

private:
    std::stringstream _stream;
};

/// A value and its reference, through the same changes.
struct Pair
{
    Kiv_v4::Value value;
    Reference reference;

    template <class T>
    explicit Pair(const T& v) : value(v), reference(v)
    {}

    void assign(const Pair& other)
    {
        value = other.value;
        reference.assign(other.reference);
    }
};

} // namespace test
