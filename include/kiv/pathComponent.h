#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kiv/export.h"

namespace Kiv_v4 {

namespace detail {
class NameBatch;
}

/// One name of a path, interned: all live components of one name share one record, so comparing and
/// hashing cost one integer operation and copying costs one reference count.
///
/// **Invariants.** While a component holds a name, the process-wide intern table maps the name to
/// that record; when the last holder releases it, the entry is removed. Ids only grow: a name that
/// was released and interned again has a new id, so a stale id never equals a later component.
///
/// **Threads.** The intern table is not locked: names must be interned, and released by their last
/// holder, on the host's main thread. While the main thread keeps a component, other threads may
/// copy and drop it.
///
/// **Cost.** Interning hashes the name once and compares it once; it allocates (once) only for a
/// name that nobody holds. A component is the size of one shared pointer.
class KIV_EXPORT PathComponent
{
public:
    /// The record that all components of one name share.
    struct Data
    {
        std::uint64_t id;         ///< Assigned when the name was interned, never assigned again.
        std::weak_ptr<Data> self; ///< The table's reference to the record; beside the name, since
                                  ///< both are read together.
        std::string name;         ///< Any bytes.
        std::size_t nameHash;     ///< Kept so that the table never hashes a name twice.
    };

    /// The null component: no name, the id that no name has, and false as a boolean.
    PathComponent() = default;

    /// Interns `name`: any bytes, the empty string included. Deliberately implicit.
    PathComponent(const std::string& name) : PathComponent(intern(name)) {}

    PathComponent(const PathComponent&) = default;
    PathComponent(PathComponent&&) noexcept = default;
    ~PathComponent() { releaseSharedData(); }

    /// Releases the former name, and its entry if no other component holds it.
    PathComponent& operator=(const PathComponent& other) noexcept
    {
        if (_data != other._data) {
            releaseSharedData();
            _data = other._data;
        }
        return *this;
    }

    /// The same; `other` is null afterwards.
    PathComponent& operator=(PathComponent&& other) noexcept
    {
        if (_data != other._data) {
            releaseSharedData();
            _data = std::move(other._data);
        } else if (this != &other) {
            other._data.reset();
        }
        return *this;
    }

    /// The component of `name`. Makes no string if the name is interned already.
    [[nodiscard]] static PathComponent intern(std::string_view name);

    /// One component per name, in order.
    [[nodiscard]] static std::vector<PathComponent>
    toComponents(const std::vector<std::string>& names);

    /// Whether the intern table has an entry for `name`.
    [[nodiscard]] static bool exists(const std::string& name);

    /// The number of names in the intern table.
    [[nodiscard]] static std::size_t tableSize();

    /// The id of the name; all bits set for the null component.
    [[nodiscard]] std::uint64_t id() const noexcept
    {
        return _data ? _data->id : ~std::uint64_t{0};
    }

    /// The name; an empty string for the null component. The reference is valid while any component
    /// holds this name.
    [[nodiscard]] const std::string& string() const noexcept
    {
        return _data ? _data->name : emptyName();
    }

    /// Removes the name from the intern table if this component is its only holder; otherwise, and
    /// for the null component, does nothing. The component keeps its name either way. Assignment
    /// and destruction call it; other code need not.
    void releaseSharedData() noexcept
    {
        if (_data.use_count() == 1) {
            forget(*_data);
        }
    }

    /// True unless this is the null component.
    explicit operator bool() const noexcept { return _data != nullptr; }

    /// Same name, or both null. Every live record has an id of its own, so comparing records
    /// compares ids.
    bool operator==(const PathComponent& other) const noexcept { return _data == other._data; }
    bool operator!=(const PathComponent& other) const noexcept { return _data != other._data; }

private:
    friend class detail::NameBatch;

    KIV_HIDDEN static PathComponent intern(std::string_view name, std::size_t hash);

    explicit PathComponent(std::shared_ptr<Data>&& data) noexcept : _data(std::move(data)) {}

    static const std::string& emptyName() noexcept;
    static void forget(const Data& data) noexcept;

    std::shared_ptr<Data> _data;
};

} // namespace Kiv_v4

/// The id itself: what containers keyed by components use.
template <>
struct std::hash<Kiv_v4::PathComponent>
{
    /// The component's id.
    std::size_t operator()(const Kiv_v4::PathComponent& component) const noexcept
    {
        return static_cast<std::size_t>(component.id());
    }
};
