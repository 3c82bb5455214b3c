#pragma once

#include <memory>
#include <string>

#include "kiv/export.h"
#include "kiv/memory/dataModel.h"
#include "kiv/rtid.h"
#include "kiv/runTimeRegistration.h"

/// An editable scene in memory.
namespace Kiv_v4::memory {

/// The in-memory data model as a run-time: the constructor registers name, handlers and component
/// separator, the destructor unregisters them. Any number may exist at a time, each with a name and
/// a scene of its own.
///
/// **Lifetime.** Items and interface objects obtained through it may outlive it; they then act as
/// for a removed item.
class KIV_EXPORT RunTime
{
public:
    /// Throws `InvalidRunTimeName` if the name is already registered, and `std::invalid_argument`
    /// if `rootName` is not a valid item name; then nothing is registered.
    explicit RunTime(const std::string& name = "memory", const std::string& rootName = "world");
    RunTime(const RunTime&) = delete;
    RunTime& operator=(const RunTime&) = delete;
    ~RunTime();

    /// The id that the run-time was given.
    [[nodiscard]] Rtid id() const noexcept;
    /// The scene that the run-time shows.
    [[nodiscard]] DataModel& model() const noexcept;

private:
    const RunTimeRegistration _registration;
    const std::shared_ptr<Tree> _tree;
    const std::unique_ptr<DataModel> _model;
};

} // namespace Kiv_v4::memory
