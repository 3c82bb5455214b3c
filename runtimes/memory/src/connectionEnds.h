#pragma once

#include <cstdint>
#include <vector>

#include "kiv/attributeInfo.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

// Connections join attributes, not names: so they follow whatever is renamed or moved. One whose
// end is out of the scene is out of sight until it comes back.

/// What feeds an attribute; without a source when nothing does.
struct Feed
{
    AttributeDataPtr source;
    std::uint64_t number = 0; ///< Of the connection.
};

/// What feeds `destination`, which is in the scene.
[[nodiscard]] Feed feedOf(const Tree& tree, const AttributeData& destination);

/// What `source`, which is in the scene, feeds, in the order in which it was connected.
[[nodiscard]] std::vector<AttributeDataPtr> fedBy(const Tree& tree, const AttributeData& source);

/// Makes or breaks the connection of that number.
void link(std::uint64_t number, AttributeData& source, AttributeData& destination);
void unlink(std::uint64_t number, AttributeData& source, AttributeData& destination) noexcept;

/// Whether nothing stands against the connection: the types agree, or one of them is generic, the
/// destination is not fed yet and is not the source itself. Both are in the scene.
[[nodiscard]] bool canConnect(const Tree& tree, const AttributeData& source,
                              const AttributeData& destination);

/// The handle of an attribute that is in the scene.
[[nodiscard]] AttributeInfo infoOf(const Tree& tree, const AttributeData& attribute);

} // namespace Kiv_v4::memory
