#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kiv/value.h"

#include "attributeValue.h"

namespace Kiv_v4::memory {

struct AttributeData;
struct Node;

using AttributeDataPtr = std::shared_ptr<AttributeData>;

/// The attributes at the other ends of an attribute's connections, by the numbers of the
/// connections, which increase in the order in which they were made.
///
/// Ends are held weakly: destroying an attribute destroys its connections, and an attribute that
/// comes back into the scene still has them.
using ConnectionEnds = std::map<std::uint64_t, std::weak_ptr<AttributeData>>;

/// One attribute. Its address stays the same while it is renamed, taken out and put back.
struct AttributeData : std::enable_shared_from_this<AttributeData>
{
    AttributeData(std::string newName, AttributeValue newValue);

    std::string name;
    AttributeValue value;
    std::map<std::string, Value> metadata;

    Node* item = nullptr;   ///< The item that has the attribute; null while none has it.
    ConnectionEnds sources; ///< The sources; of those in the scene, the last one feeds it.
    ConnectionEnds targets;
};

/// The attributes of one item, in the order of their creation.
///
/// **Cost.** Linear in their number, which is small.
class AttributeTable
{
public:
    explicit AttributeTable(Node& item) : _item(item) {}
    AttributeTable(const AttributeTable&) = delete;
    AttributeTable& operator=(const AttributeTable&) = delete;
    ~AttributeTable();

    [[nodiscard]] const std::vector<AttributeDataPtr>& all() const noexcept { return _all; }

    /// The attribute of that name; null if there is none.
    [[nodiscard]] AttributeData* find(const std::string& name) const noexcept;

    /// The number of attributes before that one, which must be of this table.
    [[nodiscard]] std::size_t positionOf(const AttributeData& attribute) const noexcept;

    /// Adds the attribute, whose name must not be taken, after `position` others, or last.
    void insert(AttributeDataPtr attribute, std::size_t position);

    AttributeDataPtr take(std::size_t position);

    /// The attributes with values and metadata, but without connections, as those of another item.
    [[nodiscard]] std::unique_ptr<AttributeTable> copyFor(Node& item) const;

private:
    Node& _item;
    std::vector<AttributeDataPtr> _all;
};

} // namespace Kiv_v4::memory
