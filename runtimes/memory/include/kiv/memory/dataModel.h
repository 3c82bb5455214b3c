#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::memory {

class Tree;

/// An editable scene in memory: a tree of items with a name and a node type each, under one root
/// item. It is the data model behind a `memory::RunTime`; the library's interfaces (`Hierarchy`,
/// ...) reach the same items.
///
///     memory::RunTime runTime;
///     auto& model = runTime.model();
///     const auto props = model.make(model.root(), "group", "props");
///     const auto cube = model.make(props->path(), "mesh", "cube"); // /world/props/cube
///
/// An item can be a gateway: the items of another run-time begin under it, behind its own children.
///
/// **Errors.** A path that names no item, and a name or place that is not allowed, throw
/// `std::invalid_argument` with the path or name in the message; the scene stays as it was.
class KIV_EXPORT DataModel
{
public:
    /// The character that components are written with.
    static constexpr char kSeparator = '/';

    /// For `RunTime`, which makes the one model of its registration.
    explicit DataModel(std::shared_ptr<Tree> tree);
    DataModel(const DataModel&) = delete;
    DataModel& operator=(const DataModel&) = delete;
    ~DataModel();

    /// The path of the root item, which is never renamed, moved or removed.
    [[nodiscard]] const Path& root() const noexcept;

    /// The item at `path`, or null.
    [[nodiscard]] SceneItem::Ptr item(const Path& path) const;

    /// The number of items, the root included. Linear in it.
    [[nodiscard]] std::size_t size() const noexcept;

    /// Makes a last child. A name is not empty, has no control character, no `/` and no path
    /// segment separator (`PathString::pathSegmentSeparator`), and is unique among its siblings.
    SceneItem::Ptr make(const Path& parent, const std::string& nodeType, const std::string& name);

    /// Gives the item another name and returns it under its new path.
    SceneItem::Ptr rename(const Path& item, const std::string& name);

    /// Moves the item with all that is under it behind the last child of `parent`, which must not
    /// be the item or lie under it, and returns it under its new path.
    SceneItem::Ptr move(const Path& item, const Path& parent);

    /// Removes the item with all that is under it.
    void remove(const Path& item);

    /// `name`, made fit and unique among the children of `parent`: characters that are not allowed
    /// become `_`, and a number is added, or counted up, while the name is taken.
    [[nodiscard]] std::string uniqueName(const Path& parent, const std::string& name) const;

    /// Lets the items of `nestedRunTimeId` begin under the item; 0 makes it an ordinary item again.
    void setGateway(const Path& item, Rtid nestedRunTimeId);

    /// The run-time whose items begin under the item; 0 for an ordinary item.
    [[nodiscard]] Rtid gateway(const Path& item) const;

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
