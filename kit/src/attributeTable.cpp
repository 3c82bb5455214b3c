#include "kiv/kit/attributeTable.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "kiv/attributeNotification.h"
#include "kiv/baseUndoableCommand.h"
#include "kiv/hierarchyHandler.h"
#include "kiv/kit/announce.h"
#include "kiv/kit/bases.h"
#include "kiv/kit/handlers.h"
#include "kiv/runTimeMgr.h"

#include "valueCommand.h"

namespace Kiv_v4::kit {

namespace {

using TablePtr = std::shared_ptr<const AttributeTable>;
using Row = AttributeTable::Row;
using RowPtr = std::shared_ptr<const Row>;

[[noreturn]] void fail(const std::string& name, const std::string& reason)
{
    throw std::invalid_argument("attribute '" + name + "' " + reason);
}

/// The row with what it leaves open.
Row completed(Row row)
{
    const auto initial = initialValue(row.type);
    if (!initial) {
        fail(row.name, "has the unknown type '" + row.type + "'");
    }
    if (std::holds_alternative<std::monostate>(row.defaultValue)) {
        row.defaultValue = *initial;
    }
    if (!row.set) {
        row.metadata.try_emplace(Attribute::kLocked, Value(true));
    }
    return row;
}

AttributeVariant valueIn(const Row* row, const Path& path)
{
    return row && row->get ? row->get(path) : AttributeVariant();
}

/// `std::nullopt` if the item has no such attribute.
std::optional<AttributeVariant> namedValue(const AttributeTable::ItemValues& values,
                                           const Path& path, const std::string& name)
{
    for (auto& [present, value] : values.get(path)) {
        if (present == name) {
            return std::move(value);
        }
    }
    return std::nullopt;
}

/// The common part of all attributes of a table; `A` is the class of their type.
template <class A>
class RowAttribute : public A
{
public:
    RowAttribute(const SceneItem::Ptr& item, TablePtr table, RowPtr row)
        : A(item), _table(std::move(table)), _row(std::move(row))
    {}

    [[nodiscard]] bool hasValue() const override
    {
        return !std::holds_alternative<std::monostate>(present());
    }
    [[nodiscard]] std::string name() const override { return _row->name; }
    [[nodiscard]] std::string displayName() const override
    {
        return _row->displayName.empty() ? _row->name : _row->displayName;
    }
    [[nodiscard]] std::string string() const override { return textOf(present()); }

    [[nodiscard]] Value metadata(const std::string& key) const override
    {
        const auto fixed = _row->metadata.find(key);
        return fixed == _row->metadata.end() ? _table->metadata(path(), _row->name, key)
                                             : Value(fixed->second);
    }
    [[nodiscard]] bool hasMetadata(const std::string& key) const override
    {
        return !metadata(key).typeName().empty();
    }
    bool setMetadata(const std::string& key, const Value& value) override
    {
        return _table->setMetadata(path(), _row->name, key, &value);
    }
    bool clearMetadata(const std::string& key) override
    {
        return _table->setMetadata(path(), _row->name, key, nullptr);
    }

    [[nodiscard]] UndoableCommand::Ptr setMetadataCmd(const std::string& key,
                                                      const Value& value) override
    {
        if (!_table->takesMetadata(path(), _row->name, key)) {
            return nullptr;
        }
        const auto get = [table = _table, at = path(), name = _row->name, key] {
            return table->metadata(at, name, key);
        };
        const auto set = [table = _table, at = path(), name = _row->name,
                          key](const Value& wanted) {
            const Value copy(wanted); // since reading a value consumes it
            if (!table->setMetadata(at, name, key, copy.typeName().empty() ? nullptr : &copy)) {
                fail(name, "does not take metadata '" + key + "'");
            }
        };
        return std::make_shared<ValueCommand<Value, BaseUndoableCommand>>(
            "Set " + key + " of " + _row->name, get, set, value, path());
    }

protected:
    [[nodiscard]] Path path() const { return this->sceneItem()->path(); }
    [[nodiscard]] AttributeVariant present() const { return valueIn(_row.get(), path()); }
    [[nodiscard]] const Row& row() const noexcept { return *_row; }
    [[nodiscard]] const TablePtr& table() const noexcept { return _table; }

private:
    const TablePtr _table;
    const RowPtr _row;
};

/// An attribute whose value is the alternative `V`.
template <class A, class V>
class ValueAttributeBase : public RowAttribute<A>
{
    using Class = AttributeClass<A, V>;
    using Get = typename Class::Get;

public:
    using RowAttribute<A>::RowAttribute;

    [[nodiscard]] Get get() const override
    {
        const auto present = this->present();
        const auto* value = std::get_if<V>(&present);
        if (!value) {
            fail(this->row().name, "has no value");
        }
        return Class::unwrapped(*value);
    }

    void set(const Get& value) override
    {
        this->table()->setValue(this->path(), this->row().name, Class::wrapped(value));
    }

