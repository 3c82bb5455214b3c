#include "kiv/attribute.h"

#include <utility>

namespace Kiv_v4 {

namespace {

template <class T>
constexpr const char* kTypeName = nullptr;
template <>
constexpr const char* kTypeName<bool> = Attribute::kBool;
template <>
constexpr const char* kTypeName<int> = Attribute::kInt;
template <>
constexpr const char* kTypeName<float> = Attribute::kFloat;
template <>
constexpr const char* kTypeName<double> = Attribute::kDouble;
template <>
constexpr const char* kTypeName<std::string> = Attribute::kString;
template <>
constexpr const char* kTypeName<TypedColorN<float, 3>> = Attribute::kColorFloat3;
template <>
constexpr const char* kTypeName<TypedColorN<float, 4>> = Attribute::kColorFloat4;
template <>
constexpr const char* kTypeName<TypedVectorN<int, 3>> = Attribute::kInt3;
template <>
constexpr const char* kTypeName<TypedVectorN<float, 2>> = Attribute::kFloat2;
template <>
constexpr const char* kTypeName<TypedVectorN<float, 3>> = Attribute::kFloat3;
template <>
constexpr const char* kTypeName<TypedVectorN<float, 4>> = Attribute::kFloat4;
template <>
constexpr const char* kTypeName<TypedVectorN<double, 3>> = Attribute::kDouble3;
template <>
constexpr const char* kTypeName<TypedSquareMatrixN<double, 3>> = Attribute::kMatrix3d;
template <>
constexpr const char* kTypeName<TypedSquareMatrixN<double, 4>> = Attribute::kMatrix4d;

/// Sets an attribute of class `A` to one value or the other.
template <class T, class A>
class SetUndoableCommand : public UndoableCommand
{
public:
    SetUndoableCommand(std::shared_ptr<A> attribute, T oldValue, T newValue)
        : _attribute(std::move(attribute)), _oldValue(std::move(oldValue)),
          _newValue(std::move(newValue))
    {}

    void undo() override { _attribute->set(_oldValue); }
    void redo() override { _attribute->set(_newValue); }

private:
    const std::shared_ptr<A> _attribute;
    const T _oldValue;
    const T _newValue;
};

template <class A, class T>
UndoableCommand::Ptr commandToSet(A& attribute, const T& value)
{
    auto oldValue = attribute.get();
    auto self = std::static_pointer_cast<A>(attribute.shared_from_this());
    return std::make_shared<SetUndoableCommand<T, A>>(std::move(self), std::move(oldValue), value);
}

class SetUndoableMetadataCommand : public UndoableCommand
{
public:
    SetUndoableMetadataCommand(Attribute::Ptr attribute, std::string key, bool hadValue,
                               Value oldValue, Value newValue)
        : _attribute(std::move(attribute)), _key(std::move(key)), _hadValue(hadValue),
          _oldValue(std::move(oldValue)), _newValue(std::move(newValue))
    {}

    void undo() override
    {
        if (_hadValue) {
            set(_oldValue);
        } else {
            _attribute->clearMetadata(_key);
        }
    }

    void redo() override { set(_newValue); }

private:
    /// Returns a copy, since reading a value consumes it.
    void set(const Value& value) { _attribute->setMetadata(_key, Value(value)); }

    const Attribute::Ptr _attribute;
    const std::string _key;
    const bool _hadValue;
    const Value _oldValue;
    const Value _newValue;
};

} // namespace

Attribute::Attribute(const SceneItem::Ptr& item) : _item(item) {}

Attribute::~Attribute() = default;

UndoableCommand::Ptr Attribute::setMetadataCmd(const std::string& key, const Value& value)
{
    const auto hadValue = hasMetadata(key);
    auto oldValue = metadata(key);
    return std::make_shared<SetUndoableMetadataCommand>(shared_from_this(), key, hadValue,
                                                        std::move(oldValue), value);
}

bool Attribute::operator==(const Attribute& other) const
{
    return *_item == *other._item && name() == other.name();
}

template <class T>
TypedAttribute<T>::TypedAttribute(const SceneItem::Ptr& item) : Attribute(item)
{}

template <class T>
TypedAttribute<T>::~TypedAttribute() = default;

template <class T>
std::string TypedAttribute<T>::type() const
{
    return kTypeName<T>;
}

template <class T>
UndoableCommand::Ptr TypedAttribute<T>::setCmd(const T& value)
{
    return commandToSet(*this, value);
}

template class TypedAttribute<bool>;
template class TypedAttribute<int>;
template class TypedAttribute<float>;
template class TypedAttribute<double>;
template class TypedAttribute<std::string>;
template class TypedAttribute<TypedColorN<float, 3>>;
template class TypedAttribute<TypedColorN<float, 4>>;
template class TypedAttribute<TypedVectorN<int, 3>>;
template class TypedAttribute<TypedVectorN<float, 2>>;
template class TypedAttribute<TypedVectorN<float, 3>>;
template class TypedAttribute<TypedVectorN<float, 4>>;
template class TypedAttribute<TypedVectorN<double, 3>>;
template class TypedAttribute<TypedSquareMatrixN<double, 3>>;
template class TypedAttribute<TypedSquareMatrixN<double, 4>>;

AttributeFilename::AttributeFilename(const SceneItem::Ptr& item) : Attribute(item) {}

AttributeFilename::~AttributeFilename() = default;

std::string AttributeFilename::type() const
{
    return kFilename;
}

UndoableCommand::Ptr AttributeFilename::setCmd(const std::string& value)
{
    return commandToSet(*this, value);
}

AttributeEnumString::AttributeEnumString(const SceneItem::Ptr& item) : Attribute(item) {}

AttributeEnumString::~AttributeEnumString() = default;

std::string AttributeEnumString::type() const
{
    return kEnumString;
}

UndoableCommand::Ptr AttributeEnumString::setCmd(const std::string& value)
{
    return commandToSet(*this, value);
}

AttributeGeneric::AttributeGeneric(const SceneItem::Ptr& item) : Attribute(item) {}

AttributeGeneric::~AttributeGeneric() = default;

std::string AttributeGeneric::type() const
{
    return kGeneric;
}

} // namespace Kiv_v4
