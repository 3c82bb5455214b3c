#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Kiv_v4::host::detail {

/// Writes the exception being handled, which `what` threw, to the log.
void logThrown(const std::string& what) noexcept;

/// The functions of a host that share the one listener of the core. They may be added and removed
/// while they are called.
template <class... Arguments>
class Receivers
{
public:
    using Receive = std::function<void(Arguments...)>;
    using Ptr = std::shared_ptr<Receive>;

    /// `what` names one of them in the log.
    explicit Receivers(std::string what) : _what(std::move(what)) {}

    void add(const Ptr& receive) { _all.push_back(receive); }
    void remove(const Ptr& receive) { std::erase(_all, receive); }
    [[nodiscard]] bool empty() const noexcept { return _all.empty(); }

    /// Calls the present functions. Their exceptions are written to the log.
    void operator()(Arguments... arguments) const
    {
        const auto now = _all;
        for (const auto& receive : now) {
            try {
                (*receive)(arguments...);
            } catch (...) {
                logThrown(_what);
            }
        }
    }

private:
    const std::string _what;
    std::vector<Ptr> _all;
};

} // namespace Kiv_v4::host::detail
