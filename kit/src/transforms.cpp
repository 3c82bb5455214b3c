#include "kiv/kit/transforms.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <utility>

#include "kiv/kit/announce.h"
#include "kiv/kit/bases.h"
#include "kiv/setValueCommands.h"

#include "valueCommand.h"

namespace Kiv_v4::kit {

namespace {

Matrix4d matrixOf(const Matrix4d& matrix)
{
    return matrix;
}

Matrix4d matrixOf(const AffineFactors& factors)
{
    return composed(factors);
}

std::optional<AffineFactors> factorsOf(const Matrix4d& matrix)
{
    return decomposed(matrix);
}

std::optional<AffineFactors> factorsOf(const AffineFactors& factors)
{
    return factors;
}

using Factor = Vector3d AffineFactors::*;

/// The stored value after a factor was set to three numbers; `std::nullopt` if that is refused.
std::optional<AffineFactors> withFactor(AffineFactors factors, Factor factor, const Vector3d& value)
{
    factors.*factor = value;
    return factors;
}

std::optional<Matrix4d> withFactor(Matrix4d matrix, Factor factor, const Vector3d& value)
{
    const auto translation = matrix.matrix[3];
    if (factor == &AffineFactors::translation) {
        matrix.matrix[3] = {value.vector[0], value.vector[1], value.vector[2], translation[3]};
        return matrix;
    }
    auto factors = decomposed(matrix);
    if (!factors) {
        return std::nullopt;
    }
    (*factors).*factor = value;
    matrix = scaleShearMatrix(factors->scale, factors->shear) * rotationMatrix(factors->rotation);
    matrix.matrix[3] = translation;
    return matrix;
}

/// The transforms of a run-time that stores them as `Stored`.
template <class Stored>
struct Access
{
    std::function<std::optional<Stored>(const Path&)> get;
    std::function<void(const Path&, const Stored&)> set;
    std::function<bool(const Stored&)> canBe = {}; ///< If empty, any finite value.
    bool announces = true;                         ///< If false, `set` announces.

    [[nodiscard]] Stored present(const Path& path) const
    {
        return get(path).value_or(storedIdentity());
    }

    void change(const Path& path, const Stored& value) const
    {
        set(path, value);
        if (announces) {
            announced([&] { Transform3d::notify(path); });
        }
    }

    /// The value; `std::nullopt` if it is not allowed.
    [[nodiscard]] std::optional<Stored> checked(std::optional<Stored> value) const
    {
        return value && (!canBe || canBe(*value)) ? value : std::nullopt;
    }

    static Stored storedIdentity()
    {
        if constexpr (std::is_same_v<Stored, Matrix4d>) {
            return identity();
        } else {
            return {};
        }
    }
};

template <class Stored>
using AccessPtr = std::shared_ptr<const Access<Stored>>;

/// The functions of a command on the transform at `path`.
template <class Stored>
auto getter(const AccessPtr<Stored>& access, const Path& path)
{
    return [access, path] { return access->present(path); };
}
template <class Stored>
auto setter(const AccessPtr<Stored>& access, const Path& path)
{
    return [access, path](const Stored& value) { access->change(path, value); };
}

/// Sets one factor; a drag sets it again and again.
template <class Stored>
class FactorCommand : public ValueCommand<Stored, SetDouble3UndoableCommand>
{
    using Base = ValueCommand<Stored, SetDouble3UndoableCommand>;

public:
    FactorCommand(const std::string& text, const AccessPtr<Stored>& access, const Path& path,
                  Factor factor, Stored value)
        : Base(text, getter(access, path), setter(access, path), std::move(value), path),
          _access(access), _factor(factor)
    {}

    bool set(double x, double y, double z) override
    {
        const auto value = FactorCommand::valueWith(*_access, this->path(), _factor, {{x, y, z}});
        if (value) {
            this->change(*value);
        }
        return value.has_value();
    }

