#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "kiv/host/propertyValue.h"
#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"
#include "kiv/typedVectorN.h"

namespace app::shell {

// Values as words. Each `read` takes exactly the words that its type needs and throws
// `std::runtime_error` that names the word that does not serve, or the number of words wanted.

void read(std::span<const std::string> words, int& value);
void read(std::span<const std::string> words, float& value);
void read(std::span<const std::string> words, double& value);

/// `true`, `yes`, `on`, `1` and their opposites.
void read(std::span<const std::string> words, bool& value);
void read(std::span<const std::string> words, std::string& value);

inline void read(std::span<const std::string> words, Kiv_v4::FilenameValue& value)
{
    read(words, value.text);
}
inline void read(std::span<const std::string> words, Kiv_v4::EnumStringValue& value)
{
    read(words, value.text);
}

/// Throws when there are other than `count` words.
void requireCount(std::span<const std::string> words, std::size_t count);

/// The words in equal shares for the elements.
template <class T, std::size_t N>
void read(std::span<const std::string> words, std::array<T, N>& elements)
{
    const auto wordsEach = words.size() / N;
    for (std::size_t i = 0; i < N; ++i) {
        read(words.subspan(i * wordsEach, wordsEach), elements[i]);
    }
}

template <class T, std::size_t N>
void read(std::span<const std::string> words, Kiv_v4::TypedVectorN<T, N>& value)
{
    requireCount(words, N);
    read(words, value.vector);
}

template <class T, std::size_t N>
void read(std::span<const std::string> words, Kiv_v4::TypedColorN<T, N>& value)
{
    requireCount(words, N);
    read(words, value.color);
}

/// Row by row.
template <class T, std::size_t N>
void read(std::span<const std::string> words, Kiv_v4::TypedSquareMatrixN<T, N>& value)
{
    requireCount(words, N * N);
    read(words, value.matrix);
}

template <class T>
[[nodiscard]] T valueOf(std::span<const std::string> words)
{
    T value{};
    read(words, value);
    return value;
}

/// The same for one word.
template <class T>
[[nodiscard]] T valueOf(const std::string& word)
{
    return valueOf<T>(std::span(&word, 1));
}

/// The words as a value of the type that `kind` holds, which must hold one.
[[nodiscard]] Kiv_v4::host::PropertyValue valueLike(const Kiv_v4::host::PropertyValue& kind,
                                                    std::span<const std::string> words);

} // namespace app::shell