    [[nodiscard]] UndoableCommand::Ptr setCmd(const Get& value) override
    {
        if (!this->row().set || !this->hasValue()) {
            return nullptr;
        }
        const auto table = this->table();
        const auto name = this->row().name;
        const auto at = this->path();
        return std::make_shared<ValueCommand<AttributeVariant, BaseUndoableCommand>>(
            "Set " + name, [table, name, at] { return table->value(at, name); },
            [table, name, at](const AttributeVariant& wanted) {
                table->setValue(at, name, wanted);
            },
            Class::wrapped(value), at);
    }
};

template <class A, class V>
class ValueAttribute : public ValueAttributeBase<A, V>
{
public:
    using ValueAttributeBase<A, V>::ValueAttributeBase;
};

template <class V>
class ValueAttribute<AttributeEnumString, V> : public ValueAttributeBase<AttributeEnumString, V>
{
public:
    using ValueAttributeBase<AttributeEnumString, V>::ValueAttributeBase;

    [[nodiscard]] AttributeEnumString::EnumValues enumValues() const override
    {
        return this->row().enumValues;
    }
};

class GenericAttribute : public RowAttribute<AttributeGeneric>
{
public:
    using RowAttribute::RowAttribute;

    [[nodiscard]] std::string nativeType() const override { return row().nativeType; }
};

class RowDef : public AttributeDef
{
public:
    explicit RowDef(RowPtr row) : _row(std::move(row)) {}

    [[nodiscard]] std::string name() const override { return _row->name; }
    [[nodiscard]] std::string displayName() const override
    {
        return _row->displayName.empty() ? _row->name : _row->displayName;
    }
    [[nodiscard]] std::string type() const override { return _row->type; }
    [[nodiscard]] std::string defaultValue() const override { return textOf(_row->defaultValue); }
    [[nodiscard]] std::vector<std::string> enumValues() const override { return _row->enumValues; }
    [[nodiscard]] Value metadata(const std::string& key) const override
    {
        const auto found = _row->metadata.find(key);
        return found == _row->metadata.end() ? Value() : Value(found->second);
    }

private:
    const RowPtr _row;
};

class TableAttributes : public AttributesBase
{
public:
    TableAttributes(TablePtr table, const SceneItem::Ptr& item)
        : AttributesBase(item), _table(std::move(table))
    {}

    [[nodiscard]] std::string attributeType(const std::string& name) const override
    {
        const auto row = find(name);
        return row ? row->type : Attribute::kInvalid;
    }

    [[nodiscard]] bool hasAttribute(const std::string& name) const override
    {
        return find(name) != nullptr;
    }

    [[nodiscard]] Attribute::Ptr attribute(const std::string& name) override
    {
        const auto row = find(name);
        if (!row) {
            return nullptr;
        }
        Attribute::Ptr attribute;
        visitAttributeClass(row->type, [&]<class A, class V>(AttributeClass<A, V>) {
            attribute = std::make_shared<ValueAttribute<A, V>>(sceneItem(), _table, row);
        });
        return attribute ? attribute : std::make_shared<GenericAttribute>(sceneItem(), _table, row);
    }

    [[nodiscard]] std::vector<std::string> attributeNames() const override
    {
        return _table->names(sceneItem());
    }

    [[nodiscard]] AttributeDef::Ptr attributeDef(const std::string& name) const override
    {
        const auto* row = _table->row(name);
        return row ? std::make_shared<RowDef>(RowPtr(_table, row)) : nullptr;
    }

private:
    [[nodiscard]] RowPtr find(const std::string& name) const
    {
        return _table->row(sceneItem(), name);
    }

