#pragma once

#include <cstring>
#include <type_traits>
#include <utility>

namespace bound {

/// Says, for as long as it lives, that Python calls a virtual function of the class that is bound.
/// If the object has an override in Python, that one has been passed by: the call is
/// `super().name()`, and the C++ function is meant. Without this it would call the override again,
/// without end.
class DirectCall
{
public:
    template <class T>
    DirectCall(const T& object, const char* name)
        : _before(_latest), _object(dynamic_cast<const void*>(&object)), _name(name)
    {
        _latest = this;
    }
    DirectCall(const DirectCall&) = delete;
    DirectCall& operator=(const DirectCall&) = delete;
    ~DirectCall() { _latest = _before; }

    /// Returns whether this very call of the object's function came from Python. Asked by the
    /// function itself, once: what it calls in turn is a call of its own.
    template <class T>
    [[nodiscard]] static bool take(const T& object, const char* name)
    {
        const auto isMeant = _latest && _latest->_object == dynamic_cast<const void*>(&object) &&
                             std::strcmp(_latest->_name, name) == 0;
        if (isMeant) {
            _latest->_object = nullptr;
        }
        return isMeant;
    }

private:
    static inline thread_local DirectCall* _latest = nullptr;

    DirectCall* const _before;
    const void* _object;
    const char* const _name;
};

/// `work` itself or, for a member function of a class with virtual ones, a function that calls it
/// directly.
template <class T, class Work>
decltype(auto) direct(const char*, Work&& work)
{
    return std::forward<Work>(work);
}

template <class T, class Result, class Base, class... Arguments>
requires std::is_polymorphic_v<T>
auto direct(const char* name, Result (Base::*work)(Arguments...))
{
    return [name, work](T& object, Arguments... arguments) -> Result {
        const DirectCall call(object, name);
        return (object.*work)(std::forward<Arguments>(arguments)...);
    };
}

template <class T, class Result, class Base, class... Arguments>
requires std::is_polymorphic_v<T>
auto direct(const char* name, Result (Base::*work)(Arguments...) const)
{
    return [name, work](const T& object, Arguments... arguments) -> Result {
        const DirectCall call(object, name);
        return (object.*work)(std::forward<Arguments>(arguments)...);
    };
}

} // namespace bound
