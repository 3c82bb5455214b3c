#include "kiv/attributeInfo.h"

#include <stdexcept>

#include "kiv/attributes.h"
#include "kiv/hierarchy.h"

namespace Kiv_v4 {

AttributeInfo::AttributeInfo(const Path& path, const std::string& name) : _path(path), _name(name)
{}

AttributeInfo::AttributeInfo(const std::shared_ptr<Attribute>& attribute)
    : AttributeInfo(attribute->sceneItem()->path(), attribute->name())
{}

std::shared_ptr<Attribute> AttributeInfo::attribute() const
{
    const auto item = Hierarchy::createItem(_path);
    if (!item) {
        throw std::runtime_error("The path is invalid '" + _path.string() + "'.");
    }
    const auto attributes = Attributes::attributes(item);
    if (!attributes) {
        throw std::runtime_error("The scene item is invalid '" + _path.string() + "'.");
    }
    return attributes->attribute(_name);
}

} // namespace Kiv_v4
