#pragma once

#include <filesystem>
#include <string>

#include "kiv/document/sceneDocument.h"

namespace Kiv_v4::document {

// Conversion of a scene to the text of its document, and back. `folder` is the document's.

inline constexpr auto kFormat = "kiv scene";
inline constexpr auto kVersion = 1;
inline constexpr auto kUsualRunTime = "assimp"; ///< Shows mounted files, unless another is named.

/// The scene as the text of a document.
[[nodiscard]] std::string documentOf(const Workspace& scene, const std::filesystem::path& folder);

/// Replaces the scene by that of the document. Throws and calls `onMissing` as `open` does, but
/// without the file's name.
void openDocument(Workspace& scene, const std::string& text, const std::filesystem::path& folder,
                  host::Transaction& edits, const OnMissing& onMissing);

} // namespace Kiv_v4::document
