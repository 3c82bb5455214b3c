#pragma once

#include <list>
#include <memory>

#include "kiv/kiv.h"

#include "shotList.h"

class ShotTree;

/// A shot list as a run-time, registered for as long as this object lives.
class ShotListRunTime
{
public:
    explicit ShotListRunTime(Entry show);

    [[nodiscard]] Kiv::Rtid id() const noexcept { return _registration.id(); }
    [[nodiscard]] Kiv::Path rootPath() const;

    /// Takes over data that the application read again.
    void reload(std::list<Entry> sequences);

private:
    const Kiv::RunTimeRegistration _registration;
    const std::shared_ptr<ShotTree> _tree;
};
