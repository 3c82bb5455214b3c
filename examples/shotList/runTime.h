#pragma once

#include "entries.h"

/// A shot list as a run-time, registered for as long as this object lives.
class ShotListRunTime
{
public:
    explicit ShotListRunTime(Entry show);

    [[nodiscard]] Kiv::Rtid id() const noexcept { return _registration.id(); }
    [[nodiscard]] Kiv::Path rootPath() const { return _entries->rootPath(); }

    /// Takes over what the application read anew.
    void reload(std::list<Entry> sequences);

private:
    const Kiv::RunTimeRegistration _registration;
    const EntriesPtr _entries;
};
