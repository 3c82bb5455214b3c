#include "memoryAttributeTable.h"

#include <algorithm>
#include <utility>

namespace Kiv_v4::memory {

AttributeData::AttributeData(std::string newName, AttributeValue newValue)
    : name(std::move(newName)), value(std::move(newValue))
{}

AttributeTable::~AttributeTable()
{
    for (const auto& attribute : _all) {
        attribute->item = nullptr;
    }
}

AttributeData* AttributeTable::find(const std::string& name) const noexcept
{
    const auto found = std::find_if(_all.begin(), _all.end(),
                                    [&](const auto& attribute) { return attribute->name == name; });
    return found == _all.end() ? nullptr : found->get();
}

std::size_t AttributeTable::positionOf(const AttributeData& attribute) const noexcept
{
    const auto found = std::find_if(_all.begin(), _all.end(), [&](const auto& candidate) {
        return candidate.get() == &attribute;
    });
    return static_cast<std::size_t>(found - _all.begin());
}

void AttributeTable::insert(AttributeDataPtr attribute, std::size_t position)
{
    auto& added = *attribute;
    const auto at = _all.begin() + static_cast<std::ptrdiff_t>(std::min(position, _all.size()));
    _all.insert(at, std::move(attribute));
    added.item = &_item;
}

AttributeDataPtr AttributeTable::take(std::size_t position)
{
    const auto at = _all.begin() + static_cast<std::ptrdiff_t>(position);
    auto taken = std::move(*at);
    _all.erase(at);
    taken->item = nullptr;
    return taken;
}

std::unique_ptr<AttributeTable> AttributeTable::copyFor(Node& item) const
{
    auto copied = std::make_unique<AttributeTable>(item);
    for (const auto& attribute : _all) {
        auto copy = std::make_shared<AttributeData>(attribute->name, attribute->value);
        copy->metadata = attribute->metadata;
        copied->insert(std::move(copy), copied->_all.size());
    }
    return copied;
}

} // namespace Kiv_v4::memory
