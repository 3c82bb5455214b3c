#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>

#include "kiv/document/workspace.h"
#include "kiv/export.h"
#include "kiv/host/transaction.h"

namespace Kiv_v4::document {

// A scene as a document: a JSON file with all data of the items in memory, the mounted scene files,
// and the edits of these. Numbers are restored bit for bit, texts byte for byte.
// docs/sceneDocument.md describes the format, and share/kiv/sceneDocument.schema.json lets tools
// check it.

/// The files that a document may replace.
enum class Replacing {
    /// Documents of any scene, empty files, and new files unless their names are those of scene
    /// files, such as `x.gltf`.
    Documents,
    Anything, ///< Every file that is not mounted in the scene.
};

/// A document was not saved because of an existing file or the name of the new one;
/// `Replacing::Anything` allows it. The message names the file.
class KIV_EXPORT NotReplaceable : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    NotReplaceable(const NotReplaceable&) = default;
    ~NotReplaceable() override;
};

/// Writes the scene to the file and keeps the old content until the new one is complete. Throws
/// `NotReplaceable` if `replacing` forbids the file, and `std::runtime_error` for all other
/// failures, with the file in the message.
///
/// Cost: linear in the items in memory and the edits of scene files.
KIV_EXPORT void save(const Workspace& scene, const std::string& file,
                     Replacing replacing = Replacing::Documents);

/// Returns a hash of the scene's document: equal documents hash equal, different ones almost always
/// differ. Costs as much as `save`.
[[nodiscard]] KIV_EXPORT std::size_t documentHash(const Workspace& scene);

/// Called with one line for each scene file that cannot be read and each item that a scene file
/// does not have.
using OnMissing = std::function<void(const std::string& complaint)>;

/// Replaces the scene by that of the document, with commands run in `edits`, which the caller must
/// commit. Checks the document and reads the scene files before the first command runs.
///
/// Throws `std::runtime_error` with one line: the file, the place in it, the reason. The destructor
/// or `rollBack` of `edits` then undoes the commands that ran. Throws `Cancelled` if the progress
/// function of the workspace does.
///
/// With `onMissing`, missing files and items are not errors: the gateway of a missing file becomes
/// an ordinary item, and the edits of a missing item are left out.
///
/// The root item keeps its position in the node editor if the document has none for it, since it
/// cannot be cleared.
///
/// Cost: linear in the document, plus reading the scene files that it mounts.
KIV_EXPORT void open(Workspace& scene, const std::string& file, host::Transaction& edits,
                     const OnMissing& onMissing = {});

/// The same as one undo step, which goes to the installed command manager. If it throws, the scene
/// is unchanged.
KIV_EXPORT void open(Workspace& scene, const std::string& file, const OnMissing& onMissing = {});

} // namespace Kiv_v4::document
