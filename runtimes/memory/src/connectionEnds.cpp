#include "connectionEnds.h"

#include <variant>

namespace Kiv_v4::memory {

namespace {

/// The attribute at an end; null if it no longer exists or is out of the scene.
AttributeDataPtr visible(const Tree& tree, const std::weak_ptr<AttributeData>& end)
{
    auto attribute = end.lock();
    return attribute && attribute->item && tree.contains(*attribute->item) ? attribute : nullptr;
}

void forgetDestroyed(ConnectionEnds& ends)
{
    std::erase_if(ends, [](const auto& end) { return end.second.expired(); });
}

} // namespace

Feed feedOf(const Tree& tree, const AttributeData& destination)
{
    const auto& sources = destination.sources;
    for (auto end = sources.rbegin(); end != sources.rend(); ++end) {
        if (auto source = visible(tree, end->second)) {
            return {std::move(source), end->first};
        }
    }
    return {};
}

std::vector<AttributeDataPtr> fedBy(const Tree& tree, const AttributeData& source)
{
    std::vector<AttributeDataPtr> fed;
    for (const auto& [number, end] : source.targets) {
        auto target = visible(tree, end);
        if (target && feedOf(tree, *target).number == number) {
            fed.push_back(std::move(target));
        }
    }
    return fed;
}

void link(std::uint64_t number, AttributeData& source, AttributeData& destination)
{
    forgetDestroyed(source.targets);
    forgetDestroyed(destination.sources);
    const auto target = source.targets.emplace(number, destination.weak_from_this()).first;
    try {
        destination.sources.emplace(number, source.weak_from_this());
    } catch (...) {
        source.targets.erase(target);
        throw;
    }
}

void unlink(std::uint64_t number, AttributeData& source, AttributeData& destination) noexcept
{
    source.targets.erase(number);
    destination.sources.erase(number);
}

bool canConnect(const Tree& tree, const AttributeData& source, const AttributeData& destination)
{
    const auto sameType = source.value.index() == destination.value.index();
    const auto generic = std::holds_alternative<Native>(source.value) ||
                         std::holds_alternative<Native>(destination.value);
    return (sameType || generic) && &source != &destination && !feedOf(tree, destination).source;
}

AttributeInfo infoOf(const Tree& tree, const AttributeData& attribute)
{
    return {tree.pathOf(*attribute.item), attribute.name};
}

} // namespace Kiv_v4::memory
