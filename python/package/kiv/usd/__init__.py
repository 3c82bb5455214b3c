"""OpenUSD stages as a run-time: `pip install kiv[usd]`.

The prims of a stage are items below one that stands for the stage. Edits are authored in one layer, and can be undone
without a trace in it; what others author is announced, too.

    with kiv.usd.RunTime("shot.usda") as run_time:
        print([row.name for row in host.outline(run_time.stages[0].item)])
"""

import os
import weakref
from pathlib import Path

try:
    import pxr  # noqa: F401
except ImportError as error:
    raise ImportError("kiv.usd needs OpenUSD: pip install 'kiv[usd]'") from error

from pxr import Sdf, Tf, Usd, UsdGeom

import kiv
from kiv import kit
from kiv.usd import _lenses, _looks, _space
from kiv.usd._attributes import Tables
from kiv.usd._stage import Stage
from kiv.usd._tree import Tree

__all__ = ["SUFFIXES", "RunTime", "Stage"]

SUFFIXES = (".usd", ".usda", ".usdc", ".usdz")


class RunTime:
    """The run-time of stages, for as long as it is open.

    A file is opened without its payloads, which the menus of items and `load_cmd` load. A stage is shown at the top,
    or under the item of another run-time at `gateway`, which it then follows. Hosts that mount scene files by their
    suffix, such as `document.Workspace`, mount stages while it is open.
    """

    def __init__(self, source: str | os.PathLike[str] | Usd.Stage | None = None,
                 gateway: kiv.Path | str | None = None, *, name: str = "usd") -> None:
        self._registration = kiv.RunTimeRegistration(name, "/")
        self._id = self._registration.id
        self._tops: dict[str, Stage] = {}
        self._mounted: list[Stage] = []
        self._read: weakref.WeakSet[Stage] = weakref.WeakSet()  # by hosts, which keep them
        self._mounts = kit.Mounts(self.id, "/")
        self._tree = Tree(self.id, self._stage_of, self._roots_of)
        self._tables = Tables(self._tree)
        self._register()
        if source is not None:
            try:
                self.open(source, gateway)
            except BaseException:
                self.close()
                raise

    @property
    def id(self) -> int:
        """The id of the run-time."""
        return self._id

    @property
    def stages(self) -> list[Stage]:
        """The open stages, those at the top first. One whose gateway is deleted waits for it to come back."""
        own = [*self._tops.values(), *self._mounted]
        return [*own, *(stage for stage in self._mounts.shown if isinstance(stage, Stage) and stage not in own)]

    def open(self, source: str | os.PathLike[str] | Usd.Stage, gateway: kiv.Path | str | None = None) -> Stage:
        """Shows a file, or a stage that is open already, at the top or under a gateway: an item of another run-time
        that leads into this one, and that has no other stage.

        Raises `OSError` if the file cannot be opened, `ValueError` if the gateway is in use."""
        try:
            usd_stage = source if isinstance(source, Usd.Stage) else _opened(source)
        except OSError as error:
            raise OSError(f"'{os.fspath(source)}' cannot be opened: {error}") from error
        stage = Stage(self.id, usd_stage, self._name(usd_stage, gateway is None), gateway is None)
        if gateway is None:
            self._tops[stage.name] = stage
            return stage
        try:
            self._mounts.mount(stage, gateway)
        except BaseException:
            stage.close()
            raise
        self._mounted.append(stage)
        return stage

    def close_stage(self, stage: Stage) -> None:
        """Shows the stage no longer, and announces that for one under a gateway. Layers stay as they are."""
        stage.close()
        if stage in self._mounted:
            self._mounted.remove(stage)
            if stage.gateway:
                self._mounts.unmount(stage.gateway)
        else:
            self._tops.pop(stage.name, None)

    def prim(self, item: kiv.SceneItem) -> Usd.Prim | None:
        """The prim that an item stands for; None if there is none, or no longer."""
        found = self._tree.found(item.path)
        return found[1] if found else None

    def load_cmd(self, item: kiv.SceneItem) -> kiv.UndoableCommand:
        """A command that loads the payloads at and below an item."""
        return _looks.load_cmd(self._tree, item.path, True)

    def unload_cmd(self, item: kiv.SceneItem) -> kiv.UndoableCommand:
        """A command that unloads the payloads at and below an item."""
        return _looks.load_cmd(self._tree, item.path, False)

    def close(self) -> None:
        """Takes the run-time back. The layers stay as they are, saved or not."""
        for stage in (*self.stages, *self._read):
            stage.close()
        self._tops.clear()
        self._mounted.clear()
        self._mounts.close()
        self._registration.close()

    def __enter__(self) -> "RunTime":
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def _register(self) -> None:
        tree, tables, manager = self._tree, self._tables, kiv.RunTimeMgr.instance()
        kit.register_tree(self.id, tree)
        manager.set_attributes_handler(self.id, kit.attributes_handler(tables.attributes))
        transforms = _space.Transforms(tree)
        manager.set_transform3d_handler(self.id, kit.transform_handler(
            kit.MatrixAccess(transforms.get, transforms.set)))
        manager.set_object3d_handler(self.id, kit.object3d_handler(
            lambda item: _space.Object(item, tree, tables) if self._is_a(item, UsdGeom.Imageable) else None))
        manager.set_camera_handler(self.id, kit.camera_handler(lambda item: _lenses.camera(item, tree, tables)))
        manager.set_light_handler(self.id, kit.light_handler(lambda item: _lenses.light(item, tree, tables)))
        manager.set_material_handler(self.id, kit.material_handler(
            lambda item: _space.Materials(item, tree) if self._is_a(item, UsdGeom.Imageable) else None))
        manager.set_context_ops_handler(self.id, kit.context_ops_handler(lambda item: _looks.Menu(item, tree)))
        manager.set_ui_info_handler(self.id, _looks.Looks(self.id, tree))
        manager.set_scene_file_handler(self.id, self._mounts.scene_file_handler(SUFFIXES, self._read_file))

    def _read_file(self, file: str) -> Stage:
        usd_stage = _opened(file)
        stage = Stage(self.id, usd_stage, self._name(usd_stage, False), False)
        self._read.add(stage)
        return stage

    def _is_a(self, item: kiv.SceneItem, schema: type) -> bool:
        prim = self.prim(item)
        return prim is not None and bool(prim.IsA(schema))

    def _stage_of(self, path: kiv.Path) -> Stage | None:
        if not path or path.run_time_id != self._id:
            return None
        if path.nb_segments == 1:
            return self._tops.get(path[0])
        mount = self._mounts.at(path)
        return mount if isinstance(mount, Stage) else None

    def _roots_of(self, gateway: kiv.Path) -> list[kiv.Path]:
        if not gateway:
            return [stage.path for stage in self._tops.values()]
        mount = self._mounts.find(gateway)
        return [mount.path] if isinstance(mount, Stage) else []

    def _name(self, stage: Usd.Stage, at_top: bool) -> str:
        layer: Sdf.Layer = stage.GetRootLayer()
        name = kit.fit_name(Path(layer.realPath).stem or "stage", "/,")
        return kiv.unique_name(name, self._tops.__contains__) if at_top else name


def _opened(file: str | os.PathLike[str]) -> Usd.Stage:
    """The stage of a file, without its payloads. Raises `OSError` with the reason alone."""
    try:
        return Usd.Stage.Open(os.fspath(file), Usd.Stage.LoadNone)
    except Tf.ErrorException as error:
        raise OSError("; ".join(str(each.commentary).strip() for each in error.args)) from error
