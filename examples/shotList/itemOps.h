#pragma once

#include "entries.h"

[[nodiscard]] Kiv::SceneItemOpsHandler::Ptr makeSceneItemOpsHandler(const EntriesPtr& entries);