    /// `std::nullopt` if the numbers or the data do not allow it.
    static std::optional<Stored> valueWith(const Access<Stored>& access, const Path& path,
                                           Factor factor, const Vector3d& value)
    {
        const auto& [x, y, z] = value.vector;
        auto present = access.get(path);
        return present && std::isfinite(x) && std::isfinite(y) && std::isfinite(z)
                   ? access.checked(withFactor(*present, factor, value))
                   : std::nullopt;
    }

private:
    const AccessPtr<Stored> _access;
    const Factor _factor;
};

template <class Stored>
class MatrixCommand : public ValueCommand<Stored, SetMatrix4dUndoableCommand>
{
    using Base = ValueCommand<Stored, SetMatrix4dUndoableCommand>;

public:
    MatrixCommand(const std::string& text, const AccessPtr<Stored>& access, const Path& path,
                  Stored value)
        : Base(text, getter(access, path), setter(access, path), std::move(value), path),
          _access(access)
    {}

    bool set(const Matrix4d& matrix) override
    {
        const auto value = valueOf(*_access, matrix);
        const auto isThere = value && _access->get(this->path());
        if (isThere) {
            this->change(*value);
        }
        return isThere;
    }

    /// The stored value for the matrix; `std::nullopt` if it has no factors.
    static std::optional<Stored> valueOf(const Access<Stored>& access, const Matrix4d& matrix)
    {
        const auto factors = decomposed(matrix);
        if constexpr (std::is_same_v<Stored, Matrix4d>) {
            return factors ? access.checked(matrix) : std::nullopt;
        } else {
            return access.checked(factors);
        }
    }

private:
    const AccessPtr<Stored> _access;
};

template <class Stored>
class AccessTransform : public Transform3dBase
{
    using Cmd = UndoableCommand::Ptr;

public:
    AccessTransform(AccessPtr<Stored> access, SceneItem::Ptr item)
        : Transform3dBase(std::move(item)), _access(std::move(access))
    {}

    [[nodiscard]] Matrix4d matrix() const override { return matrixOf(_access->present(path())); }

    /// Without a transform object of each ancestor.
    [[nodiscard]] Matrix4d segmentExclusiveMatrix() const override
    {
        auto result = identity();
        const auto nbSegments = path().nbSegments();
        for (auto above = path().pop(); above.nbSegments() == nbSegments; above = above.pop()) {
            if (const auto stored = _access->get(above)) {
                result = result * matrixOf(*stored);
            }
        }
        return result;
    }

    [[nodiscard]] Cmd translateCmd(double x, double y, double z) override
    {
        return factorCmd("Translate", &AffineFactors::translation, {{x, y, z}});
    }
    [[nodiscard]] Cmd rotateCmd(double x, double y, double z) override
    {
        return factorCmd("Rotate", &AffineFactors::rotation, {{x, y, z}});
    }
    [[nodiscard]] Vector3d rotation() const override { return factors().rotation; }
    [[nodiscard]] Cmd scaleCmd(double x, double y, double z) override
    {
        return factorCmd("Scale", &AffineFactors::scale, {{x, y, z}});
    }
    [[nodiscard]] Vector3d scale() const override { return factors().scale; }
    [[nodiscard]] Cmd shearCmd(double x, double y, double z) override
    {
        return factorCmd("Shear", &AffineFactors::shear, {{x, y, z}});
    }
    [[nodiscard]] Vector3d shear() const override { return factors().shear; }

    [[nodiscard]] Cmd setMatrixCmd(const Matrix4d& matrix) override
    {
        const auto value = MatrixCommand<Stored>::valueOf(*_access, matrix);
        return value && isEditable() ? std::make_shared<MatrixCommand<Stored>>(
                                           textOf("Set matrix of"), _access, path(), *value)
                                     : nullptr;
    }

private:
    [[nodiscard]] bool isEditable() const { return _access->set && _access->get(path()); }

    [[nodiscard]] std::string textOf(const std::string& verb) const
    {
        return verb + " " + path().back().string();
    }

    [[nodiscard]] AffineFactors factors() const
    {
        return factorsOf(_access->present(path())).value_or(AffineFactors());
    }

    [[nodiscard]] Cmd factorCmd(const std::string& verb, Factor factor, const Vector3d& value) const
    {
        const auto stored = FactorCommand<Stored>::valueWith(*_access, path(), factor, value);
        return stored && isEditable() ? std::make_shared<FactorCommand<Stored>>(
                                            textOf(verb), _access, path(), factor, *stored)
                                      : nullptr;
    }

    const AccessPtr<Stored> _access;
};

template <class Stored>
class AccessTransformHandler : public Transform3dHandler
{
public:
    explicit AccessTransformHandler(Access<Stored> access)
        : _access(std::make_shared<const Access<Stored>>(std::move(access)))
    {}

