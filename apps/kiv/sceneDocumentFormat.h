#pragma once

#include <filesystem>
#include <string>

#include "edits.h"
#include "mounting.h"
#include "sceneDocument.h"

namespace app {

// The two ways between a scene and the text of its document. `folder` is the document's.

inline constexpr auto kFormat = "kiv scene";
inline constexpr auto kVersion = 1;

/// The scene as the text of a document.
[[nodiscard]] std::string documentOf(const Mounting& scene, const std::filesystem::path& folder);

/// Replaces the scene by that of the document. Throws, and tells `onMissing`, as `open` does, but
/// without the file's name.
void openDocument(Mounting& scene, const std::string& text, const std::filesystem::path& folder,
                  Edits& edits, const OnMissing& onMissing);

} // namespace app
