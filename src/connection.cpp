#include "kiv/connection.h"

namespace Kiv_v4 {

Connection::Connection(const AttributeInfo& src, const AttributeInfo& dst) : _src(src), _dst(dst) {}

Connection::~Connection() = default;

} // namespace Kiv_v4
