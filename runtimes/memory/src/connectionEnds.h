#pragma once

#include <cstdint>
#include <vector>

#include "kiv/attributeInfo.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

// Connections join attributes, not names: so they follow renames and moves. A connection is hidden
// while one of its ends is out of the scene.

/// The connection that feeds an attribute; without a source if there is none.
struct Feed
{
    AttributeDataPtr source;
    std::uint64_t number = 0; ///< Of the connection.
};

/// The connection that feeds `destination`, which must be in the scene.
[[nodiscard]] Feed feedOf(const Tree& tree, const AttributeData& destination);

/// The attributes that `source`, which must be in the scene, feeds, in the order in which they were
/// connected.
[[nodiscard]] std::vector<AttributeDataPtr> fedBy(const Tree& tree, const AttributeData& source);

/// Makes or breaks the connection of that number.
void link(std::uint64_t number, AttributeData& source, AttributeData& destination);
void unlink(std::uint64_t number, AttributeData& source, AttributeData& destination) noexcept;

/// Whether the connection is allowed: the types are the same, or one of them is generic, the
/// destination is not fed yet and is not the source itself. Both must be in the scene.
[[nodiscard]] bool canConnect(const Tree& tree, const AttributeData& source,
                              const AttributeData& destination);

/// The handle of an attribute that is in the scene.
[[nodiscard]] AttributeInfo infoOf(const Tree& tree, const AttributeData& attribute);

} // namespace Kiv_v4::memory