    [[nodiscard]] Transform3d::Ptr transform3d(const SceneItem::Ptr& item) const override
    {
        return _access->get(item->path()) ? std::make_shared<AccessTransform<Stored>>(_access, item)
                                          : nullptr;
    }

private:
    const AccessPtr<Stored> _access;
};

/// The attribute as a vector; `std::nullopt` if it has no value.
std::optional<Vector3d> vectorIn(const AttributeVariant& value)
{
    if (const auto* exact = std::get_if<Vector3d>(&value)) {
        return *exact;
    }
    if (const auto* single = std::get_if<TypedVectorN<float, 3>>(&value)) {
        const auto& [x, y, z] = single->vector;
        return Vector3d({x, y, z});
    }
    return std::nullopt;
}

/// The value for an attribute of that type.
AttributeVariant variantOf(const Vector3d& value, const std::string& type)
{
    if (type == Attribute::kDouble3) {
        return value;
    }
    const auto& [x, y, z] = value.vector;
    return TypedVectorN<float, 3>(
        {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)});
}

/// The attributes that stand for factors.
class FactorAttributes
{
public:
    explicit FactorAttributes(AttributesAccess access)
        : _table(std::move(access.table)),
          _names{{{&AffineFactors::translation, std::move(access.translation)},
                  {&AffineFactors::rotation, std::move(access.rotation)},
                  {&AffineFactors::scale, std::move(access.scale)},
                  {&AffineFactors::shear, std::move(access.shear)}}}
    {}

    [[nodiscard]] std::optional<AffineFactors> get(const Path& path) const
    {
        AffineFactors factors;
        for (const auto& [factor, name] : _names) {
            if (!name.empty()) {
                const auto value = vectorIn(_table->value(path, name));
                if (!value) {
                    return std::nullopt;
                }
                factors.*factor = *value;
            }
        }
        return factors;
    }

    /// Whether the factors without an attribute are those of the identity, to rounding.
    [[nodiscard]] bool canBe(const AffineFactors& factors) const
    {
        constexpr auto rounding = 1e-9;
        return std::all_of(_names.begin(), _names.end(), [&](const auto& named) {
            const auto& [factor, name] = named;
            const auto off = factors.*factor - AffineFactors().*factor;
            return !name.empty() || std::all_of(off.vector.begin(), off.vector.end(),
                                                [](double x) { return std::abs(x) <= rounding; });
        });
    }

    /// Announces changes of the attributes as those of the transform, too.
    void announceTransform() const
    {
        for (const auto& [factor, name] : _names) {
            if (!name.empty()) {
                _table->alsoNotify(name, &Transform3d::notify);
            }
        }
    }

    /// Writes the attributes whose values differ.
    void set(const Path& path, const AffineFactors& factors) const
    {
        const auto present = get(path).value_or(AffineFactors());
        for (const auto& [factor, name] : _names) {
            if (!name.empty() && factors.*factor != present.*factor) {
                _table->setValue(path, name, variantOf(factors.*factor, _table->row(name)->type));
            }
        }
    }

private:
    AttributeTable::Ptr _table;
    std::array<std::pair<Factor, std::string>, 4> _names;
};

} // namespace

Transform3dHandler::Ptr transformHandler(MatrixAccess access)
{
    return std::make_shared<AccessTransformHandler<Matrix4d>>(
        Access<Matrix4d>{std::move(access.get), std::move(access.set), {}, true});
}

Transform3dHandler::Ptr transformHandler(FactorsAccess access)
{
    return std::make_shared<AccessTransformHandler<AffineFactors>>(
        Access<AffineFactors>{std::move(access.get), std::move(access.set), {}, true});
}

Transform3dHandler::Ptr transformHandler(AttributesAccess access)
{
    const auto attributes = std::make_shared<const FactorAttributes>(std::move(access));
    attributes->announceTransform();
    Access<AffineFactors> factors;
    factors.get = [attributes](const Path& path) { return attributes->get(path); };
    factors.set = [attributes](const Path& path, const AffineFactors& value) {
        attributes->set(path, value);
    };
    factors.canBe = [attributes](const AffineFactors& value) { return attributes->canBe(value); };
    factors.announces = false;
    return std::make_shared<AccessTransformHandler<AffineFactors>>(std::move(factors));
}

} // namespace Kiv_v4::kit
