#pragma once

#include <memory>
#include <stdexcept>
#include <utility>

#include "noDestructor.h"

namespace Kiv_v4::detail {

/// Drops what `value` holds when the library is unloaded or the process ends. The value itself,
/// which must be one that is never destroyed, stays: code that asks later, such as the destructor
/// of another static object, finds it empty instead of dead.
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

/// Fills or, with null, clears the place of an object that a host supplies once for the process.
/// Throws `std::invalid_argument` with `refusal` when the place is taken.
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
