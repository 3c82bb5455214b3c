#pragma once

#include "entries.h"

[[nodiscard]] Kiv::AttributesHandler::Ptr makeAttributesHandler(const EntriesPtr& entries);
