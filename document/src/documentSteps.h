#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/document/losslessJson.h"
#include "kiv/document/sceneDocument.h"
#include "kiv/host/errorPrefix.h"
#include "kiv/host/transaction.h"
#include "kiv/sceneItem.h"

#include "documentProperties.h"

namespace Kiv_v4::document {

/// The context of a step.
struct Target
{
    Workspace& scene;
    host::Transaction& edits;
    SceneItem::Ptr item;
};

/// Reading makes steps of the document's data of an item and checks the data; nothing changes until
/// the steps are executed.
using Step = std::function<void(const Target&)>;
using Steps = std::vector<Step>;

using MaybeCursor = std::optional<JsonCursor>;

/// A failure whose message begins with the place in the document.
struct PlacedError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Does `work` and puts the place in front of the message of its exception, unless that already has
/// a more exact one.
template <class Work>
void doAt(const std::string& pointer, Work work)
{
    host::prefixed<PlacedError, PlacedError, Cancelled>(pointer, work);
}

/// Does `work` that fails if a file or item is missing: then calls `onMissing`, if there is one.
template <class Work>
void findAt(const std::string& pointer, const OnMissing& onMissing, Work work)
{
    try {
        doAt(pointer, work);
    } catch (const PlacedError& error) {
        if (!onMissing) {
            throw;
        }
        onMissing(error.what());
    }
}

// The document's data of one item.

/// The properties of the list that the document has.
[[nodiscard]] Step propertiesStep(const JsonCursor& place, const PropertyList& properties);

/// The properties of the list that the document does not have, with the values of new items, which
/// every property of the list must have.
[[nodiscard]] Step initialStep(const MaybeCursor& place, const PropertyList& properties);

/// The transform of a file's item: the matrix and the set factors that it does not determine
/// exactly.
[[nodiscard]] Step fileTransformStep(const JsonCursor& place);

[[nodiscard]] Step visibilityStep(const MaybeCursor& place);
[[nodiscard]] Step boundingBoxStep(const MaybeCursor& place);

/// A new attribute of that name.
[[nodiscard]] Step attributeStep(const JsonCursor& place, const std::string& name);

} // namespace Kiv_v4::document
