#pragma once

#include "entries.h"

[[nodiscard]] Kiv::HierarchyHandler::Ptr makeHierarchyHandler(const EntriesPtr& entries);
