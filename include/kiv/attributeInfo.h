#pragma once

#include <memory>
#include <string>

#include "kiv/export.h"
#include "kiv/path.h"

namespace Kiv_v4 {

class Attribute;

/// Names an attribute by the path of its item and its own name, for longer than attribute objects
/// live. It holds neither item nor attribute, so it stays good when the item is deleted and made
/// again.
class KIV_EXPORT AttributeInfo
{
public:
    AttributeInfo(const Path& path, const std::string& name);

    /// The handle of `attribute`, which must not be null.
    explicit AttributeInfo(const std::shared_ptr<Attribute>& attribute);

    /// The path of the item.
    [[nodiscard]] const Path& path() const noexcept { return _path; }
    /// The attribute's name.
    [[nodiscard]] const std::string& name() const noexcept { return _name; }

    /// Returns the attribute as it is now, on a new item object; null if the item has none of that
    /// name. Throws `std::runtime_error` with the path in the message if the path names no item or
    /// one whose run-time offers no attributes, and `InvalidRunTimeId` (after logging it) if its
    /// run-time has no hierarchy handler or is no longer registered.
    [[nodiscard]] std::shared_ptr<Attribute> attribute() const;

    /// Same path and same name.
    bool operator==(const AttributeInfo& other) const
    {
        return _path == other._path && _name == other._name;
    }
    bool operator!=(const AttributeInfo& other) const { return !(*this == other); }

private:
    Path _path;
    std::string _name;
};

} // namespace Kiv_v4
