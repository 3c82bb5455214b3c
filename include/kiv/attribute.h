#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"
#include "kiv/typedVectorN.h"
#include "kiv/undoableCommand.h"
#include "kiv/value.h"

namespace Kiv_v4 {

/// One attribute of a scene item, supplied by the item's run-time. `type()` tells its kind; the
/// class of that kind gives access to its value:
///
///     const auto size = std::dynamic_pointer_cast<AttributeFloat>(attributes->attribute("size"));
///     if (const auto command = size ? size->setCmd(2.5F) : nullptr) { // null: none, or refused
///         UndoableCommandMgr::instance().executeCmd(command);
///     }
///
/// Setters and commands change the attribute in its run-time, which announces each change through
/// `Attributes::notify`.
///
/// **Lifetime.** A shared pointer holds the attribute object, which belongs to one item object and
/// shares it. To name an attribute for longer, hold an `AttributeInfo`.
class KIV_EXPORT Attribute : public std::enable_shared_from_this<Attribute>
{
public:
    using Ptr = std::shared_ptr<Attribute>;

    /// The type of an attribute that does not exist.
    static constexpr const char* kInvalid = "Invalid";

    /// The value that `type()` returns for the attribute class of that name.
    static constexpr const char* kBool = "Bool";
    static constexpr const char* kInt = "Int";
    static constexpr const char* kFloat = "Float";
    static constexpr const char* kDouble = "Double";
    static constexpr const char* kString = "String";
    static constexpr const char* kColorFloat3 = "ColorFloat3";
    static constexpr const char* kColorFloat4 = "ColorFloat4";
    static constexpr const char* kFilename = "Filename";
    static constexpr const char* kEnumString = "EnumString";
    static constexpr const char* kInt3 = "Int3";
    static constexpr const char* kFloat2 = "Float2";
    static constexpr const char* kFloat3 = "Float3";
    static constexpr const char* kFloat4 = "Float4";
    static constexpr const char* kDouble3 = "Double3";
    static constexpr const char* kMatrix3d = "Matrix3d";
    static constexpr const char* kMatrix4d = "Matrix4d";
    static constexpr const char* kGeneric = "Generic";

    /// A well-known metadata key: true on an attribute that users must not edit.
    static constexpr const char* kLocked = "Locked";

    /// `item` must not be null.
    explicit Attribute(const SceneItem::Ptr& item);
    Attribute(const Attribute&) = delete;
    Attribute& operator=(const Attribute&) = delete;
    virtual ~Attribute();

    /// Whether there is a value at present.
    [[nodiscard]] virtual bool hasValue() const = 0;

    /// The name that the attribute is found by, unique within its item.
    [[nodiscard]] virtual std::string name() const = 0;

    /// The name as a user interface shows it.
    [[nodiscard]] virtual std::string displayName() const = 0;

    /// The constant of the attribute's kind.
    [[nodiscard]] virtual std::string type() const = 0;

    /// The value as text for display, not for parsing. Empty without a value.
    [[nodiscard]] virtual std::string string() const = 0;

    /// The metadata under `key`; a value without a type if there is none.
    [[nodiscard]] virtual Value metadata(const std::string& key) const = 0;

    /// Sets the metadata under `key` and replaces any that are there. Returns false if the run-time
    /// refuses.
    virtual bool setMetadata(const std::string& key, const Value& value) = 0;

    /// Returns a command that sets the metadata under `key`; its undo sets the old value or clears
    /// the key if there was none. Changes nothing yet. Throws `std::bad_weak_ptr` if no shared
    /// pointer holds the attribute.
    [[nodiscard]] virtual UndoableCommand::Ptr setMetadataCmd(const std::string& key,
                                                              const Value& value);

    /// Removes the metadata under `key`. Returns false if there is none or the run-time refuses.
    virtual bool clearMetadata(const std::string& key) = 0;

    /// Whether there is metadata under `key`.
    [[nodiscard]] virtual bool hasMetadata(const std::string& key) const = 0;

    /// The item that the attribute belongs to.
    [[nodiscard]] SceneItem::Ptr sceneItem() const { return _item; }

    /// Whether both have the same name and equal items, whatever their classes and values.
    bool operator==(const Attribute& other) const;
    bool operator!=(const Attribute& other) const { return !(*this == other); }

private:
    const SceneItem::Ptr _item;
};

/// An attribute with a value of type `T`. Instantiated for the value types of the aliases below.
template <class T>
class KIV_EXPORT TypedAttribute : public Attribute
{
public:
    using Ptr = std::shared_ptr<TypedAttribute>;

