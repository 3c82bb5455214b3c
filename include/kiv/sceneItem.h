#pragma once

#include <list>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

/// A handle on one object of a run-time's data model. Run-times derive their item class from it and
/// return instances by shared pointer; the library makes none of its own.
///
/// **Invariants.** The path is fixed for the item's lifetime: after a rename or a reparent the
/// run-time returns a new item, and this one keeps the old path. To follow an object through such
/// changes, use a path subject. Two items are equal if their paths are, whatever their classes.
class KIV_EXPORT SceneItem
{
public:
    using Ptr = std::shared_ptr<SceneItem>;

    explicit SceneItem(const Path& path);
    SceneItem(const SceneItem&) = delete;
    SceneItem& operator=(const SceneItem&) = delete;
    virtual ~SceneItem();

    /// The run-time's name for this type of item.
    [[nodiscard]] virtual std::string nodeType() const = 0;

    /// The item's type and the types that it derives from, most derived first. By default
    /// `nodeType()` alone.
    [[nodiscard]] virtual std::vector<std::string> ancestorNodeTypes() const;

    /// Whether the item stands for a property of an object rather than an object. By default false.
    [[nodiscard]] virtual bool isProperty() const;

    /// The path that the item was made with.
    [[nodiscard]] const Path& path() const noexcept { return _path; }

    /// The run-time of the path's last segment.
    [[nodiscard]] Rtid runTimeId() const noexcept { return _path.runTimeId(); }

    /// The last component of the path. Throws `InvalidOperationOnPath` if the path is empty.
    [[nodiscard]] std::string nodeName() const;

    /// Equal paths.
    bool operator==(const SceneItem& other) const noexcept { return _path == other._path; }
    bool operator!=(const SceneItem& other) const noexcept { return !(*this == other); }

private:
    const Path _path;
};

/// Items in an order that matters, such as children.
using SceneItemList = std::list<SceneItem::Ptr>;

} // namespace Kiv_v4
