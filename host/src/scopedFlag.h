#pragma once

#include <utility>

namespace Kiv_v4::host::detail {

/// Sets a flag for as long as it lives, then restores its value.
class ScopedFlag
{
public:
    explicit ScopedFlag(bool& flag) : _flag(flag), _before(std::exchange(flag, true)) {}
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;
    ~ScopedFlag() { _flag = _before; }

private:
    bool& _flag;
    const bool _before;
};

} // namespace Kiv_v4::host::detail
