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

/// An edited item of a file, and the interfaces through which it was edited.
struct EditedItem
{
    Path path;               ///< The path of the item.
    bool transform = false;  ///< `Transform3d`
    bool camera = false;     ///< `Camera`
    bool light = false;      ///< `Light`
    bool visibility = false; ///< `Object3d`
};

/// Scene files as a run-time: the constructor registers name, handlers and component separator, the
/// destructor unregisters them. Files are mounted under gateway items of other run-times; the
/// file's root node is the first component of the segment.
///
///     assimp::RunTime files;
///     const auto file = assimp::read("scene.gltf");               // throws, with nothing changed
///     const auto gateway = model.make(model.root(), "gateway", "scene");
///     model.setGateway(gateway->path(), files.id());
///     const auto root = files.mount(file, gateway->path());       // /world/scene,:Scene
///
/// The component of an item is the node's name in the file, changed if that is needed to make it
/// unique among its siblings and free of separators and control characters; `originalName` returns
/// the name in the file.
///
/// With a scene installed (`Scene::initializeInstance`), mounting and unmounting are announced as
/// one `SubtreeInvalidate` of the gateway. Mounts follow their gateways, are parked when these are
/// deleted, and come back with their edits when the deletion is undone, as in `kit::MountTable`.
/// Commands on the items of a parked file throw as for one that is not mounted, and work again when
/// it is back.
///
/// **Node types.** In the scene `mesh`, `camera` or `light`, after the object at the node (in this
/// order if there are several), otherwise `transform`.
///
/// **Materials** are items too, of node type `material`, under a top of their own beside the file's
/// root: `/world/scene,:materials:Oak`. The top is of type `materials` and has that name, with a
/// number if the root has that name; a file without materials has none. It is not a child of the
/// gateway and not counted, so that browsing shows the scene only; its parent is the gateway, its
/// children are all materials that the importer reads, except unnamed ones that no mesh uses; some
/// formats' importers only read the used ones. `Material` lists those of a node's own meshes and is
/// null for a node without meshes. A material has no `Transform3d` and no `Object3d` and cannot be
/// edited.
///
/// The attributes of a material, all locked, are those of the following that the file has. Colours:
/// `baseColor` and `diffuseColor`, with alpha, `specularColor`, `ambientColor`, `emissiveColor`,
/// `reflectiveColor`, `transparentColor`. Floats: `metallic`, `roughness`, `opacity`, `shininess`,
/// `specularStrength`, `reflectivity`, `indexOfRefraction`, `transmission`, `clearcoat`,
/// `clearcoatRoughness`, `bumpScale`. Bools: `twoSided`, `wireframe`. Names of texture files as in
/// the file, `*` and a number for a texture inside the file: `baseColorTexture`, `normalTexture`
/// and so on, `texture` for a texture of unknown use, and further ones of a kind with numbers from
/// 2.
///
/// **Editing.** Edits of transforms, cameras, lights and visibility never change the file: each
/// mount has edits of its own, which follow its gateway and which `unmount` drops; `editedItems`
/// lists them. A command on an item that is no longer mounted throws `std::runtime_error`.
///
/// **Transforms.** Until it is edited, an item has the matrix of its node, bit for bit, except for
/// the cameras and lights of some formats and their children (see below). Translation, rotation
/// (about x, then y, then z), scale and shear are the factors of that matrix; setting the
/// translation leaves the other rows as they are. A matrix without such factors, because it is
/// singular or not affine, reads as unrotated, unscaled and unsheared; a singular one can be
/// translated, and both can be replaced by `setMatrix`, which refuses such matrices. There are no
/// pivots: their commands are null, and they read as zero.
///
/// **Cameras.** The film back of a perspective camera is 36 mm wide; its height follows from the
/// file's aspect ratio and is 24 mm if there is none; the focal length follows from the field of
/// view, which is 45 degrees if the file has none. The importer reports most fields of view as the
/// full horizontal angle, those of glTF as the vertical angle times the aspect ratio, which the
/// conversion takes into account. The apertures of an orthographic camera are the size of its view.
/// At first, cameras have no depth of field.
///
/// The cameras and lights of FBX and NFF files have another position and direction in their nodes
/// than `Camera` and `Light` define: the item's matrix contains the difference, so that its -z axis
/// has the direction in the file, and the matrices of its children compensate for it, so that these
/// stay where they are. For other formats, the positions within nodes that the importer reports do
/// not match the files and are ignored.
///
/// **Lights.** The file's diffuse colour is the product of the intensity and a colour whose largest
/// component is 1 (a black light is white with intensity 0), and the specular factor is the largest
/// component of its specular colour divided by the intensity. For an ambient light, the ambient
/// colour counts instead of the diffuse one. Cone angles are full angles in degrees; the penumbra
/// goes from the inner cone to the outer one. A light without direction or position, such as an
/// ambient one, is of kind `Other`. Values that files do not have start as: a point for a source,
/// shadows on and black, a diffuse factor of 1.
///
/// **Attributes.** A node's metadata, all locked: nothing can be set. Entries of nested metadata
/// are named "outer.inner"; a 64-bit integer is an `Int` or a `Double` if that represents it
/// exactly, otherwise generic. Beyond these there is `lightSize`, the width and height of an area
/// light in scene units. Texts are as in the file and may contain any bytes.
///
/// **File facts** are attributes of the root, after its own. Texts of the file about itself:
/// `file.format`, `file.formatVersion`, `file.generator`, `file.author`, `file.title`,
/// `file.copyright`, `file.created`, `file.modified`, and the rest of its metadata as
/// `file.metadata.KEY`. The space that FBX, glTF and COLLADA files declare: `file.unit`, in metres,
/// `file.upAxis`, as in `y` or `-z`, and `file.sceneUnit`, the length of one scene unit of the
/// items in metres, which differs if the importer scales the root. Counts of what the importer
/// read: `file.meshes`, `file.vertices`, `file.faces`, `file.uvSets` (the largest number in one
/// mesh), `file.bones`, `file.materials`, `file.textures`, `file.missingTextures`,
/// `file.embeddedTextures`, `file.animations`. The length of each animation in seconds:
/// `file.animation.NAME`. The names of the textures' files, each once: `file.texture`,
/// `file.texture2` and so on, and, of these, the textures that were missing when the file was read
/// (neither in it, nor at the path in it, nor beside it): `file.missingTexture`,
/// `file.missingTexture2` and so on.
///
/// **Bounding boxes** contain the vertices as in the file, without skinning and morphing.
class KIV_EXPORT RunTime
{
public:
    /// The character that components are written with.
    static constexpr char kSeparator = ':';

