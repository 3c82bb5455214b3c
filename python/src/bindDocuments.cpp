#include "kiv/assimp/runTime.h"
#include "kiv/assimp/sceneFile.h"
#include "kiv/document/sceneDocument.h"
#include "kiv/document/workspace.h"

#include "lifetimes.h"
#include "managers.h"

namespace bound {

namespace {

namespace assimp = kiv::assimp;
namespace document = kiv::document;
using kiv::Path;

template <class T>
void bindEdited(nb::module_& module, const char* key)
{
    Class<T> type(module, "EditedItem", key);
    type.field("path", &T::path).field("transform", &T::transform).field("camera", &T::camera);
    type.field("light", &T::light).field("visibility", &T::visibility);
}

template <class T>
void bindError(nb::module_& module, const char* name, const char* key, PyObject* alike)
{
    const auto error = nb::module_::import_("kiv._kiv").attr("Error");
    nb::exception<T> type(module, name, nb::make_tuple(error, nb::handle(alike)));
    type.attr("__doc__") = contract(key);
}

/// A scene file that was read: nobody looks into it.
struct SceneFileHandle
{
    std::shared_ptr<const assimp::SceneFile> file;
};

void bindAssimp(nb::module_& module)
{
    bindEdited<assimp::EditedItem>(module, "assimp::EditedItem");
    bindError<assimp::ImportError>(module, "ImportError", "assimp::ImportError", PyExc_OSError);
    nb::class_<SceneFileHandle>(module, "SceneFile",
                                "What was read of a scene file; any number of mounts share it.");
    function(
        module, "assimp::", "read",
        [](const std::string& file, std::function<bool(float)> progress) {
            return SceneFileHandle{assimp::read(file, progress)};
        },
        "file"_a, "progress"_a.none() = nb::none());
    using RunTime = Closable<assimp::RunTime>;
    auto type = bindClosable<assimp::RunTime>(module, "RunTime", "assimp::RunTime");
    const auto of = [](const char* name) {
        return contract(std::string("assimp::RunTime::") + name);
    };
    type.def(nb::init<std::string>(), "name"_a = "assimp", of("RunTime"));
    type.def_prop_ro(
        "id", [](const RunTime& self) { return self->id(); }, of("id"));
    type.def(
        "mount",
        [](RunTime& self, const SceneFileHandle& file, const Path& gateway) {
            return self->mount(file.file, gateway);
        },
        "file"_a, "gateway"_a, of("mount"));
    type.def(
        "mount_cmd",
        [](RunTime& self, const SceneFileHandle& file, const Path& gateway) {
            return self->mountCmd(file.file, gateway);
        },
        "file"_a, "gateway"_a, of("mountCmd"));
    type.def(
        "copy_mount_cmd",
        [](RunTime& self, const Path& source, const Path& gateway) {
            return self->copyMountCmd(source, gateway);
        },
        "source"_a, "gateway"_a, of("copyMountCmd"));
    type.def(
        "unmount", [](RunTime& self, const Path& gateway) { return self->unmount(gateway); },
        "gateway"_a, of("unmount"));
    type.def(
        "move_mount",
        [](RunTime& self, const Path& gateway, const Path& newGateway) {
            return self->moveMount(gateway, newGateway);
        },
        "gateway"_a, "new_gateway"_a, of("moveMount"));
    type.def(
        "file", [](const RunTime& self, const Path& gateway) { return self->file(gateway); },
        "gateway"_a, of("file"));
    type.def(
        "edited_items",
        [](const RunTime& self, const Path& gateway) { return self->editedItems(gateway); },
        "gateway"_a, of("editedItems"));
    type.def(
        "nb_items", [](const RunTime& self, const Path& gateway) { return self->nbItems(gateway); },
        "gateway"_a, of("nbItems"));
    type.def(
        "original_name",
        [](const RunTime& self, const Path& item) { return self->originalName(item); }, "item"_a,
        of("originalName"));
}

using Workspace = Closable<document::Workspace>;

/// The same function, with the `Cancelled` that Python raises as that of C++.
document::Workspace::Progress cancellable(document::Workspace::Progress progress)
{
    return [progress = std::move(progress)](const std::string& file, float fraction) {
        try {
            progress(file, fraction);
        } catch (nb::python_error& error) {
            const auto module = nb::module_::import_("kiv._documents");
            if (error.matches(module.attr("document").attr("Cancelled"))) {
                throw document::Cancelled(nb::str(error.value()).c_str());
            }
            throw;
        }
    };
}

void bindWorkspace(nb::module_& module)
{
    bindEdited<document::EditedItem>(module, "document::EditedItem");
    using Mount = document::Workspace::Mount;
    auto type = bindClosable<document::Workspace>(module, "Workspace", "document::Workspace");
    Class<Mount> mount(type, "Mount", "document::Workspace::Mount");
    mount.field("gateway", &Mount::gateway).field("file", &Mount::file);
    mount.field("runTime", &Mount::runTime);
    const auto of = [](const char* name) {
        return contract(std::string("document::Workspace::") + name);
    };
    type.def(nb::init<>());
    type.def_prop_ro(
        "root", [](const Workspace& self) { return self->root(); }, of("root"));
    type.def_prop_ro(
        "model", [](const Workspace& self) -> kiv::memory::DataModel& { return self->model(); },
        nb::rv_policy::reference_internal, of("model"));
    type.def(
        "is_in_memory",
        [](const Workspace& self, const kiv::SceneItem& item) { return self->isInMemory(item); },
        "item"_a, of("isInMemory"));
    type.def(
        "set_progress",
        [](Workspace& self, document::Workspace::Progress progress) {
            self->setProgress(progress ? cancellable(std::move(progress)) : std::move(progress));
        },
        "progress"_a.none(), of("setProgress"));
    type.def(
        "mount", [](Workspace& self, const std::string& file) { return self->mount(file); },
        "file"_a, of("mount"));
    type.def(
        "mount_cmd",
        [](Workspace& self, const std::string& file, const kiv::SceneItem::Ptr& parent,
           const std::string& name,
           const std::string& runTime) { return self->mountCmd(file, parent, name, runTime); },
        "file"_a, "parent"_a, "name"_a = "", "run_time"_a = "", of("mountCmd"));
    type.def(
        "mounts", [](const Workspace& self) { return self->mounts(); }, of("mounts"));
    type.def(
        "mount_at",
        [](const Workspace& self, const Path& gateway) { return self->mountAt(gateway); },
        "gateway"_a, of("mountAt"));
    type.def(
        "mounted_file",
        [](const Workspace& self, const Path& gateway) { return self->mountedFile(gateway); },
        "gateway"_a, of("mountedFile"));
    type.def(
        "file_of",
        [](const Workspace& self, const kiv::SceneItem& item) { return self->fileOf(item); },
        "item"_a, of("fileOf"));
    type.def(
        "is_gateway",
        [](const Workspace& self, const kiv::SceneItem& item) { return self->isGateway(item); },
        "item"_a, of("isGateway"));
    type.def(
        "edited_items",
        [](const Workspace& self, const Path& gateway) { return self->editedItems(gateway); },
        "gateway"_a, of("editedItems"));
    type.def(
        "path_in_file",
        [](const Workspace& self, const Path& gateway, const std::string& text) {
            return self->pathInFile(gateway, text);
        },
        "gateway"_a, "text"_a, of("pathInFile"));
    type.def(
        "item",
        [](const Workspace& self, const std::string& text, const Path& gateway) {
            return self->item(text, gateway);
        },
        "text"_a, "gateway"_a = Path(), of("item"));
    type.def(
        "original_name",
        [](const Workspace& self, const kiv::SceneItem& item) { return self->originalName(item); },
        "item"_a, of("originalName"));
}

void bindDocument(nb::module_& module)
{
    enumeration<document::Replacing>(module, "Replacing", "document::Replacing",
                                     {{"Documents", document::Replacing::Documents},
                                      {"Anything", document::Replacing::Anything}});
    bindError<document::NotReplaceable>(module, "NotReplaceable", "document::NotReplaceable",
                                        PyExc_OSError);
    bindError<document::Cancelled>(module, "Cancelled", "document::Cancelled", PyExc_RuntimeError);
    bindWorkspace(module);
    function(
        module, "document::", "save",
        [](const Workspace& scene, const std::string& file, document::Replacing replacing) {
            document::save(*scene, file, replacing);
        },
        "scene"_a, "file"_a, "replacing"_a = document::Replacing::Documents);
    function(
        module, "document::", "open",
        [](Workspace& scene, const std::string& file, document::OnMissing onMissing) {
            requireManager();
            document::open(*scene, file, onMissing);
        },
        "scene"_a, "file"_a, "on_missing"_a.none() = nb::none());
    function(
        module, "document::", "documentHash",
        [](const Workspace& scene) { return document::documentHash(*scene); }, "scene"_a);
}

} // namespace

} // namespace bound

NB_MODULE(_documents, module)
{
    // Classes of the library come from there.
    bound::nb::module_::import_("kiv._kiv");
    bound::bindBookkeeping(module);
    const auto submodule = [&](const char* name, void (*bind)(bound::nb::module_&)) {
        auto part = module.def_submodule(name);
        part.attr("__name__") = std::string("kiv.") + name;
        bind(part);
    };
    submodule("assimp", &bound::bindAssimp);
    submodule("document", &bound::bindDocument);
}
