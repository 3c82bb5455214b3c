#pragma once

#include <memory>

#include "kiv/kiv.h"

#include "gltfDocument.h"

class GltfTree;

/// A glTF document as a run-time, registered for as long as this object lives: the nodes of its
/// first scene with names, transforms and cameras, and their `extras` as attributes.
class GltfRunTime
{
public:
    /// Throws as `GltfDocument` does for a document without a scene.
    explicit GltfRunTime(GltfDocument document);

    /// The document with all edits, as it is written to a file.
    [[nodiscard]] const GltfDocument::Json& json() const;

private:
    const Kiv::RunTimeRegistration _registration;
    const std::shared_ptr<GltfTree> _tree;
};
