#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>

#include "kiv/document/workspace.h"
#include "kiv/export.h"
#include "kiv/host/transaction.h"

namespace Kiv_v4::document {

// A scene as a document: a JSON file that holds the items in memory with all that they have, and
// which scene files are mounted among them and what was edited of these. Numbers come back bit for
// bit, texts byte for byte. docs/sceneDocument.md describes the format, and
// share/kiv/sceneDocument.schema.json lets tools check it.

/// Which files a document takes the place of.
enum class Replacing {
    /// Documents, whatever scene they hold, empty files and new ones whose name is not that of a
    /// scene file, such as `x.gltf`.
    Documents,
    Anything, ///< Every file that is not mounted in the scene.
};

/// A document was not saved because of the file whose place or name it would take, and would be
/// with `Replacing::Anything`. The message names the file.
class KIV_EXPORT NotReplaceable : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    NotReplaceable(const NotReplaceable&) = default;
    ~NotReplaceable() override;
};

/// Writes the scene to the file, whose old content is there until the new one is complete. Throws
/// `NotReplaceable` when `replacing` forbids the file, and `std::runtime_error` for all else, with
/// the file in the message.
///
/// Cost: linear in the items in memory and the edits of scene files.
KIV_EXPORT void save(const Workspace& scene, const std::string& file,
                     Replacing replacing = Replacing::Documents);

/// Returns a hash of the scene's document: equal documents hash equal, different ones almost always
/// differ. Costs as much as `save`.
[[nodiscard]] KIV_EXPORT std::size_t documentHash(const Workspace& scene);

/// Told of a scene file that cannot be read, or an item that it does not have, in one line.
using OnMissing = std::function<void(const std::string& complaint)>;

/// Replaces the scene by that of the document: by commands run in `edits`, which the caller
/// commits. The document is checked and the scene files are read before the first command runs.
///
/// Throws `std::runtime_error` with one line: the file, the place in it, the reason. `edits` takes
/// back what was run by then. Throws `Cancelled` when the progress function of the workspace does.
///
/// With `onMissing`, what it is told of is no error: the gateway of the file is an ordinary item,
/// the edits of the item are left out.
///
/// A place in the node editor cannot be taken from the root item: it keeps the one it has when the
/// document has none.
///
/// Cost: linear in the document, but for the scene files that it mounts.
KIV_EXPORT void open(Workspace& scene, const std::string& file, host::Transaction& edits,
                     const OnMissing& onMissing = {});

/// The same as one step of its own, which the installed command manager gets. When it throws, the
/// scene is as it was.
KIV_EXPORT void open(Workspace& scene, const std::string& file, const OnMissing& onMissing = {});

} // namespace Kiv_v4::document
