#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "kiv/assimp/sceneFile.h"
#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

/// Scene files of many formats.
namespace Kiv_v4::assimp {

class Mounts;

/// An item of a file that was edited, and through which interfaces.
struct EditedItem
{
    Path path;               ///< Where the item is.
    bool transform = false;  ///< `Transform3d`
    bool camera = false;     ///< `Camera`
    bool light = false;      ///< `Light`
    bool visibility = false; ///< `Object3d`
};

/// Scene files as a run-time: the constructor registers name, handlers and component separator, the
/// destructor takes all of it back. Files are mounted under gateway items of other run-times; the
/// file's root node is the first component of the segment.
///
///     assimp::RunTime files;
///     const auto file = assimp::read("scene.gltf");               // throws, with nothing changed
///     const auto gateway = model.make(model.root(), "gateway", "scene");
///     model.setGateway(gateway->path(), files.id());
///     const auto root = files.mount(file, gateway->path());       // /world/scene,:Scene
///
/// The component of an item is the node's name in the file, changed where it must be to be unique
/// among its siblings and free of separators and control characters; `originalName` gives the
/// file's own.
///
/// With a scene installed (`Scene::initializeInstance`), mounting and unmounting are announced as
/// one `SubtreeInvalidate` of the gateway. Mounts follow their gateways, leave when these are
/// deleted, and come back with their edits when the deletion is undone, as `kit::MountTable` tells.
/// Commands on the items of a file that left throw as for one that is not mounted, and work again
/// when it is back.
///
/// **Node types.** In the scene `mesh`, `camera` or `light` for what hangs at the node (in this
/// order when there are several), otherwise `transform`.
///
/// **Materials** are items too, of node type `material`, under a top of their own beside the file's
/// root: `/world/scene,:materials:Oak`. The top is of type `materials`, named like that or, when
/// the root is, with a number; a file without materials has none. It is no child of the gateway and
/// not counted, so that browsing shows the scene only; its parent is the gateway, its children are
/// all materials that the importer reads, but for those without a name that no mesh uses; some
/// formats' importers read none but the used ones. `Material` gives those of a node's own meshes
/// and is null for a node without meshes. A material is neither placed nor seen (no `Transform3d`,
/// no `Object3d`) and not edited.
///
/// The attributes of a material, locked, are those of these that the file has. Colours: `baseColor`
/// and `diffuseColor`, with alpha, `specularColor`, `ambientColor`, `emissiveColor`,
/// `reflectiveColor`, `transparentColor`. Floats: `metallic`, `roughness`, `opacity`, `shininess`,
/// `specularStrength`, `reflectivity`, `indexOfRefraction`, `transmission`, `clearcoat`,
/// `clearcoatRoughness`, `bumpScale`. Bools: `twoSided`, `wireframe`. Names of texture files as the
/// file has them, `*` and a number for a texture inside the file: `baseColorTexture`,
/// `normalTexture` and so on, `texture` for one whose use the importer does not tell, and the next
/// ones of a kind with numbers from 2.
///
/// **Editing.** Transforms, cameras, lights and visibility are edited over the file, which is never
/// changed: each mount has edits of its own, which follow its gateway and are dropped by `unmount`;
/// `editedItems` lists them.
/// A command on an item that is not mounted any more throws `std::runtime_error`.
///
/// **Transforms.** Until it is edited, an item has the matrix of its node, bit for bit, but for the
/// cameras and lights of some formats and what lies right under them (see below). Translation,
/// rotation (about x, then y, then z), scale and shear are the factors of that matrix; setting the
/// translation leaves the other rows as they are. A matrix that has no such factors, because it is
/// singular or not affine, reads as unrotated, unscaled and unsheared; a singular one can be
/// translated, and both can be replaced by `setMatrix`, which refuses such matrices. There are no
/// pivots: their commands are null, and zero is read.
///
/// **Cameras.** The film back of a perspective camera is 36 mm wide, and as high as the file's
/// aspect ratio says, 24 mm when it says nothing; the focal length follows from the field of view,
/// which is 45 degrees when the file has none. The importer hands most fields of view over as the
/// full horizontal angle, those of glTF as the vertical angle times the aspect ratio, which is
/// taken into account. The apertures of an orthographic camera are the size of its view. Cameras
/// are without depth of field at first.
///
/// The cameras and lights of FBX and NFF files stand and look elsewhere within their nodes than
/// `Camera` and `Light` say: the item's matrix takes the difference up, so that it looks along its
/// -z where the file means it to, and the matrices of its children make up for it, so that these
/// stay where they are. What the importer says about places within nodes of other formats is not
/// what the files mean and is not shown.
///
/// **Lights.** The largest component of the colour is 1, the intensity takes up the rest of the
/// file's diffuse colour (a black light is white with intensity 0), and the specular factor is the
/// largest component of its specular colour over the intensity. Of an ambient light it is the
/// ambient colour. Cone angles are full angles in degrees; the penumbra goes from the inner cone to
/// the outer one. Light without a direction or position, such as an ambient one, is of kind
/// `Other`. What files do not tell starts as: a point for a source, shadows on and black, a diffuse
/// factor of 1.
///
/// **Attributes.** A node's metadata, locked: nothing can be set. Entries of nested metadata are
/// named "outer.inner"; a 64-bit integer is an `Int` or a `Double` when that holds it exactly,
/// otherwise generic. Beyond these there is `lightSize`, the width and height of an area light in
/// scene units. Texts are the file's, any bytes.
///
/// **Bounding boxes** hold the vertices as the file has them, without skinning and morphing.
class KIV_EXPORT RunTime
{
public:
    /// The character that components are written with.
    static constexpr char kSeparator = ':';

