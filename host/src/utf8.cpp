#include "kiv/host/utf8.h"

#include <cstdint>

namespace Kiv_v4::host {

Utf8Character firstCharacter(std::string_view text) noexcept
{
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const auto lead = byte(0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    const std::size_t length = lead < 0xC2   ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || text.size() < length) {
        return {0, 0};
    }
    char32_t code = lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return {0, 0};
        }
        code = (code << 6) | (byte(i) & 0x3Fu);
    }
    const auto overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const auto surrogate = code >= 0xD800 && code <= 0xDFFF;
    return overlong || surrogate || code > 0x10FFFF ? Utf8Character{0, 0}
                                                    : Utf8Character{code, length};
}

bool isUtf8(std::string_view text) noexcept
{
    while (!text.empty()) {
        const auto length = firstCharacter(text).length;
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

} // namespace Kiv_v4::host
