#pragma once

#include <QString>
#include <string>

namespace Kiv_v4::qt::detail {

/// Returns the text for people; bytes that are not UTF-8 become replacement characters.
[[nodiscard]] inline QString textOf(const std::string& bytes)
{
    return QString::fromStdString(bytes);
}

} // namespace Kiv_v4::qt::detail
