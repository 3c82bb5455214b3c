#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4::assimp {

/// Told how far reading has come, from 0 to 1; reading is given up when it returns false. It must
/// not throw.
using Progress = std::function<bool(float fraction)>;

/// A scene file as it was read: an immutable tree of named nodes, which any number of mounts share.
class SceneFile;

/// Reads a scene file of any format that the importer knows. Throws `ImportError`.
///
/// Cost: the file is read and converted as a whole; nothing is read later.
[[nodiscard]] KIV_EXPORT std::shared_ptr<const SceneFile> read(const std::string& file,
                                                               const Progress& progress = {});

/// A file that could not be read. The message is the file, a colon and the importer's reason, in
/// one line.
class KIV_EXPORT ImportError : public std::runtime_error
{
public:
    ImportError(const std::string& file, const std::string& reason);
    ImportError(const ImportError&) = default;
    ~ImportError() override;

    [[nodiscard]] const std::string& file() const noexcept { return _file; }
    [[nodiscard]] const std::string& reason() const noexcept { return _reason; }

private:
    std::string _file;
    std::string _reason;
};

} // namespace Kiv_v4::assimp
