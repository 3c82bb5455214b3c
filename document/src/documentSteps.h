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

/// What a step works with.
struct Target
{
    Workspace& scene;
    host::Transaction& edits;
    SceneItem::Ptr item;
};

/// Reading makes steps of what the document says of an item, and checks it meanwhile; nothing
/// changes until they are carried out.
using Step = std::function<void(const Target&)>;
using Steps = std::vector<Step>;

using MaybeCursor = std::optional<JsonCursor>;

/// A failure whose message begins with the place in the document.
struct PlacedError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Does `work` and puts the place in front of the reason for which it fails, unless that has a
/// closer one.
template <class Work>
void doAt(const std::string& pointer, Work work)
{
    host::prefixed<PlacedError, PlacedError, Cancelled>(pointer, work);
}

/// Does `work` on what may be missing: then `onMissing`, if there is one, is told.
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

// What the document says of one item.

/// The properties of the list that the document tells.
[[nodiscard]] Step propertiesStep(const JsonCursor& place, const PropertyList& properties);

/// The properties of the list that the document does not tell, as new items have them; of a list of
/// properties with initial values.
[[nodiscard]] Step initialStep(const MaybeCursor& place, const PropertyList& properties);

/// The transform of a file's item: the matrix and, where it does not tell them exactly, the factors
/// that were set.
[[nodiscard]] Step fileTransformStep(const JsonCursor& place);

[[nodiscard]] Step visibilityStep(const MaybeCursor& place);
[[nodiscard]] Step boundingBoxStep(const MaybeCursor& place);

/// A new attribute of that name.
[[nodiscard]] Step attributeStep(const JsonCursor& place, const std::string& name);

} // namespace Kiv_v4::document
