#include "kiv/rawAddress.h"

#include "detail/noDestructor.h"
#include "detail/rawAddresses.h"
#include "detail/weakPtrSet.h"

namespace Kiv_v4 {

namespace {

template <class T>
detail::WeakPtrSet<T>& remembered()
{
    static detail::NoDestructor<detail::WeakPtrSet<T>> set;
    return *set;
}

template <class T>
unsigned long long addressOf(const std::shared_ptr<T>& object)
{
    return reinterpret_cast<unsigned long long>(object.get());
}

template <class T>
unsigned long long remember(const std::shared_ptr<T>& object)
{
    auto& set = remembered<T>();
    detail::eraseExpired(set);
    set.insert(object);
    return addressOf(object);
}

template <class T>
std::shared_ptr<T> recall(unsigned long long address)
{
    for (const auto& entry : remembered<T>()) {
        auto object = entry.lock();
        if (object && addressOf(object) == address) {
            return object;
        }
    }
    return nullptr;
}

} // namespace

void detail::forgetDeadAddresses() noexcept
{
    eraseExpired(remembered<SceneItem>());
    eraseExpired(remembered<Attributes>());
}

unsigned long long getRawAddress(const std::shared_ptr<SceneItem>& item)
{
    return remember(item);
}

unsigned long long getRawAddress(const std::shared_ptr<Attributes>& attrs)
{
    return remember(attrs);
}

std::shared_ptr<SceneItem> getSceneItemFromRaw(unsigned long long address)
{
    return recall<SceneItem>(address);
}

std::shared_ptr<Attributes> getAttributesFromRaw(unsigned long long address)
{
    return recall<Attributes>(address);
}

} // namespace Kiv_v4
