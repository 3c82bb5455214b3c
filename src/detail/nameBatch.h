#pragma once

#include <cstddef>
#include <string_view>

#include "kiv/pathComponent.h"

#include "internTable.h"

namespace Kiv_v4::detail {

/// Names that are interned together: the table entries of all are prefetched before the first is
/// searched, so that the waits for memory overlap.
class NameBatch
{
public:
    [[nodiscard]] bool full() const noexcept { return _size == kMost; }

    /// There is room for one more.
    void add(std::string_view name) noexcept
    {
        const auto hash = InternTable::hashOf(name);
        _table.prefetch(hash);
        _names[_size++] = {name.data(), name.size(), hash, nullptr};
    }

    /// Passes the component of each name to `take`, in order, and is empty afterwards. `take` must
    /// not release a component.
    template <class Take>
    void intern(Take& take)
    {
        for (std::size_t i = 0; i != _size; ++i) {
            _names[i].likely = _table.likely(_names[i].hash);
            if (_names[i].likely) {
                prefetch(*_names[i].likely);
            }
        }
        for (std::size_t i = 0; i != _size; ++i) {
            take(component(_names[i]));
        }
        _size = 0;
    }

private:
    /// Without initial values, since most of a batch is not used.
    struct Name
    {
        const char* begin;
        std::size_t size;
        std::size_t hash;
        PathComponent::Data* likely;
    };

    static void prefetch(const PathComponent::Data& data) noexcept
    {
        constexpr int kToWrite = 1;
        // The reference counts lie in front of the record.
        __builtin_prefetch(reinterpret_cast<const char*>(&data) - 1, kToWrite);
        __builtin_prefetch(&data.name);
    }

    static PathComponent component(const Name& name)
    {
        const std::string_view text(name.begin, name.size);
        return name.likely && name.likely->name == text ? PathComponent(name.likely->self.lock())
                                                        : PathComponent::intern(text, name.hash);
    }

    static constexpr std::size_t kMost = 16;

    const InternTable& _table = internTable();
    Name _names[kMost];
    std::size_t _size = 0;
};

} // namespace Kiv_v4::detail
