#pragma once

#include <memory>
#include <utility>

namespace Kiv_v4::memory {

/// The data of a node beyond its name, type and place: at most one record of each type, such as its
/// transform. A record that was never edited is not stored, so that a plain node stays small.
///
/// Records are found by type in a short list; a copy has copies of all of them.
class Properties
{
public:
    Properties() = default;
    Properties(const Properties& other) : _first(other._first ? other._first->copy() : nullptr) {}
    Properties(Properties&&) noexcept = default;
    Properties& operator=(Properties other) noexcept
    {
        std::swap(_first, other._first);
        return *this;
    }
    ~Properties() = default;

    /// The record; null if it was never edited.
    template <class Record>
    [[nodiscard]] const Record* find() const noexcept
    {
        return findIn<Record>(_first.get());
    }

    /// The record, or a new one's values.
    template <class Record>
    [[nodiscard]] const Record& get() const noexcept
    {
        static const Record initial;
        const auto* record = find<Record>();
        return record ? *record : initial;
    }

    /// The record for a change, made if there is none.
    template <class Record>
    [[nodiscard]] Record& edit()
    {
        if (auto* record = findIn<Record>(_first.get())) {
            return *record;
        }
        auto entry = std::make_unique<Entry<Record>>(Record());
        auto& record = entry->record;
        entry->next = std::move(_first);
        _first = std::move(entry);
        return record;
    }

private:
    struct AnyEntry
    {
        explicit AnyEntry(const void* ofType) : type(ofType) {}
        AnyEntry(const AnyEntry&) = delete;
        AnyEntry& operator=(const AnyEntry&) = delete;
        virtual ~AnyEntry() = default;

        /// With the records after it.
        [[nodiscard]] virtual std::unique_ptr<AnyEntry> copy() const = 0;

        const void* const type;
        std::unique_ptr<AnyEntry> next;
    };

    /// Its address identifies the type.
    template <class Record>
    static constexpr char kType = 0;

    template <class Record>
    struct Entry : AnyEntry
    {
        explicit Entry(const Record& copied) : AnyEntry(&kType<Record>), record(copied) {}

        [[nodiscard]] std::unique_ptr<AnyEntry> copy() const override
        {
            auto copied = std::make_unique<Entry>(record);
            copied->next = AnyEntry::next ? AnyEntry::next->copy() : nullptr;
            return copied;
        }

        Record record;
    };

    template <class Record>
    [[nodiscard]] static Record* findIn(AnyEntry* first) noexcept
    {
        for (auto* entry = first; entry; entry = entry->next.get()) {
            if (entry->type == &kType<Record>) {
                return &static_cast<Entry<Record>*>(entry)->record;
            }
        }
        return nullptr;
    }

    std::unique_ptr<AnyEntry> _first;
};

} // namespace Kiv_v4::memory