    /// Throws `InvalidRunTimeName` if the name is already registered.
    explicit RunTime(const std::string& name = "assimp");
    RunTime(const RunTime&) = delete;
    RunTime& operator=(const RunTime&) = delete;
    ~RunTime();

    /// The id of the run-time.
    [[nodiscard]] Rtid id() const noexcept;

    /// Shows `file` under the gateway and returns its root item. Throws `std::invalid_argument`
    /// with the gateway's path in the message if the file is null, the path is empty or a file is
    /// already mounted there.
    SceneItem::Ptr mount(const std::shared_ptr<const SceneFile>& file, const Path& gateway);

    /// Returns a command that does the same; changes nothing yet. While undone, it keeps the mount
    /// with its edits. If a host makes a gateway for the file, its undo must make the gateway an
    /// ordinary item again before it takes the item away, so that redo brings back no parked mount.
    /// Throws `std::invalid_argument` if the file is null; executing the command throws as `mount`
    /// does.
    [[nodiscard]] UndoableCommand::Ptr mountCmd(const std::shared_ptr<const SceneFile>& file,
                                                const Path& gateway);

    /// The same for the file under `source`, with its present edits. Throws `std::invalid_argument`
    /// if there is none.
    [[nodiscard]] UndoableCommand::Ptr copyMountCmd(const Path& source, const Path& gateway);

    /// Takes the file under the gateway away, with all edits, or, if none is shown there, drops the
    /// one that was parked there last. Returns false if there is neither.
    bool unmount(const Path& gateway);

    /// Makes a mount follow a gateway that was renamed or moved while no scene was installed.
    /// Returns false if no file is mounted at `gateway`. Throws as `mount` does if the file cannot
    /// be mounted at `newGateway`.
    bool moveMount(const Path& gateway, const Path& newGateway);

    /// The name of the file under the gateway, as given to `read`; empty if there is none.
    [[nodiscard]] std::string file(const Path& gateway) const;

    /// The items of the file under the gateway that have edits, parents before their children.
    [[nodiscard]] std::vector<EditedItem> editedItems(const Path& gateway) const;

    /// The number of nodes of the file under the gateway, which are its items without the
    /// materials; 0 if there is none.
    [[nodiscard]] std::size_t nbItems(const Path& gateway) const;

    /// The name of the item's node or material in its file, which may contain any bytes. Throws
    /// `std::invalid_argument` with the path in the message if there is no such item.
    [[nodiscard]] std::string originalName(const Path& item) const;

private:
    const RunTimeRegistration _registration;
    const std::shared_ptr<Mounts> _mounts;
};

} // namespace Kiv_v4::assimp
