#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kiv/attributeDef.h"
#include "kiv/attributeVariant.h"
#include "kiv/attributes.h"
#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/value.h"

namespace Kiv_v4::kit {

/// The attributes of items as a table: a row for each attribute with its name, its type and the
/// functions that read and write it. Of any of the sixteen types, or generic, it makes whole
/// attributes: values and texts, definitions, metadata, commands that remember paths and have a
/// text, notifications.
///
///     const auto table = std::make_shared<kit::AttributeTable>();
///     table->add({"size", Attribute::kFloat, [data](const Path& path) { return data->size(path);
///     },
///                 [data](const Path& path, const AttributeVariant& size) {
///                     data->setSize(path, std::get<float>(size));
///                 }});
///     manager.setAttributesHandler(id, kit::attributesHandler([table](const auto& item) {
///         return table->attributes(item);
///     }));
///
/// One table serves all items that have these attributes. Attributes and commands share it.
class KIV_EXPORT AttributeTable : public std::enable_shared_from_this<AttributeTable>
{
public:
    using Ptr = std::shared_ptr<AttributeTable>;
    /// Metadata of an attribute by their keys.
    using Metadata = std::map<std::string, Value>;

    /// Reads the value of the item at a path, as the alternative of the row's type; no value when
    /// there is none, or no such item.
    using Get = std::function<AttributeVariant(const Path& path)>;

    /// Writes a value of the row's type to the item at a path; throws when it cannot. The table
    /// announces the change.
    using Set = std::function<void(const Path& path, const AttributeVariant& value)>;

    /// One attribute.
    struct Row
    {
        /// The attribute's name.
        std::string name;
        std::string type; ///< One of the type constants of `Attribute`.
        Get get;          ///< Empty for a generic attribute.
        Set set;          ///< Empty for what can only be read, which has the metadata `Locked`.

        std::string displayName = {}; ///< Empty: the name.
        /// What the definition tells as the default; no value: that of a new attribute of the type.
        AttributeVariant defaultValue = {};
        std::vector<std::string> enumValues = {}; ///< Of an `EnumString`.
        std::string nativeType = {};              ///< Of a generic attribute.
        Metadata metadata = {};                   ///< The same for all items, not to be changed.
        std::vector<std::function<void(const Path&)>> alsoNotified = {}; ///< See `alsoNotify`.
    };

    /// Where the data keep metadata that can be set: those of the attribute of that name of the
    /// item at a path; null when there is no such item.
    using MetadataOf = std::function<Metadata*(const Path& path, const std::string& name)>;

    AttributeTable();
    AttributeTable(const AttributeTable&) = delete;
    AttributeTable& operator=(const AttributeTable&) = delete;
    ~AttributeTable();

    /// Adds a row. Throws `std::invalid_argument` when the table has one of that name, or the type
    /// is no type constant.
    AttributeTable& add(Row row);

    /// Calls `notify` with the path of the item after each change of the attribute of that name,
    /// for interfaces that show the same data: `alsoNotify("focalLength", &Camera::notify)`. Throws
    /// `std::invalid_argument` for a name that has no row.
    AttributeTable& alsoNotify(const std::string& name,
                               std::function<void(const Path& path)> notify);

    /// Lets metadata be set and cleared, beside those of the rows.
    AttributeTable& keepMetadata(MetadataOf metadataOf);

    /// The attributes of `item`, which must not be null.
    [[nodiscard]] Attributes::Ptr attributes(const SceneItem::Ptr& item) const;

    /// The row of that name; null when there is none.
    [[nodiscard]] const Row* row(const std::string& name) const;

    /// The value of the attribute of the item at `path`; no value when there is none.
    [[nodiscard]] AttributeVariant value(const Path& path, const std::string& name) const;

    /// Writes the value and announces it with `AttributeChanged`. Throws `std::invalid_argument`
    /// for a name that has no row, an attribute that can only be read, a value of another type and
    /// a string that is none of the enumeration, and what the row's `set` throws.
    void setValue(const Path& path, const std::string& name, const AttributeVariant& value) const;

    /// All rows, in the order in which they were added.
    [[nodiscard]] const std::deque<Row>& rows() const noexcept { return _rows; }

    /// Whether metadata under `key` can be set.
    [[nodiscard]] bool takesMetadata(const Path& path, const std::string& name,
                                     const std::string& key) const;

    /// The metadata under `key`, those of the row first; a value without a type when there are
    /// none.
    [[nodiscard]] Value metadata(const Path& path, const std::string& name,
                                 const std::string& key) const;

    /// Sets the metadata under `key`, or clears them for null, and announces it. Returns false when
    /// there is nothing to clear, when the row has such metadata, and where none are kept.
    bool setMetadata(const Path& path, const std::string& name, const std::string& key,
                     const Value* value) const;

private:
    std::deque<Row> _rows; // attributes refer to them
    MetadataOf _metadataOf;
};

} // namespace Kiv_v4::kit
