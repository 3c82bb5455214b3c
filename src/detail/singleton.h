#pragma once

#include <memory>
#include <stdexcept>
#include <utility>

#include "noDestructor.h"

namespace Kiv_v4::detail {

/// Clears `value` when the library is unloaded or the process ends. The value itself must never be
/// destroyed: code that uses it later, such as the destructor of another static object, finds it
/// empty instead of destroyed.
template <class T>
class EmptiedAtExit
{
public:
    explicit EmptiedAtExit(NoDestructor<T>& value) noexcept : _value(*value) {}
    ~EmptiedAtExit() { const auto dropped = std::exchange(_value, T()); }

    EmptiedAtExit(const EmptiedAtExit&) = delete;
    EmptiedAtExit& operator=(const EmptiedAtExit&) = delete;

private:
    T& _value;
};

/// Sets or, with null, clears the one object of its kind that a host supplies for the process.
/// Throws `std::invalid_argument` with `refusal` if there is one already.
template <class T>
void installSingleton(std::shared_ptr<T>& place, const std::shared_ptr<T>& object,
                      const char* refusal)
{
    if (object && place) {
        throw std::invalid_argument(refusal);
    }
    place = object;
}

} // namespace Kiv_v4::detail
