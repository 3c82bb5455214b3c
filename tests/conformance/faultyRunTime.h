#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/runTimeRegistration.h"

namespace test {

/// The faults of a run-time.
enum class Fault {
    None,
    NoNotification,
    NotificationBeforeTheChange,
    WrongPathInTheNotification,
    DanglingItemAfterRename,
    UndoLosesTheOrder,
    RedoForgets,
    CommandChangesWhenMade,
    NameWithSeparator,
    ParentIsAnother,
    MatrixIgnoresTheParent,
    TextDoesNotComeBack,
    CrashOnStalePath,
    ForgottenUnregistering,
    ExceptionFromUndo,
    OrderChangesByItself
};

class Nodes;

/// A small tree of nodes with a size and a place, editable and correct except for one fault.
class FaultyRunTime
{
public:
    explicit FaultyRunTime(Fault fault);
    FaultyRunTime(const FaultyRunTime&) = delete;
    FaultyRunTime& operator=(const FaultyRunTime&) = delete;
    ~FaultyRunTime();

private:
    const Fault _fault;
    std::unique_ptr<Kiv_v4::RunTimeRegistration> _registration;
};

} // namespace test
