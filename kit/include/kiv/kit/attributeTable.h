#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "kiv/attributeDef.h"
#include "kiv/attributeVariant.h"
#include "kiv/attributes.h"
#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/value.h"

namespace Kiv_v4::kit {

/// The attributes of items as a table: a row for each attribute with its name, its type and the
/// functions that read and write it. For each of the sixteen types and generic attributes it makes
/// complete attributes: values and texts, definitions, metadata, commands that remember paths and
/// have a text, notifications.
///
///     const auto table = std::make_shared<kit::AttributeTable>();
///     table->add({"size", Attribute::kFloat, [data](const Path& path) { return data->size(path);
///     },
///                 [data](const Path& path, const AttributeVariant& size) {
///                     data->setSize(path, std::get<float>(size));
///                 }});
///     manager.setAttributesHandler(id, kit::attributesHandler(table));
///
/// One table serves all items that have these attributes. Attributes and commands share it.
class KIV_EXPORT AttributeTable : public std::enable_shared_from_this<AttributeTable>
{
public:
    using Ptr = std::shared_ptr<AttributeTable>;
    /// Metadata of an attribute by key.
    using Metadata = std::map<std::string, Value>;

    /// Returns the value for the item at a path, as the alternative of the row's type; no value if
    /// there is none, or no such item.
    using Get = std::function<AttributeVariant(const Path& path)>;

    /// Writes a value of the row's type to the item at a path; must throw if it cannot. The table
    /// announces the change.
    using Set = std::function<void(const Path& path, const AttributeVariant& value)>;

    /// One attribute.
    struct Row
    {
        /// The attribute's name.
        std::string name;
        std::string type; ///< One of the type constants of `Attribute`.
        Get get;          ///< Empty for a generic attribute, or returns its text.
        Set set;          ///< Empty for a read-only attribute, which has the metadata `Locked`.

        std::string displayName = {}; ///< If empty, the name is used.
        /// The default in the definition; if it is no value, that of a new attribute of the type.
        AttributeVariant defaultValue = {};
        std::vector<std::string> enumValues = {}; ///< Of an `EnumString`.
        std::string nativeType = {};              ///< Of a generic attribute.
        Metadata metadata = {}; ///< The same for all items; they cannot be changed.
        std::vector<std::function<void(const Path&)>> alsoNotified = {}; ///< See `alsoNotify`.
    };

    /// Attributes that each item has for itself, such as custom properties or the metadata of a
    /// file. They have no definitions.
    struct ItemRows
    {
        /// Returns their names, each once, in order.
        std::function<std::vector<std::string>(const SceneItem::Ptr& item)> names;
        /// Returns the row of one of them; `std::nullopt` if the item has no such attribute.
        std::function<std::optional<Row>(const SceneItem::Ptr& item, const std::string& name)> row;
    };

    /// The same from all names and values of the item at a path, in order; an attribute without a
    /// value is generic. An empty `set` makes them read-only.
    struct ItemValues
    {
        /// Returns the names, each once, with the values.
        std::function<std::vector<std::pair<std::string, AttributeVariant>>(const Path& path)> get;
        /// Writes the value of one of them; must throw if it cannot.
        std::function<void(const Path& path, const std::string& name,
                           const AttributeVariant& value)>
            set;
    };

    /// Returns the place where the data keep the settable metadata of the attribute of that name of
    /// the item at a path; null if there is no such item.
    using MetadataOf = std::function<Metadata*(const Path& path, const std::string& name)>;

    AttributeTable();
    AttributeTable(const AttributeTable&) = delete;
    AttributeTable& operator=(const AttributeTable&) = delete;
    ~AttributeTable();

    /// Adds a row. Throws `std::invalid_argument` if the table has a row of that name, or the type
    /// is not a type constant.
    AttributeTable& add(Row row);

    /// Adds rows that differ from item to item, after the others; a row of `add` hides one of the
    /// same name. Replaces those of an earlier call.
    AttributeTable& addItemRows(ItemRows rows);

    /// The same with a row for each of the values. Cost: each attribute calls `get` for all values.
    AttributeTable& addItemValues(ItemValues values);

    /// Calls `notify` with the path of the item after each change of the attribute of that name,
    /// for interfaces that show the same data: `alsoNotify("focalLength", &Camera::notify)`. Throws
    /// `std::invalid_argument` if no row has that name.
    AttributeTable& alsoNotify(const std::string& name,
                               std::function<void(const Path& path)> notify);

    /// Allows metadata to be set and cleared, in addition to those of the rows.
    AttributeTable& keepMetadata(MetadataOf metadataOf);

    /// The attributes of `item`, which must not be null.
    [[nodiscard]] Attributes::Ptr attributes(const SceneItem::Ptr& item) const;

    /// The row of that name that all items have; null if there is none.
    [[nodiscard]] const Row* row(const std::string& name) const;

    /// The row of that name of `item`, which may be its own; null if there is none.
    [[nodiscard]] std::shared_ptr<const Row> row(const SceneItem::Ptr& item,
                                                 const std::string& name) const;

    /// The names of the attributes of `item`, its own ones last.
    [[nodiscard]] std::vector<std::string> names(const SceneItem::Ptr& item) const;

    /// The value of the attribute of the item at `path`; no value if there is none.
    [[nodiscard]] AttributeVariant value(const Path& path, const std::string& name) const;

    /// Writes the value and announces it with `AttributeChanged`. Throws `std::invalid_argument` if
    /// the item has no such attribute, it is read-only, the value is of another type or the string
    /// is not in the enumeration; exceptions of the row's `set` pass through.
    void setValue(const Path& path, const std::string& name, const AttributeVariant& value) const;

    /// The rows that all items have, in the order in which they were added.
    [[nodiscard]] const std::deque<Row>& rows() const noexcept { return _rows; }

    /// Whether metadata under `key` can be set.
    [[nodiscard]] bool takesMetadata(const Path& path, const std::string& name,
                                     const std::string& key) const;

    /// The metadata under `key`, those of the row first; a value without a type if there are none.
    [[nodiscard]] Value metadata(const Path& path, const std::string& name,
                                 const std::string& key) const;

    /// Sets the metadata under `key`, or clears them if `value` is null, and announces it. Returns
    /// false if there is nothing to clear, the row has such metadata, or no metadata are kept.
    bool setMetadata(const Path& path, const std::string& name, const std::string& key,
                     const Value* value) const;

private:
    [[nodiscard]] std::shared_ptr<const Row> rowAt(const Path& path, const std::string& name) const;

    std::deque<Row> _rows; // attributes refer to them
    ItemRows _itemRows;
    MetadataOf _metadataOf;
};

/// Returns a handler that gives each item of the run-time the attributes of `table`.
[[nodiscard]] KIV_EXPORT AttributesHandler::Ptr attributesHandler(AttributeTable::Ptr table);

} // namespace Kiv_v4::kit
