#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/value.h"

namespace Kiv_v4 {

/// Describes an attribute independently of any item: node definitions list these descriptions, and
/// attribute editors need them to label, reset and restrict a field.
class KIV_EXPORT AttributeDef
{
public:
    using Ptr = std::shared_ptr<AttributeDef>;

    AttributeDef();
    AttributeDef(const AttributeDef&) = delete;
    AttributeDef& operator=(const AttributeDef&) = delete;
    virtual ~AttributeDef();

    /// The name that the attribute is found by.
    [[nodiscard]] virtual std::string name() const = 0;

    /// The name as a user interface shows it.
    [[nodiscard]] virtual std::string displayName() const = 0;

    /// One of the type constants of `Attribute`.
    [[nodiscard]] virtual std::string type() const = 0;

    /// The value of an attribute that was not set, as text in the form of `Attribute::string`.
    [[nodiscard]] virtual std::string defaultValue() const = 0;

    /// The allowed strings of an enumeration; empty for other types.
    [[nodiscard]] virtual std::vector<std::string> enumValues() const = 0;

    /// The metadata under `key`; a value without a type if there is none.
    [[nodiscard]] virtual Value metadata(const std::string& key) const = 0;
};

} // namespace Kiv_v4
