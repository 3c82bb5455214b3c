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

    /// The transform of `item`; null for a null item, an empty path, a run-time that offers
    /// none, and an item that has none. Exceptions of the run-time are logged and pass through.
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
    /// `std::runtime_error` when a gateway is no item any more or has no transform. That and the
    /// exceptions of a run-time are logged and pass through.
    [[nodiscard]] Matrix4d inclusiveMatrix() const;

    /// The same without the item's own matrix: from its parent's space to world space.
    [[nodiscard]] Matrix4d exclusiveMatrix() const;
};

} // namespace Kiv_v4