    explicit TypedAttribute(const SceneItem::Ptr& item);
    ~TypedAttribute() override;

    [[nodiscard]] std::string type() const override;

    /// The value, and its setter, which changes it at once.
    [[nodiscard]] virtual T get() const = 0;
    virtual void set(const T& value) = 0;

    /// Returns a command that sets the value; its undo sets the value that the attribute had when
    /// the command was made, so execute it at once. Changes nothing yet. Throws `std::bad_weak_ptr`
    /// if no shared pointer holds the attribute.
    [[nodiscard]] virtual UndoableCommand::Ptr setCmd(const T& value);
};

/// An attribute of that type.
using AttributeBool = TypedAttribute<bool>;
using AttributeInt = TypedAttribute<int>;
using AttributeFloat = TypedAttribute<float>;
using AttributeDouble = TypedAttribute<double>;
using AttributeString = TypedAttribute<std::string>;
using AttributeColorFloat3 = TypedAttribute<TypedColorN<float, 3>>;
using AttributeColorFloat4 = TypedAttribute<TypedColorN<float, 4>>;
using AttributeInt3 = TypedAttribute<TypedVectorN<int, 3>>;
using AttributeFloat2 = TypedAttribute<TypedVectorN<float, 2>>;
using AttributeFloat3 = TypedAttribute<TypedVectorN<float, 3>>;
using AttributeFloat4 = TypedAttribute<TypedVectorN<float, 4>>;
using AttributeDouble3 = TypedAttribute<TypedVectorN<double, 3>>;
using AttributeMatrix3d = TypedAttribute<TypedSquareMatrixN<double, 3>>;
using AttributeMatrix4d = TypedAttribute<TypedSquareMatrixN<double, 4>>;

extern template class TypedAttribute<bool>;
extern template class TypedAttribute<int>;
extern template class TypedAttribute<float>;
extern template class TypedAttribute<double>;
extern template class TypedAttribute<std::string>;
extern template class TypedAttribute<TypedColorN<float, 3>>;
extern template class TypedAttribute<TypedColorN<float, 4>>;
extern template class TypedAttribute<TypedVectorN<int, 3>>;
extern template class TypedAttribute<TypedVectorN<float, 2>>;
extern template class TypedAttribute<TypedVectorN<float, 3>>;
extern template class TypedAttribute<TypedVectorN<float, 4>>;
extern template class TypedAttribute<TypedVectorN<double, 3>>;
extern template class TypedAttribute<TypedSquareMatrixN<double, 3>>;
extern template class TypedAttribute<TypedSquareMatrixN<double, 4>>;

/// The name of a file.
class KIV_EXPORT AttributeFilename : public Attribute
{
public:
    using Ptr = std::shared_ptr<AttributeFilename>;

    explicit AttributeFilename(const SceneItem::Ptr& item);
    ~AttributeFilename() override;

    [[nodiscard]] std::string type() const override;

    /// The name, and its setter, which changes it at once.
    [[nodiscard]] virtual std::string get() const = 0;
    virtual void set(const std::string& value) = 0;

    /// As `TypedAttribute::setCmd`.
    [[nodiscard]] virtual UndoableCommand::Ptr setCmd(const std::string& value);
};

/// One of an enumeration's strings.
class KIV_EXPORT AttributeEnumString : public Attribute
{
public:
    using Ptr = std::shared_ptr<AttributeEnumString>;
    /// Allowed strings, in the order in which a user interface lists them.
    using EnumValues = std::vector<std::string>;

    explicit AttributeEnumString(const SceneItem::Ptr& item);
    ~AttributeEnumString() override;

    [[nodiscard]] std::string type() const override;

    /// The string that is set.
    [[nodiscard]] virtual std::string get() const = 0;

    /// Throws `std::invalid_argument` with the value in the message if it is not one of
    /// `enumValues()`.
    virtual void set(const std::string& value) = 0;

    /// As `TypedAttribute::setCmd`.
    [[nodiscard]] virtual UndoableCommand::Ptr setCmd(const std::string& value);

    /// The allowed strings, in the order in which a user interface lists them.
    [[nodiscard]] virtual EnumValues enumValues() const = 0;
};

/// An attribute of a type that the library has no name for. It gives no access to the value.
class KIV_EXPORT AttributeGeneric : public Attribute
{
public:
    using Ptr = std::shared_ptr<AttributeGeneric>;

    explicit AttributeGeneric(const SceneItem::Ptr& item);
    ~AttributeGeneric() override;

    [[nodiscard]] std::string type() const override;

    /// The run-time's own name for the type.
    [[nodiscard]] virtual std::string nativeType() const = 0;
};

} // namespace Kiv_v4
