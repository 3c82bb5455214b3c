#pragma once

#include <QString>
#include <string>

namespace Kiv_v4::qt::detail {

/// Returns the text for people; bytes that are not UTF-8 become replacement characters.
[[nodiscard]] inline QString textOf(const std::string& bytes)
{
    return QString::fromStdString(bytes);
}

/// Returns the text for a menu, in which an ampersand stands for itself.
[[nodiscard]] inline QString menuText(const std::string& bytes)
{
    return textOf(bytes).replace('&', QLatin1String("&&"));
}

} // namespace Kiv_v4::qt::detail
