#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/object3d.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

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
/// An item can be a gateway: the items of another run-time begin under it, after its own children.
///
/// **Node types.** Any text; some mean something. Items of type `camera` offer `Camera`. Lights are
/// of a type for their kind: `directionalLight`, `pointLight`, `spotLight`, `areaLight`, or `light`
/// for a light of no particular kind; their `ancestorNodeTypes` end with `light`. Items of type
/// `material` can be bound to others. `NodeDef` describes the types with a meaning.
///
/// **Transforms.** Every item has one, the root included. For row vectors its matrix is
///
///     M = Sp^-1 * S * Sh * Sp * Spt * Rp^-1 * Ra * R * Rp * Rpt * T
///
/// with the translations Sp to the scale pivot, Spt by the scale pivot translation, Rp to the
/// rotate pivot, Rpt by the rotate pivot translation and T by the translation; with the scale S;
/// with the shear Sh by (xy, xz, yz), which adds xy y + xz z to x and yz z to y; and with the
/// rotations Ra by the rotate axis and R by the rotation, each about x, then y, then z.
/// `Transform3d::setMatrixCmd` takes any affine matrix that is not singular, and sets translation,
/// rotation, scale and shear to its factors (with a reflection in the scale in x), all else to
/// zero.
///
/// **Edits.** The commands of the library's interfaces set absolute values, remember, while they
/// are done, what was there, and refuse numbers that are infinite or none. Most are of the set-
/// value family of `setValueCommands.h`, so they can be set again while a user drags. Each change
/// is announced to the observers of its kind; what has no observers of its own (bounding boxes,
/// materials, places in a node editor) with a `SubtreeInvalidate` of the item.
///
/// **Attributes.** An item can have attributes of every type, reached through `Attributes`; a
/// duplicate of the item has them too. They can be connected through `ConnectionHandler`;
/// connections are recorded, no value goes over them. They stay with their attributes, whatever is
/// renamed or moved, and a duplicate has none. Making or breaking one announces both its ends as
/// changed.
///
/// An attribute object whose attribute is gone throws `std::invalid_argument` from all that needs
/// it; `hasValue` and `hasMetadata` are false then. It serves again when the attribute is back.
///
/// **Announcements.** The installed scene tells of all that is made, removed, renamed, moved or
/// brought back: `ObjectAdd` once the item is there; `ObjectPreDelete` while it still is, then
/// `ObjectPostDelete` under the path that it had last; `ObjectRename` and `ObjectReparent` once it
/// is elsewhere; `SubtreeInvalidate` of a parent whose children have another order and of an item
/// that became a gateway or ceased to be one. Of a subtree, only its top is told. A command that
/// changes several items tells of all in one notification, and so does undoing it.
///
/// Observers may edit the scene. One that takes out an item that is about to be removed has removed
/// it: the removal has nothing left to do, nor has undoing it.
///
/// **Errors.** A path that names no item, and a name, place or value that is not allowed, throw
/// `std::invalid_argument` with the path or name in the message; the scene stays as it was. Nothing
/// that observers throw stops an edit; it goes to the log.
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
    ///
    /// Returns the item, as do `rename` and `move`: where it is after all observers have heard of
    /// it, and null when one of them took it out again.
    SceneItem::Ptr make(const Path& parent, const std::string& nodeType, const std::string& name);

    /// Makes last children of one type with those names, in one notification; none of them when one
    /// of the names is not allowed or occurs twice.
    SceneItemList makeAll(const Path& parent, const std::string& nodeType,
                          const std::vector<std::string>& names);

    /// Gives the item another name and returns it under its new path.
    SceneItem::Ptr rename(const Path& item, const std::string& name);

    /// Moves the item with all that is under it after the last child of `parent`, which must not be
    /// the item or lie under it, and returns it under its new path.
    SceneItem::Ptr move(const Path& item, const Path& parent);

    /// Removes the item with all that is under it.
    void remove(const Path& item);

    /// `name`, made fit and unique among the children of `parent`: characters that are not allowed
    /// become `_`, and a number is added, or counted up, while the name is taken.
    [[nodiscard]] std::string uniqueName(const Path& parent, const std::string& name) const;

    /// Gives an `Attribute::kEnumString` attribute its strings, at least one and each once. Unless
    /// its value is among them, it becomes the first. A new enumeration has none and no value.
    void setEnumValues(const Path& item, const std::string& attribute,
                       const std::vector<std::string>& values);

    /// Says what an `Attribute::kGeneric` attribute's type is called.
    void setNativeType(const Path& item, const std::string& attribute, const std::string& type);

    /// The keys that the attribute has metadata under, in alphabetical order.
    [[nodiscard]] std::vector<std::string> metadataKeys(const Path& item,
                                                        const std::string& attribute) const;

    /// Lets the items of `nestedRunTimeId` begin under the item; 0 makes it an ordinary item again.
    void setGateway(const Path& item, Rtid nestedRunTimeId);

    /// The run-time whose items begin under the item; 0 for an ordinary item.
    [[nodiscard]] Rtid gateway(const Path& item) const;

    /// Sets the item's own box, in its space; at first it is empty. `Object3d::boundingBox` of an
    /// item also holds the boxes of all that is under it. Throws for a box that is not empty and
    /// holds an infinite number or none.
    void setBoundingBox(const Path& item, const BoundingBox3d& box);

    /// The same as a command; changes nothing yet.
    [[nodiscard]] UndoableCommand::Ptr setBoundingBoxCmd(const Path& item,
                                                         const BoundingBox3d& box);

    /// The item's own box, without what is under it.
    [[nodiscard]] BoundingBox3d boundingBox(const Path& item) const;

    /// Binds materials, which are items of node type `material`, to the item, each once, in place
    /// of those bound before. `Material::materials` lists them.
    ///
    /// The item is bound to the materials, not to their paths: they stay bound while they are
    /// renamed and moved, are not listed while they are out of the scene, and are listed again when
    /// their removal is undone. A duplicate of the item is bound to the same materials.
    void setMaterials(const Path& item, const std::vector<Path>& materials);

    /// The same as a command; changes nothing yet.
    [[nodiscard]] UndoableCommand::Ptr setMaterialsCmd(const Path& item,
                                                       const std::vector<Path>& materials);

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
