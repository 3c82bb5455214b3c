#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4::assimp {

/// Called on the thread that reads, with the fraction that was read, from 0 to 1 and never
/// decreasing. Returning false cancels the reading at the importer's next step. An exception ends
/// the reading and passes through to the caller.
using Progress = std::function<bool(float fraction)>;

/// A scene file in memory: an immutable tree of named nodes, which any number of mounts share.
class SceneFile;

/// Reads a scene file of any format that the importer knows. Throws `ImportError` if that fails or
/// is cancelled.
///
/// Names are made valid for the present path segment separator: read files after changing it
/// (`PathString::setPathSegmentSeparator`).
///
/// **Reentrancy.** Must be called on the host's main thread, since it makes path components. The
/// importer itself runs on a thread with a stack of its own, large enough for scenes of a hundred
/// thousand levels, while the caller waits; its output to the standard C++ streams is dropped.
///
/// **Locales.** A file is read the same in every locale, and `progress` is called in the host's.
/// The C library's locale changes on the importer's thread only. The global C++ locale, which
/// belongs to the whole program, does not change if it writes numbers as the classic one does;
/// otherwise, while the importer works, it is the host's with the numbers of the classic locale. In
/// other threads this only affects C++ streams that they construct meanwhile.
///
/// Cost: reads and converts the whole file; nothing is read later.
[[nodiscard]] KIV_EXPORT std::shared_ptr<const SceneFile> read(const std::string& file,
                                                               const Progress& progress = {});

/// A file could not be read, or reading was cancelled. The message is the file, a colon and the
/// reason, in one line.
class KIV_EXPORT ImportError : public std::runtime_error
{
public:
    ImportError(const std::string& file, const std::string& reason);
    ImportError(const ImportError&) = default;
    ~ImportError() override;

    /// The argument of `read`.
    [[nodiscard]] const std::string& file() const noexcept { return _file; }

    /// The reason, one line; "cancelled" if the progress function cancelled.
    [[nodiscard]] const std::string& reason() const noexcept { return _reason; }

private:
    std::string _file;
    std::string _reason;
};

} // namespace Kiv_v4::assimp
