#pragma once

#include <vector>

#include "checking.h"

namespace Kiv_v4::conformance {

/// A group of contracts that are checked together, in a process of their own.
struct Probe
{
    std::vector<const char*> contracts;
    void (*run)(Checking& checking);
};

/// All groups, in the order of `contracts()`.
[[nodiscard]] const std::vector<Probe>& probes();

// paths, names, hierarchy
void checkPaths(Checking& checking);
void checkHierarchy(Checking& checking);
void checkOrder(Checking& checking);
/// Also for the items that edits have made.
void checkNames(Checking& checking);

// attributes, transforms
void checkAttributes(Checking& checking);
void checkTransforms(Checking& checking);

// commands and their announcements
void checkMaking(Checking& checking);
void checkEdits(Checking& checking);

// out-of-date objects, and circumstances
void checkStale(Checking& checking);
void checkWithoutScene(Checking& checking);
void checkThrowingObservers(Checking& checking);
void checkFailingAllocations(Checking& checking);
void checkRegistration(Checking& checking);
void checkUnloading(Checking& checking);

} // namespace Kiv_v4::conformance
