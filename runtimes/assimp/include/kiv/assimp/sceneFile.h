#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4::assimp {

/// Told how far reading has come, from 0 to 1 and never backwards; reading is given up, at the next
/// step of the importer, when it returns false. It is called on the thread that reads. What it
/// throws ends the reading and reaches the caller.
using Progress = std::function<bool(float fraction)>;

/// A scene file as it was read: an immutable tree of named nodes, which any number of mounts share.
class SceneFile;

/// Reads a scene file of any format that the importer knows. Throws `ImportError`.
///
/// Names are made fit for path strings as they are configured now: when the path segment separator
/// is changed (`PathString::setPathSegmentSeparator`), a file is read after that.
///
/// **Reentrancy.** Called on the host's main thread, since it makes path components. The importer
/// itself runs on a thread with a stack of its own, large enough for scenes of a hundred thousand
/// levels, while the caller waits; what it writes to the standard C++ streams is dropped.
///
/// **Locales.** A file is read the same in every locale, and `progress` is called in the host's.
/// The C library's locale is changed on the importer's thread only. The global C++ locale, which is
/// the whole program's, is left alone when it writes numbers as the classic one does; otherwise,
/// while the importer works, it is the host's with the numbers of the classic locale. Of other
/// threads this reaches only the C++ streams that they construct meanwhile.
///
/// Cost: the file is read and converted as a whole; nothing is read later.
[[nodiscard]] KIV_EXPORT std::shared_ptr<const SceneFile> read(const std::string& file,
                                                               const Progress& progress = {});

/// A file that could not be read, or was given up. The message is the file, a colon and the reason,
/// in one line.
class KIV_EXPORT ImportError : public std::runtime_error
{
public:
    ImportError(const std::string& file, const std::string& reason);
    ImportError(const ImportError&) = default;
    ~ImportError() override;

    /// The file as it was given to `read`.
    [[nodiscard]] const std::string& file() const noexcept { return _file; }

    /// One line; "cancelled" when the progress function gave up.
    [[nodiscard]] const std::string& reason() const noexcept { return _reason; }

private:
    std::string _file;
    std::string _reason;
};

} // namespace Kiv_v4::assimp
