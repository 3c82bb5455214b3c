#include "kiv/host/propertyValue.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace Kiv_v4::host {

namespace {

void appendText(std::string& text, std::monostate)
{
    text += "none";
}
void appendText(std::string& text, bool value)
{
    text += value ? "yes" : "no";
}
void appendText(std::string& text, int value)
{
    text += std::to_string(value);
}
void appendText(std::string& text, double value)
{
    text += numberText(value);
}
void appendText(std::string& text, const std::string& value)
{
    text += value;
}

void appendText(std::string& text, const FilenameValue& value)
{
    text += value.text;
}
void appendText(std::string& text, const EnumStringValue& value)
{
    text += value.text;
}

template <class T, std::size_t N>
void appendText(std::string& text, const std::array<T, N>& elements)
{
    for (std::size_t i = 0; i < N; ++i) {
        text += i == 0 ? "" : ", ";
        appendText(text, elements[i]);
    }
}
template <class T, std::size_t N>
void appendText(std::string& text, const TypedVectorN<T, N>& value)
{
    appendText(text, value.vector);
}
template <class T, std::size_t N>
void appendText(std::string& text, const TypedColorN<T, N>& value)
{
    appendText(text, value.color);
}
template <class T, std::size_t N>
void appendText(std::string& text, const TypedSquareMatrixN<T, N>& value)
{
    appendText(text, value.matrix);
}

} // namespace

std::string numberText(double number)
{
    std::array<char, 64> buffer;
    const auto positiveZero = number + 0.0; // of a negative one
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), positiveZero,
                                   std::chars_format::general, 6)
                         .ptr;
    return {buffer.data(), end};
}

std::string valueText(const PropertyValue& value)
{
    std::string text;
    std::visit([&text](const auto& typed) { appendText(text, typed); }, value);
    return text;
}

} // namespace Kiv_v4::host
