#pragma once

#include <memory>

#include "kiv/attributeInfo.h"
#include "kiv/export.h"

namespace Kiv_v4 {

/// The value of one attribute, the source, feeds another, the destination.
class KIV_EXPORT Connection
{
public:
    using Ptr = std::shared_ptr<Connection>;

    Connection(const AttributeInfo& src, const AttributeInfo& dst);
    virtual ~Connection();

    /// The attribute that is read.
    [[nodiscard]] const AttributeInfo& src() const noexcept { return _src; }
    /// The attribute that is fed.
    [[nodiscard]] const AttributeInfo& dst() const noexcept { return _dst; }

private:
    const AttributeInfo _src;
    const AttributeInfo _dst;
};

} // namespace Kiv_v4
