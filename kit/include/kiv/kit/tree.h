#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::kit {

/// Data in a tree, which the kit browses and edits. A derived class implements the queries and, for
/// data that can be edited, takes parts out and puts them in. `registerTree` makes of it the
/// hierarchy, the item operations and their commands, which make, delete, duplicate, rename, move
/// and reorder children, with valid and unique names, complete undo and redo, and an announcement
/// of each change.
///
/// **Lifetime.** Handlers, interface objects and commands share the tree, so that those that a
/// client keeps still work after the run-time was unregistered.
class KIV_EXPORT Tree
{
public:
    using Ptr = std::shared_ptr<Tree>;

    /// A child as its parent lists it.
    struct Child
    {
        /// Unique among its siblings.
        std::string name;
        /// As `SceneItem::nodeType`.
        std::string nodeType;
    };

    /// Data outside the tree, with everything under them, in the author's own representation. The
    /// command that took or made them keeps them.
    using Part = std::shared_ptr<void>;

    /// The row after the last child.
    static constexpr std::size_t kLast = std::numeric_limits<std::size_t>::max();

    /// The items are `root` and its descendants, in the same segment.
    explicit Tree(Path root);
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    virtual ~Tree();

    /// Returns the path of the root item.
    [[nodiscard]] const Path& root() const noexcept { return _root; }

    /// Whether `path` is the root or begins with it in the same segment. Clients may pass any path:
    /// look for data below the root only if this is true.
    [[nodiscard]] bool covers(const Path& path) const;

    // The queries.

    /// The paths of the items that begin under the item at `gateway` or, with an empty path, at the
    /// top. By default the root, at the top or where its path says.
    [[nodiscard]] virtual std::vector<Path> roots(const Path& gateway) const;

    /// The node type of the item at `path`; empty if there is none.
    [[nodiscard]] virtual std::string nodeType(const Path& path) const = 0;

    /// The children of the item at `path`, in order; none if there is no such item. Their names
    /// must be unique.
    [[nodiscard]] virtual std::vector<Child> children(const Path& path) const = 0;

    // The edits, by default none. They are only called for existing items, with arguments that the
    // queries before allow. An operation that throws must have changed nothing.

    /// Whether the item at `parent` takes children of that type, new or moved. An empty `nodeType`
    /// means any type.
    [[nodiscard]] virtual bool accepts(const Path& parent, const std::string& nodeType) const;

    /// Whether the item, which is not a root, may be deleted, duplicated, renamed and moved: by
    /// default, whether its parent accepts it.
    [[nodiscard]] virtual bool isEditable(const Path& path) const;

    /// Returns a new part of that type, without a name. Null if it cannot be made: the command then
    /// throws `std::runtime_error`.
    [[nodiscard]] virtual Part make(const std::string& nodeType);

    /// Returns a copy of the item and its descendants.
    [[nodiscard]] virtual Part copy(const Path& path);

    /// Takes the item out of the tree, with its descendants.
    [[nodiscard]] virtual Part take(const Path& path);

    /// Inserts a part as the item at `path`, before the child that is at `row` now, or last.
    virtual void put(const Path& path, const Part& part, std::size_t row);

    /// Gives the item another name in its place. By default, calls `take` and `put`.
    virtual void rename(const Path& path, const std::string& name);

    /// Gives the children the order of `names`, which contains each once. By default, takes each
    /// and puts it last.
    virtual void reorder(const Path& parent, const std::vector<std::string>& names);

    /// Returns `name`, made valid for paths and unique among the children of `parent`, not counting
    /// the child `own` unless it is empty. By default lists all children: override it with a
    /// `NameIndex` if there are many.
    [[nodiscard]] virtual std::string freeName(const Path& parent, const std::string& name,
                                               const std::string& own) const;

    /// Returns a new item for the path; null if the tree has none there.
    [[nodiscard]] SceneItem::Ptr item(const Path& path) const;

private:
    const Path _root;
};

/// Installs the handlers of the hierarchy and of the item operations of `tree` for the run-time.
/// Throws `InvalidRunTimeId` if the run-time is not registered.
KIV_EXPORT void registerTree(Rtid runTimeId, const Tree::Ptr& tree);

} // namespace Kiv_v4::kit
