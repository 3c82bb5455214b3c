#include "kiv/pathComponent.h"

#include "kiv/detail/poolAllocator.h"

#include "detail/internTable.h"
#include "detail/noDestructor.h"

namespace Kiv_v4 {

namespace {

using detail::internTable;

std::uint64_t nextId = 0;

} // namespace

detail::InternTable& detail::internTable()
{
    static NoDestructor<InternTable> table;
    return *table;
}

PathComponent PathComponent::intern(std::string_view name)
{
    return intern(name, detail::InternTable::hashOf(name));
}

PathComponent PathComponent::intern(std::string_view name, std::size_t hash)
{
    auto& table = internTable();
    if (auto* known = table.find(name, hash)) {
        return PathComponent(known->self.lock());
    }
    auto data = std::allocate_shared<Data>(detail::PoolAllocator<Data>(),
                                           Data{nextId, {}, std::string(name), hash});
    data->self = data;
    table.insert(*data);
    ++nextId;
    return PathComponent(std::move(data));
}

std::vector<PathComponent> PathComponent::toComponents(const std::vector<std::string>& names)
{
    return {names.begin(), names.end()};
}

bool PathComponent::exists(const std::string& name)
{
    return internTable().find(name, detail::InternTable::hashOf(name)) != nullptr;
}

std::size_t PathComponent::tableSize()
{
    return internTable().size();
}

const std::string& PathComponent::emptyName() noexcept
{
    static detail::NoDestructor<const std::string> empty;
    return *empty;
}

void PathComponent::forget(const Data& data) noexcept
{
    internTable().erase(data);
}

} // namespace Kiv_v4
