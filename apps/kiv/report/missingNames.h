#pragma once

#include <string>

#include "kiv/sceneItem.h"

#include "report/criteria.h"
#include "terminal/output.h"

namespace app {

// Why a search found nothing: names that no item at or under some roots has. Each gets a complaint,
// behind what was printed so far.

/// Complains when `type` is not empty and no item is of it, with the types that there are.
void complainOfMissingType(const Kiv_v4::SceneItemList& roots, const std::string& type,
                           Output& output);

/// Does so for the type that is wanted, and complains of each name of an item, a material or a
/// property that is wanted and that nothing has, when something has one near to it.
void complainOfMissingNames(const Kiv_v4::SceneItemList& roots, const Criteria& criteria,
                            Output& output);

} // namespace app
