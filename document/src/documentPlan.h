#pragma once

#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "kiv/document/losslessJson.h"
#include "kiv/document/sceneDocument.h"
#include "kiv/host/transaction.h"

#include "documentSteps.h"

namespace Kiv_v4::document {

// The plan between the text of a document and the scene: all steps, completely read and checked.

/// The document's data of an item in memory.
struct ItemPlan
{
    std::string pointer;
    std::size_t parent = 0; ///< Its position in the document.
    std::string name;
    std::string type;
    Steps steps{};
    std::vector<std::size_t> materials{};
    std::set<std::string> attributes{}; ///< Their names.
};

/// An attribute at an end of a connection: the position of its item, and its name.
struct End
{
    std::size_t item;
    std::string attribute;
};

struct ConnectionPlan
{
    std::string pointer;
    End source;
    End destination;
};

struct Plan
{
    std::vector<ItemPlan> items; ///< The root first, parents before their children.
    std::vector<ConnectionPlan> connections;
};

/// Reads and checks the document, and reads the scene files that it mounts. Throws and calls
/// `onMissing` as `open` does; changes nothing.
[[nodiscard]] Plan planOf(const Json& document, const Workspace& scene,
                          const std::filesystem::path& folder, const OnMissing& onMissing);

/// Replaces the scene by that of the plan.
void carryOut(const Plan& plan, Workspace& scene, host::Transaction& edits);

} // namespace Kiv_v4::document
