#include "kiv/attributeNotification.h"

namespace Kiv_v4 {

AttributeChanged::AttributeChanged(const Path& path, const std::string& name)
    : _path(path), _name(name)
{}

AttributeChanged::~AttributeChanged() = default;

AttributeMetadataChanged::AttributeMetadataChanged(const Path& path, const std::string& name,
                                                   const std::string& key)
    : AttributeMetadataChanged(path, name, Keys{key})
{}

AttributeMetadataChanged::AttributeMetadataChanged(const Path& path, const std::string& name,
                                                   const Keys& keys)
    : AttributeChanged(path, name), _keys(keys)
{}

AttributeMetadataChanged::~AttributeMetadataChanged() = default;

} // namespace Kiv_v4
