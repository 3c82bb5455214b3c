#include "assimpAttributes.h"

#include <algorithm>
#include <optional>
#include <type_traits>
#include <utility>

#include "kiv/kit/attributeTable.h"
#include "kiv/kit/handlers.h"

namespace Kiv_v4::assimp {

namespace {

using kit::AttributeTable;

/// Those of the file; null if the node or material has none.
const FileAttributes* attributesOf(const std::optional<MountedNode>& node)
{
    return node ? node->file().contents().attributes(node->index()) : nullptr;
}

/// The attribute's value, or the text of a value of a type that attributes do not have.
AttributeVariant variantOf(const FileAttribute::Value& value)
{
    return std::visit(
        []<class T>(const T& held) -> AttributeVariant {
            if constexpr (std::is_same_v<T, FileName>) {
                return FilenameValue{held.text};
            } else if constexpr (std::is_same_v<T, NativeValue>) {
                return held.text;
            } else {
                return held;
            }
        },
        value);
}

/// Nothing can be set in a file.
AttributeTable::Row rowOf(const FileAttribute& attribute)
{
    AttributeTable::Row row;
    row.name = attribute.name;
    const auto value = variantOf(attribute.value);
    row.type = typeOf(value);
    if (const auto* native = std::get_if<NativeValue>(&attribute.value)) {
        row.type = Attribute::kGeneric;
        row.nativeType = native->type;
    }
    row.get = [value](const Path&) { return value; };
    return row;
}

/// The attributes of all files.
AttributeTable::Ptr makeTable(const std::shared_ptr<const Mounts>& mounts)
{
    AttributeTable::ItemRows rows;
    rows.names = [mounts](const SceneItem::Ptr& item) {
        std::vector<std::string> names;
        if (const auto* attributes = attributesOf(mounts->nodeOrMaterial(item))) {
            for (const auto& attribute : *attributes) {
                names.push_back(attribute.name);
            }
        }
        return names;
    };
    rows.row = [mounts](const SceneItem::Ptr& item,
                        const std::string& name) -> std::optional<AttributeTable::Row> {
        const auto* attributes = attributesOf(mounts->nodeOrMaterial(item));
        if (!attributes) {
            return std::nullopt;
        }
        const auto found = std::find_if(attributes->begin(), attributes->end(),
                                        [&](const auto& known) { return known.name == name; });
        return found == attributes->end() ? std::nullopt : std::optional(rowOf(*found));
    };
    const auto table = std::make_shared<AttributeTable>();
    table->addItemRows(std::move(rows));
    return table;
}

} // namespace

AttributesHandler::Ptr makeAttributesHandler(const std::shared_ptr<const Mounts>& mounts)
{
    const auto table = makeTable(mounts);
    return kit::attributesHandler([mounts, table](const SceneItem::Ptr& item) {
        return mounts->nodeOrMaterial(item) ? table->attributes(item) : nullptr;
    });
}

} // namespace Kiv_v4::assimp
