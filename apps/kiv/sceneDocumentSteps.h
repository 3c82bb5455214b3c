#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/sceneItem.h"

#include "edits.h"
#include "exactJson.h"
#include "interrupts.h"
#include "mounting.h"
#include "sceneDocument.h"

namespace app {

/// What a step works with.
struct Target
{
    Mounting& scene;
    Edits& edits;
    Kiv_v4::SceneItem::Ptr item;
};

/// Reading makes steps of what the document says of an item, and checks it meanwhile; nothing
/// changes until they are carried out.
using Step = std::function<void(const Target&)>;
using Steps = std::vector<Step>;

using MaybePlace = std::optional<JsonPlace>;

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
    try {
        work();
    } catch (const PlacedError&) {
        throw;
    } catch (const std::exception& error) {
        throw PlacedError(pointer + ": " + error.what());
    }
}

/// Does `work` on what may be missing: then `onMissing`, if there is one, is told.
template <class Work>
void findAt(const std::string& pointer, const OnMissing& onMissing, Work work)
{
    try {
        doAt(pointer, work);
    } catch (const PlacedError& error) {
        endIfInterrupted();
        if (!onMissing) {
            throw;
        }
        onMissing(error.what());
    }
}

// What the document says of one item.

/// All properties: what the document does not tell is that of a new item.
[[nodiscard]] Step transformStep(const MaybePlace& place);

/// The transform of a file's item: the matrix and, where it does not tell them exactly, the factors
/// that were set.
[[nodiscard]] Step fileTransformStep(const JsonPlace& place);

[[nodiscard]] Step cameraStep(const JsonPlace& place);
[[nodiscard]] Step lightStep(const JsonPlace& place);
[[nodiscard]] Step visibilityStep(const MaybePlace& place);
[[nodiscard]] Step boundingBoxStep(const MaybePlace& place);

/// The place in a node editor.
[[nodiscard]] Step graphNodeStep(const JsonPlace& place);

/// A new attribute of that name.
[[nodiscard]] Step attributeStep(const JsonPlace& place, const std::string& name);

} // namespace app
