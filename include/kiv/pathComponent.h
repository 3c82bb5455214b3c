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
/// that record; when the last holder lets go, the entry goes too. Ids only grow: a name that was
/// released and interned again has a new id, so a stale id never equals a later component.
///
/// **Threads.** The intern table is not locked: names are interned, and let go of by the last
/// holder, on the host's main thread. While that keeps a component, others may copy and drop it.
///
/// **Cost.** Interning hashes the name once and compares it once; it allocates (once) only for a
/// name that nobody holds. A component is the size of one shared pointer.
class KIV_EXPORT PathComponent
{
public:
    /// The record that all components of one name share.
    struct Data
    {
        std::uint64_t id;         ///< Given when the name was interned, never given again.
        std::weak_ptr<Data> self; ///< What the table hands out; beside the name, as read with it.
        std::string name;         ///< Any bytes.
        std::size_t nameHash;     ///< Kept so that the table never hashes a name twice.
    };

    /// The null component: no name, the id that no name has, false.
    PathComponent() = default;

    /// Interns `name`: any bytes, the empty string included. Deliberately implicit.
    PathComponent(const std::string& name) : PathComponent(intern(name)) {}

    PathComponent(const PathComponent&) = default;
    PathComponent(PathComponent&&) noexcept = default;
    ~PathComponent() { releaseSharedData(); }

    /// Lets go of the name that was held, and of its entry when nobody else holds it.
    PathComponent& operator=(const PathComponent& other) noexcept
    {
        if (_data != other._data) {
            releaseSharedData();
            _data = other._data;
        }
        return *this;
    }

    /// The same; `other` is null then.
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

    /// The component of `name`, without a string being made for it when the name is known.
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

    /// The name; an empty string for the null component. The reference is good for as long as any
    /// component holds this name.
    [[nodiscard]] const std::string& string() const noexcept
    {
        return _data ? _data->name : emptyName();
    }

    /// Takes the name out of the intern table when this component is its only holder; otherwise,
    /// and for the null component, does nothing. The component keeps its name either way.
    /// Assignment and destruction call it; other code has no need to.
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
