#pragma once

#include <memory>
#include <string>

#include "kiv/export.h"
#include "kiv/path.h"

namespace Kiv_v4 {

class Attribute;

/// Names an attribute for longer than attribute objects live: the path of its item and its name. It
/// holds neither item nor attribute, so it survives that the item is deleted and made again.
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

    /// The attribute as it is now, on a fresh item; null when the item has none of that name.
    /// Throws `std::runtime_error` with the path in the message when it names no item, or one whose
    /// run-time offers no attributes, and `InvalidRunTimeId` (after logging it) when its run-time
    /// has no hierarchy handler, such as one that is not registered any more.
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
