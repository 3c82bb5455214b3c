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
/// **Node types.** Any text; some have a meaning. Items of type `camera` offer `Camera`. Lights
/// have a type for their kind: `directionalLight`, `pointLight`, `spotLight`, `areaLight`, or
/// `light` for a light of no particular kind; their `ancestorNodeTypes` end with `light`. Items of
/// type `material` can be bound to others. `NodeDef` describes the types with a meaning.
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
/// **Edits.** The commands of the library's interfaces set absolute values, keep the previous value
/// for undo, and refuse NaN and infinity. Most belong to the family of `setValueCommands.h`, so
/// they can be set again while a user drags. Each change is announced to the observers of its kind;
/// changes without such observers (bounding boxes, materials, positions in a node editor) are
/// announced with a `SubtreeInvalidate` of the item.
///
/// **Attributes.** An item can have attributes of every type, reached through `Attributes`; a
/// duplicate of the item has them too. They can be connected through `ConnectionHandler`;
/// connections are recorded, but transfer no values. They stay with their attributes through
/// renames and moves, and a duplicate has none. Making or breaking one announces both its ends as
/// changed.
///
/// If the attribute of an attribute object no longer exists, `hasValue` and `hasMetadata` return
/// false and all functions that need the attribute throw `std::invalid_argument`. The object works
/// again when the attribute is back.
///
/// **Announcements.** The installed scene announces everything that is made, removed, renamed,
/// moved or brought back: `ObjectAdd` once the item is there; `ObjectPreDelete` while it is still
/// there, then `ObjectPostDelete` under its last path; `ObjectRename` and `ObjectReparent` once it
/// has its new path; `SubtreeInvalidate` of a parent whose children were reordered and of an item
/// that became a gateway or an ordinary item. Of a subtree, only the top is announced. A command
/// that changes several items announces all of them in one notification, and so does its undo.
///
/// Observers may edit the scene. If an observer itself removes an item that is about to be removed,
/// the removal and its undo have nothing left to do.
///
/// **Errors.** The functions throw `std::invalid_argument` with the path or name in the message,
/// and leave the scene unchanged, if a path names no item or a name, place or value is not allowed.
/// Exceptions of observers do not stop an edit; they go to the log.
class KIV_EXPORT DataModel
{
public:
    /// The character that components are written with.
    static constexpr char kSeparator = '/';

    /// For use by `RunTime` only.
    explicit DataModel(std::shared_ptr<Tree> tree);
    DataModel(const DataModel&) = delete;
    DataModel& operator=(const DataModel&) = delete;
    ~DataModel();

    /// The path of the root item, which is never renamed, moved or removed.
    [[nodiscard]] const Path& root() const noexcept;

    /// The item at `path`; null if there is none.
    [[nodiscard]] SceneItem::Ptr item(const Path& path) const;

    /// The number of items, the root included. Linear in that number.
    [[nodiscard]] std::size_t size() const noexcept;

    /// Makes a last child. A name must not be empty, must not contain control characters, `/` or
    /// the path segment separator (`PathString::pathSegmentSeparator`), and must be unique among
    /// its siblings.
    ///
    /// Returns the item, as do `rename` and `move`, at its path after all observers were notified;
    /// null if one of them removed it again.
    SceneItem::Ptr make(const Path& parent, const std::string& nodeType, const std::string& name);

    /// Makes last children of one type with those names, in one notification; makes none if one of
    /// the names is not allowed or occurs twice.
    SceneItemList makeAll(const Path& parent, const std::string& nodeType,
                          const std::vector<std::string>& names);

    /// Gives the item another name and returns it under its new path.
    SceneItem::Ptr rename(const Path& item, const std::string& name);

    /// Moves the item with its descendants to after the last child of `parent`, which must not be
    /// the item or lie under it, and returns it under its new path.
    SceneItem::Ptr move(const Path& item, const Path& parent);

    /// Removes the item with its descendants.
    void remove(const Path& item);

    /// Returns `name`, made valid and unique among the children of `parent`: characters that are
    /// not allowed become `_`, and a number is added, or counted up, while the name is taken.
    [[nodiscard]] std::string uniqueName(const Path& parent, const std::string& name) const;

    /// Sets the strings of an `Attribute::kEnumString` attribute, at least one and each once. If
    /// its value is not among them, the value becomes the first. A new enumeration has no strings
    /// and no value.
    void setEnumValues(const Path& item, const std::string& attribute,
                       const std::vector<std::string>& values);

    /// Sets the native type of an `Attribute::kGeneric` attribute.
    void setNativeType(const Path& item, const std::string& attribute, const std::string& type);

    /// The keys of the attribute's metadata, in alphabetical order.
    [[nodiscard]] std::vector<std::string> metadataKeys(const Path& item,
                                                        const std::string& attribute) const;

    /// Makes the item a gateway into the run-time `nestedRunTimeId`; 0 makes it an ordinary item
    /// again.
    void setGateway(const Path& item, Rtid nestedRunTimeId);

    /// The run-time whose items begin under the item; 0 for an ordinary item.
    [[nodiscard]] Rtid gateway(const Path& item) const;

    /// Sets the item's own box, in its space; at first it is empty. `Object3d::boundingBox` of an
    /// item also contains the boxes of its descendants. Throws if a non-empty box contains NaN or
    /// infinity.
    void setBoundingBox(const Path& item, const BoundingBox3d& box);

    /// Returns a command that does the same; changes nothing yet.
    [[nodiscard]] UndoableCommand::Ptr setBoundingBoxCmd(const Path& item,
                                                         const BoundingBox3d& box);

    /// The item's own box, without its descendants.
    [[nodiscard]] BoundingBox3d boundingBox(const Path& item) const;

    /// Binds materials, which must be items of node type `material`, to the item, each once, and
    /// replaces those bound before. `Material::materials` lists them.
    ///
    /// The item is bound to the materials, not to their paths: they stay bound when they are
    /// renamed or moved, are not listed while they are out of the scene, and are listed again when
    /// their removal is undone. A duplicate of the item is bound to the same materials.
    void setMaterials(const Path& item, const std::vector<Path>& materials);

    /// Returns a command that does the same; changes nothing yet.
    [[nodiscard]] UndoableCommand::Ptr setMaterialsCmd(const Path& item,
                                                       const std::vector<Path>& materials);

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