    const TablePtr _table;
};

} // namespace

AttributeTable::AttributeTable() = default;
AttributeTable::~AttributeTable() = default;

AttributeTable& AttributeTable::add(Row row)
{
    if (this->row(row.name)) {
        fail(row.name, "is already in the table");
    }
    _rows.push_back(completed(std::move(row)));
    return *this;
}

AttributeTable& AttributeTable::addItemRows(ItemRows rows)
{
    _itemRows = std::move(rows);
    return *this;
}

AttributeTable& AttributeTable::addItemValues(ItemValues values)
{
    const auto shared = std::make_shared<const ItemValues>(std::move(values));
    const auto names = [shared](const SceneItem::Ptr& item) {
        std::vector<std::string> all;
        for (auto& named : shared->get(item->path())) {
            all.push_back(std::move(named.first));
        }
        return all;
    };
    const auto row = [shared](const SceneItem::Ptr& item,
                              const std::string& name) -> std::optional<Row> {
        const auto value = namedValue(*shared, item->path(), name);
        if (!value) {
            return std::nullopt;
        }
        Row made{name, typeOf(*value), {}, {}};
        made.get = [shared, name](const Path& path) {
            return namedValue(*shared, path, name).value_or(AttributeVariant());
        };
        if (shared->set) {
            made.set = [shared, name](const Path& path, const AttributeVariant& wanted) {
                shared->set(path, name, wanted);
            };
        }
        return made;
    };
    return addItemRows({names, row});
}

AttributeTable& AttributeTable::alsoNotify(const std::string& name,
                                           std::function<void(const Path&)> notify)
{
    const auto found =
        std::find_if(_rows.begin(), _rows.end(), [&](const Row& row) { return row.name == name; });
    if (found == _rows.end()) {
        fail(name, "is not in the table");
    }
    found->alsoNotified.push_back(std::move(notify));
    return *this;
}

AttributeTable& AttributeTable::keepMetadata(MetadataOf metadataOf)
{
    _metadataOf = std::move(metadataOf);
    return *this;
}

Attributes::Ptr AttributeTable::attributes(const SceneItem::Ptr& item) const
{
    return std::make_shared<TableAttributes>(shared_from_this(), item);
}

const AttributeTable::Row* AttributeTable::row(const std::string& name) const
{
    const auto found =
        std::find_if(_rows.begin(), _rows.end(), [&](const Row& row) { return row.name == name; });
    return found == _rows.end() ? nullptr : &*found;
}

RowPtr AttributeTable::row(const SceneItem::Ptr& item, const std::string& name) const
{
    if (const auto* found = row(name)) {
        return {shared_from_this(), found};
    }
    auto own = item && _itemRows.row ? _itemRows.row(item, name) : std::nullopt;
    return own ? std::make_shared<const Row>(completed(std::move(*own))) : nullptr;
}

RowPtr AttributeTable::rowAt(const Path& path, const std::string& name) const
{
    if (!_itemRows.row || row(name)) {
        return row(nullptr, name);
    }
    const auto handler = RunTimeMgr::instance().hierarchyHandler(path.runTimeId());
    return row(handler ? handler->createItem(path) : nullptr, name);
}

std::vector<std::string> AttributeTable::names(const SceneItem::Ptr& item) const
{
    std::vector<std::string> names;
    for (const auto& row : _rows) {
        names.push_back(row.name);
    }
    for (auto& own : _itemRows.names ? _itemRows.names(item) : std::vector<std::string>()) {
        if (!row(own)) {
            names.push_back(std::move(own));
        }
    }
    return names;
}

AttributeVariant AttributeTable::value(const Path& path, const std::string& name) const
{
    return valueIn(rowAt(path, name).get(), path);
}

void AttributeTable::setValue(const Path& path, const std::string& name,
                              const AttributeVariant& value) const
{
    const auto found = rowAt(path, name);
    if (!found) {
        fail(name, "does not exist");
    }
    if (!found->set) {
        fail(name, "can only be read");
    }
    if (typeOf(value) != found->type) {
        fail(name, "is of type " + found->type + ", the value of type " + typeOf(value));
    }
    if (const auto* text = std::get_if<EnumStringValue>(&value)) {
        const auto& allowed = found->enumValues;
        if (std::find(allowed.begin(), allowed.end(), text->text) == allowed.end()) {
            fail(name, "does not take '" + text->text + "'");
        }
    }
    found->set(path, value);
    announced([&] { Attributes::notify(AttributeChanged(path, name)); });
    for (const auto& notify : found->alsoNotified) {
        announced([&] { notify(path); });
    }
}

Value AttributeTable::metadata(const Path& path, const std::string& name,
                               const std::string& key) const
{
    const auto find = [&](const Metadata* metadata) {
        const auto found = metadata ? metadata->find(key) : Metadata::const_iterator();
        return metadata && found != metadata->end() ? Value(found->second) : Value();
    };
    const auto found = rowAt(path, name);
    if (!found) {
        return {};
    }
    auto fixed = find(&found->metadata);
    return !fixed.typeName().empty() || !_metadataOf ? fixed : find(_metadataOf(path, name));
}

bool AttributeTable::takesMetadata(const Path& path, const std::string& name,
                                   const std::string& key) const
{
    const auto found = rowAt(path, name);
    return found && found->metadata.count(key) == 0 && _metadataOf && _metadataOf(path, name);
}

bool AttributeTable::setMetadata(const Path& path, const std::string& name, const std::string& key,
                                 const Value* value) const
{
    auto* kept = takesMetadata(path, name, key) ? _metadataOf(path, name) : nullptr;
    if (!kept || (!value && kept->erase(key) == 0)) {
        return false;
    }
    if (value) {
        kept->insert_or_assign(key, Value(*value));
    }
    announced([&] { Attributes::notify(AttributeMetadataChanged(path, name, key)); });
    return true;
}

AttributesHandler::Ptr attributesHandler(AttributeTable::Ptr table)
{
    return attributesHandler(
        [table = std::move(table)](const SceneItem::Ptr& item) { return table->attributes(item); });
}

} // namespace Kiv_v4::kit
