#include "kiv/connection.h"

namespace Kiv_v4 {

Connection::Connection(AttributeInfo const& src, AttributeInfo const& dst) : _src(src), _dst(dst) {}

Connection::~Connection() = default;

} // namespace Kiv_v4
