#pragma once

#include <set>
#include <string>

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/path.h"

namespace Kiv_v4 {

/// The attribute of this name changed: its value changed, or it was added, removed or renamed. A
/// rename is announced twice, under the old name and under the new one.
class KIV_EXPORT AttributeChanged : public Notification
{
public:
    AttributeChanged(const Path& path, const std::string& name);
    ~AttributeChanged() override;

    /// The path of the item.
    [[nodiscard]] const Path& path() const noexcept { return _path; }

    /// The attribute's name.
    [[nodiscard]] const std::string& name() const noexcept { return _name; }

private:
    const Path _path;
    const std::string _name;
};

/// Metadata of an attribute was set or cleared.
class KIV_EXPORT AttributeMetadataChanged : public AttributeChanged
{
public:
    /// Metadata keys, each once.
    using Keys = std::set<std::string>;

    AttributeMetadataChanged(const Path& path, const std::string& name, const std::string& key);
    AttributeMetadataChanged(const Path& path, const std::string& name, const Keys& keys);
    ~AttributeMetadataChanged() override;

    /// The keys whose metadata changed.
    [[nodiscard]] const Keys& keys() const noexcept { return _keys; }
    /// Whether `key` is one of them.
    [[nodiscard]] bool has(const std::string& key) const { return _keys.count(key) != 0; }

private:
    const Keys _keys;
};

} // namespace Kiv_v4
