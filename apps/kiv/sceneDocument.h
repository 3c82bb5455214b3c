#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "edits.h"
#include "mounting.h"

namespace app {

// A scene as a document: a JSON file that holds the items in memory with all that they have, and
// which scene files are mounted among them and what was edited of these. Numbers come back bit for
// bit, texts byte for byte.
//
//     {
//       "format": "kiv scene",
//       "version": 1,
//       "items": [
//         {"depth": 0, "name": "world", "type": "root"},
//         {"depth": 1, "name": "shop", "type": "gateway", "mount": {"file": "workshop.gltf"}},
//         ...
//       ],
//       "connections": [...]
//     }
//
// The items are in the order of the tree, parents before children, so that a document is compared
// and merged line by line; `depth` tells the parent. Of an item only what differs from a new one is
// there. Files under the document's folder are named relative to it. A text that is no UTF-8 is
// written as {"bytes": "6bc3"}, infinities and what is no number as "inf", "-inf" and "nan".

/// The files whose place a document takes.
enum class Replacing {
    documents, ///< Documents, whatever scene they hold, and empty files.
    anything,  ///< Every file that is not mounted in the scene.
};

/// Writes the scene to the file, whose old content is there until the new one is complete. Throws
/// `std::runtime_error`, with the file in the message.
void save(const Mounting& scene, const std::string& file,
          Replacing replacing = Replacing::documents);

/// A number that is another one, but for odd chances, when a document of the scene would be. Costs
/// as much as `save`.
[[nodiscard]] std::size_t stateOf(const Mounting& scene);

/// Told of a scene file that cannot be read, or an item that it has not, in one line.
using OnMissing = std::function<void(const std::string& complaint)>;

/// Replaces the scene by that of the document: by commands run in `edits`, which the caller
/// commits. The document is checked and the scene files are read before the first of them.
///
/// Throws `std::runtime_error` with one line: the file, the place in it, the reason. What was run
/// by then, `edits` takes back.
///
/// With `onMissing`, what it is told of is no error: the gateway of the file is an ordinary item,
/// the edits of the item are left out.
///
/// A place in the node editor cannot be taken from the root item: it keeps the one it has when the
/// document has none.
void open(Mounting& scene, const std::string& file, Edits& edits, const OnMissing& onMissing = {});

} // namespace app
