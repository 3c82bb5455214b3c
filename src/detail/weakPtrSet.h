#pragma once

#include <memory>
#include <set>

namespace Kiv_v4::detail {

/// Objects known but not owned, one entry per ownership record.
template <class T>
using WeakPtrSet = std::set<std::weak_ptr<T>, std::owner_less<std::weak_ptr<T>>>;

/// Forgets every entry whose object has died.
template <class T>
void eraseExpired(WeakPtrSet<T>& set)
{
    std::erase_if(set, [](const std::weak_ptr<T>& entry) { return entry.expired(); });
}

} // namespace Kiv_v4::detail
