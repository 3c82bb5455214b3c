#pragma once

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include "bound.h"

// What ends before the interpreter does.

namespace bound {

/// What calls Python, and must not be destroyed during a call. It has `end`, after which it calls
/// nothing.
class Calling
{
public:
    [[nodiscard]] bool isCalling() const noexcept { return _nbCalls > 0; }

protected:
    /// Lives as long as a call.
    class Call
    {
    public:
        explicit Call(Calling& caller) : _caller(caller) { ++_caller._nbCalls; }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        ~Call() { --_caller._nbCalls; }

    private:
        Calling& _caller;
    };

private:
    int _nbCalls = 0;
};

/// An object of the library that Python ends by `close()` or a `with` block, at the latest when the
/// interpreter ends.
template <class T>
class Closable
{
public:
    template <class... Arguments>
    requires std::is_constructible_v<T, Arguments...>
    explicit Closable(Arguments&&... arguments)
        : _held(std::make_unique<T>(std::forward<Arguments>(arguments)...))
    {
        if (!_known) {
            _known = true;
            atExit([] {
                while (!_open.empty()) {
                    _open.back()->close();
                }
                _ending.clear();
            });
        }
        _open.push_back(this);
    }
    Closable(const Closable&) = delete;
    Closable& operator=(const Closable&) = delete;
    ~Closable() { close(); }

    void close()
    {
        auto held = std::move(_held);
        _open.erase(std::remove(_open.begin(), _open.end(), this), _open.end());
        if constexpr (std::is_base_of_v<Calling, T>) {
            std::erase_if(_ending, [](const auto& each) { return !each->isCalling(); });
            if (held && held->isCalling()) {
                held->end();
                _ending.push_back(std::move(held));
            }
        }
    }

    [[nodiscard]] bool isOpen() const noexcept { return _held != nullptr; }

    /// Throws when it is closed.
    T* operator->() const { return &**this; }
    T& operator*() const
    {
        if (!_held) {
            throw std::logic_error("it is closed");
        }
        return *_held;
    }

private:
    inline static std::vector<Closable*> _open;
    inline static std::vector<std::unique_ptr<T>> _ending; ///< Closed from inside their own calls.
    inline static bool _known = false;

    std::unique_ptr<T> _held;
};

/// A class that is closed; `key` is the C++ name.
template <class T, class... More>
nb::class_<Closable<T>> bindClosable(nb::module_& module, const char* name, const std::string& key,
                                     const More&... more)
{
    nb::class_<Closable<T>> type(module, name, contract(key), more...);
    type.def("close", &Closable<T>::close, "Ends it; nothing happens when it has ended.");
    type.def_prop_ro("is_open", &Closable<T>::isOpen, "Whether it has not been closed.");
    type.def("__enter__", [](nb::object self) { return self; });
    type.def("__exit__", [](Closable<T>& self, nb::args) { self.close(); });
    return type;
}

/// A container that Python made and that is emptied when the interpreter ends, since what it holds
/// may lead to Python objects that lead back to it, by ways that the collector does not see.
template <class T>
class Emptied : public T
{
public:
    template <class... Arguments>
    explicit Emptied(Arguments&&... arguments) : T(std::forward<Arguments>(arguments)...)
    {
        if (!_known) {
            _known = true;
            atExit([] {
                for (const auto all = _living; auto* const each : all) {
                    each->clear();
                }
            });
        }
        _living.push_back(this);
    }
    Emptied(const Emptied&) = delete;
    Emptied& operator=(const Emptied&) = delete;
    ~Emptied() override
    {
        _living.erase(std::remove(_living.begin(), _living.end(), this), _living.end());
    }

private:
    inline static std::vector<T*> _living;
    inline static bool _known = false;
};

/// Makes one in the room of a `T` that Python has.
template <class T, class... Arguments>
void makeEmptied(T* room, Arguments&&... arguments)
{
    static_assert(sizeof(Emptied<T>) == sizeof(T));
    new (room) Emptied<T>(std::forward<Arguments>(arguments)...);
}

} // namespace bound