    /// Throws `InvalidRunTimeName` when the name is registered already.
    explicit RunTime(const std::string& name = "assimp");
    RunTime(const RunTime&) = delete;
    RunTime& operator=(const RunTime&) = delete;
    ~RunTime();

    /// The id that the run-time was given.
    [[nodiscard]] Rtid id() const noexcept;

    /// Shows `file` under the gateway and gives its root item. Throws `std::invalid_argument`, with
    /// the gateway's path in the message, for a null file, an empty path and when a file is mounted
    /// there already.
    SceneItem::Ptr mount(const std::shared_ptr<const SceneFile>& file, const Path& gateway);

    /// The same as a command; changes nothing yet. While it is undone it keeps the mount with its
    /// edits. A host that makes a gateway for the file lets undo make it an ordinary item again
    /// before it takes it away, so that doing it again brings back no parked mount. Throws
    /// `std::invalid_argument` for a null file, and when it is executed as `mount` does.
    [[nodiscard]] UndoableCommand::Ptr mountCmd(const std::shared_ptr<const SceneFile>& file,
                                                const Path& gateway);

    /// The same for the file that is shown under `source`, with the edits that it has now. Throws
    /// `std::invalid_argument` when there is none.
    [[nodiscard]] UndoableCommand::Ptr copyMountCmd(const Path& source, const Path& gateway);

    /// Takes the file under the gateway away, with all edits, or lets go of the one that was parked
    /// there last when none is shown; false when there is neither.
    bool unmount(const Path& gateway);

    /// Follows a gateway that was renamed or moved while no scene was installed; false when no file
    /// is mounted at `gateway`. Throws as `mount` does when the file cannot be mounted at
    /// `newGateway`.
    bool moveMount(const Path& gateway, const Path& newGateway);

    /// The file under the gateway, as it was given to `read`; empty when there is none.
    [[nodiscard]] std::string file(const Path& gateway) const;

    /// The items of the file under the gateway that have edits, parents before their children.
    [[nodiscard]] std::vector<EditedItem> editedItems(const Path& gateway) const;

    /// The number of nodes of the file under the gateway, which are its items but for the
    /// materials; 0 when there is none.
    [[nodiscard]] std::size_t nbItems(const Path& gateway) const;

    /// The name that the item's node or material has in its file, any bytes. Throws
    /// `std::invalid_argument` with the path in the message when there is no such item.
    [[nodiscard]] std::string originalName(const Path& item) const;

private:
    const RunTimeRegistration _registration;
    const std::shared_ptr<Mounts> _mounts;
};

} // namespace Kiv_v4::assimp
