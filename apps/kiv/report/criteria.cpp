#include "report/criteria.h"

#include <algorithm>
#include <tuple>

#include "kiv/host/itemPattern.h"
#include "kiv/host/matrix.h"
#include "kiv/light.h"
#include "kiv/material.h"
#include "kiv/object3d.h"

namespace app {

using namespace Kiv_v4;

namespace {

bool isHidden(const SceneItem::Ptr& item)
{
    const auto object = Object3d::object3d(item);
    return object && !object->visibility();
}

} // namespace

bool Criteria::any() const
{
    return cameras || lights || hidden || nodeType || name || material || minSize || maxSize ||
           !attributes.empty() || !metadata.empty();
}

bool Criteria::mayBeMaterial() const
{
    return !cameras && !lights && !hidden && !material && !minSize && !maxSize;
}

Sieve::Sieve(const Criteria& criteria) : _criteria(criteria)
{
    for (const auto& text : criteria.attributes) {
        _attributes.emplace_back(text, criteria.ignoresCase);
    }
    for (const auto& text : criteria.metadata) {
        _metadata.emplace_back(text, criteria.ignoresCase);
    }
}

bool Sieve::holds(const SceneItem::Ptr& item) const
{
    return isNamed(*item) && (!_criteria.lights || Light::light(item)) &&
           (!_criteria.hidden || isHidden(item)) && (!_criteria.material || hasMaterial(item)) &&
           std::ranges::all_of(_attributes, [&](const auto& one) { return one.holds(item); }) &&
           std::ranges::all_of(_metadata,
                               [&](const auto& one) { return one.holdsForMetadata(item); }) &&
           hasSize(item);
}

bool Sieve::isNamed(const SceneItem& item) const
{
    const auto& [type, name, ignoresCase] =
        std::tie(_criteria.nodeType, _criteria.name, _criteria.ignoresCase);
    return (!type || item.nodeType() == *type ||
            (ignoresCase && host::isLike(item.nodeType(), *type, true))) &&
           (!name || host::isLike(item.nodeName(), *name, ignoresCase));
}

bool Sieve::hasMaterial(const SceneItem::Ptr& item) const
{
    const auto material = Material::material(item);
    return material && std::ranges::any_of(material->materials(), [this](const auto& bound) {
               return host::isLike(bound->nodeName(), *_criteria.material, _criteria.ignoresCase);
           });
}

bool Sieve::hasSize(const SceneItem::Ptr& item) const
{
    if (!_criteria.minSize && !_criteria.maxSize) {
        return true;
    }
    const auto box = host::worldBox(item);
    if (!box || box->empty()) {
        return false;
    }
    auto longest = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        longest = std::max(longest, box->max.vector[i] - box->min.vector[i]);
    }
    return longest >= _criteria.minSize.value_or(longest) &&
           longest <= _criteria.maxSize.value_or(longest);
}

} // namespace app
