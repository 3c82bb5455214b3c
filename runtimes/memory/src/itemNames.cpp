#include "itemNames.h"

#include <algorithm>
#include <stdexcept>

#include "kiv/memory/dataModel.h"
#include "kiv/pathString.h"

namespace Kiv_v4::memory {

namespace {

bool isForbidden(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return code < 0x20 || code == 0x7F || c == DataModel::kSeparator;
}

} // namespace

void requireValidName(const std::string& name)
{
    if (validName(name) != name) {
        throw std::invalid_argument("Invalid item name '" + name +
                                    "': it is empty or contains a control character, '/' or the "
                                    "path segment separator. A valid name is '" +
                                    validName(name) + "'.");
    }
}

std::string validName(std::string name)
{
    if (name.empty()) {
        return "_";
    }
    std::replace_if(name.begin(), name.end(), isForbidden, '_');
    const auto separator = PathString::pathSegmentSeparator();
    for (auto at = name.find(separator); at != std::string::npos; at = name.find(separator)) {
        name.replace(at, separator.size(), separator == "_" ? "-" : "_");
    }
    return name;
}

} // namespace Kiv_v4::memory
