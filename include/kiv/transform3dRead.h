#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/mathTypes.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// Reads the 3D transform of one scene item.
///
/// Matrices take row vectors: a point of the item's space goes to `point * matrix`, the translation
/// is in the last row, and the item's own matrix stands to the left of its parent's in a product.
/// Lengths are in scene units.
class KIV_EXPORT Transform3dRead
{
public:
    using Ptr = std::shared_ptr<Transform3dRead>;

    /// The transform of `item`; null for a null item, an empty path, a run-time without this
    /// interface, and an item without it. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr transform3dRead(const SceneItem::Ptr& item);

    Transform3dRead();
    Transform3dRead(const Transform3dRead&) = delete;
    Transform3dRead& operator=(const Transform3dRead&) = delete;
    virtual ~Transform3dRead();

    /// The path of the item.
    [[nodiscard]] virtual const Path& path() const = 0;

    /// The item.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// The item's own matrix: from its space to its parent's.
    [[nodiscard]] virtual Matrix4d matrix() const = 0;

    /// From the item's space to that of its run-time's segment: its own matrix and those of its
    /// ancestors in the segment.
    [[nodiscard]] virtual Matrix4d segmentInclusiveMatrix() const = 0;

    /// The same without the item's own matrix: from its parent's space.
    [[nodiscard]] virtual Matrix4d segmentExclusiveMatrix() const = 0;

    /// From the item's space to world space, across run-times: the segment's matrix times the
    /// inclusive matrix of the gateway item, and so on up to the first run-time. Throws
    /// `std::runtime_error` if a gateway no longer exists or has no transform. Logs and rethrows
    /// that and the exceptions of a run-time.
    [[nodiscard]] Matrix4d inclusiveMatrix() const;

    /// The same without the item's own matrix: from its parent's space to world space.
    [[nodiscard]] Matrix4d exclusiveMatrix() const;
};

} // namespace Kiv_v4
