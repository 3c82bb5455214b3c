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

/// Data in a tree, as the kit browses and edits them. An author derives from it, answers what there
/// is and, for data that can be edited, takes parts out and puts them in; `registerTree` makes of
/// it the hierarchy, the item operations and their commands: children made, deleted, duplicated,
/// renamed, moved and put in order, with names that fit and differ, with undo and redo that restore
/// everything, each change announced.
///
/// **Lifetime.** Handlers, interface objects and commands share the tree, so that what a client
/// keeps still answers when the run-time has gone.
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

    /// Data that are not in the tree at present, with everything under them: in the author's own
    /// representation, kept by the command that took or made them.
    using Part = std::shared_ptr<void>;

    /// The row after the last child.
    static constexpr std::size_t kLast = std::numeric_limits<std::size_t>::max();

    /// The items are `root` and what is under it, in the same segment.
    explicit Tree(Path root);
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    virtual ~Tree();

    /// Returns the path of the root item.
    [[nodiscard]] const Path& root() const noexcept { return _root; }

    /// Whether `path` is the root or one that begins with it in the same segment. Paths come from
    /// anybody: look for data below the root only when this is true.
    [[nodiscard]] bool covers(const Path& path) const;

    // What there is.

    /// The paths of the items that begin under the item at `gateway` or, with an empty path, at the
    /// top. By default the root, at the top or where its path says.
    [[nodiscard]] virtual std::vector<Path> roots(const Path& gateway) const;

    /// The node type of the item at `path`; empty when there is none.
    [[nodiscard]] virtual std::string nodeType(const Path& path) const = 0;

    /// The children of the item at `path`, in order; none when there is no such item. The names
    /// differ.
    [[nodiscard]] virtual std::vector<Child> children(const Path& path) const = 0;

    // What can be edited: by default, nothing. Called for items that exist, with what the
    // operations before have answered. What one of them throws is taken as that it did nothing.

    /// Whether the item at `parent` takes children of that type, new or moved. `nodeType` is empty
    /// when the question is for any type.
    [[nodiscard]] virtual bool accepts(const Path& parent, const std::string& nodeType) const;

    /// Whether the item, which is no root, may be deleted, duplicated, renamed and moved: by
    /// default, whether its parent accepts it.
    [[nodiscard]] virtual bool isEditable(const Path& path) const;

    /// A new part of that type, without a name. Null when there can be none after all: the command
    /// then throws `std::runtime_error`.
    [[nodiscard]] virtual Part make(const std::string& nodeType);

    /// A copy of the item and everything under it.
    [[nodiscard]] virtual Part copy(const Path& path);

    /// Takes the item out of the tree, with everything under it.
    [[nodiscard]] virtual Part take(const Path& path);

    /// Puts a part in as the item at `path`, before the child that is at `row` now, or last.
    virtual void put(const Path& path, const Part& part, std::size_t row);

    /// Gives the item another name in its place. By default, takes it and puts it.
    virtual void rename(const Path& path, const std::string& name);

    /// Gives the children the order of `names`, which holds each once. By default, takes each and
    /// puts it last.
    virtual void reorder(const Path& parent, const std::vector<std::string>& names);

    /// `name` made fit for paths and unlike those of the children of `parent`, of which `own`, when
    /// it is not empty, does not count. By default asks for all children: override it with a
    /// `NameIndex` where there are many.
    [[nodiscard]] virtual std::string freeName(const Path& parent, const std::string& name,
                                               const std::string& own) const;

    /// A new item for the path; null when there is none.
    [[nodiscard]] SceneItem::Ptr item(const Path& path) const;

private:
    const Path _root;
};

/// Installs the handlers of the hierarchy and of the item operations of `tree` for the run-time.
/// Throws `InvalidRunTimeId` when there is no such run-time.
KIV_EXPORT void registerTree(Rtid runTimeId, const Tree::Ptr& tree);

} // namespace Kiv_v4::kit
