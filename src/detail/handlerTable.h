#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "kiv/rtid.h"

#include "noDestructor.h"

namespace Kiv_v4::detail {

/// The handlers of one kind by run-time. There are few run-times and their ids ascend, mostly
/// without gaps, so a search in a sorted array is faster than in a hash map, and most insertions
/// append.
template <class Handler>
class HandlerTable
{
public:
    using Ptr = std::shared_ptr<Handler>;
    using Entry = std::pair<Rtid, Ptr>;

    void set(Rtid rtId, const Ptr& handler)
    {
        const auto at = position(*this, rtId);
        if (at != _entries.end() && at->first == rtId) {
            // The replaced handler may use the registry in its destructor.
            const auto replaced = std::exchange(at->second, handler);
        } else {
            _entries.emplace(at, rtId, handler);
        }
    }

    /// The entry's handler, which may be null; null if there is no entry.
    [[nodiscard]] const Ptr& get(Rtid rtId) const noexcept
    {
        const auto at = position(*this, rtId);
        static NoDestructor<const Ptr> none;
        return at != _entries.end() && at->first == rtId ? at->second : *none;
    }

    /// Whether there was an entry to erase.
    bool erase(Rtid rtId)
    {
        const auto at = position(*this, rtId);
        if (at == _entries.end() || at->first != rtId) {
            return false;
        }
        // The handler may use the registry in its destructor: it must die after the table is
        // consistent again.
        const auto released = std::move(at->second);
        _entries.erase(at);
        return true;
    }

    [[nodiscard]] const std::vector<Entry>& entries() const noexcept { return _entries; }

private:
    template <class Table>
    [[nodiscard]] static auto position(Table& table, Rtid rtId) noexcept
    {
        auto at = table._entries.begin();
        const auto size = table._entries.end() - at;
        // Without gaps the id itself determines the place.
        if (size != 0) {
            const auto offset = static_cast<std::ptrdiff_t>(rtId) - at->first;
            if (offset >= 0 && offset < size && at[offset].first == rtId) {
                return at + offset;
            }
        }
        // As std::lower_bound, but computes the next half without a branch: the next id is
        // unpredictable, and a mispredicted branch costs more than the whole search.
        for (auto left = size; left > 0;) {
            const auto half = left / 2;
            at += (left - half) * static_cast<std::ptrdiff_t>(at[half].first < rtId);
            left = half;
        }
        return at;
    }

    std::vector<Entry> _entries;
};

} // namespace Kiv_v4::detail
