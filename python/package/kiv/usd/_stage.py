"""A stage as it is shown: its paths, its layers, and what it tells."""

from collections.abc import Callable, Iterable, Iterator
from contextlib import contextmanager

from pxr import Sdf, Tf, Usd, UsdGeom

import kiv
from kiv import kit
from kiv.usd._opinions import Opinions

ALL_PRIMS = Usd.TraverseInstanceProxies(Usd.PrimAllPrimsPredicate)


class Stage(kit.Mount):
    """A stage of a `RunTime`, at the top or under a gateway. Its item stands for the pseudo-root."""

    def __init__(self, run_time_id: int, stage: Usd.Stage, name: str, at_top: bool) -> None:
        super().__init__()
        self._id = run_time_id
        self._usd_stage = stage
        self._name = name
        self._at_top = at_top
        self._time = Usd.TimeCode.Default()
        self._expected: list[list[Sdf.Path]] = []  # the prims of the edits that are under way
        self._others: list[Sdf.Path] = []  # what else changed meanwhile
        self._bounds: UsdGeom.BBoxCache | None = None
        self._notices = Tf.Notice.Register(Usd.Notice.ObjectsChanged, self._changed, stage)
        self.opinions = Opinions(stage)
        self._resets: list[Sdf.Path] | None = None  # the prims whose transforms do not build on their parents
        # What was found out of prims, as long as it holds.
        self._prims: dict[kiv.Path, Usd.Prim] = {}
        self.matrices: dict[kiv.Path, kiv.Matrix4d | None] = {}
        self.has_resets = False  # whether one of them is that of a prim that does not build on its parents
        self.tables: dict[Sdf.Path, kit.AttributeTable] = {}

    @property
    def usd_stage(self) -> Usd.Stage:
        """The stage itself, for all that is not an item's: layers, saving, time codes."""
        return self._usd_stage

    @property
    def name(self) -> str:
        """The name of the item that stands for the stage."""
        return self._name

    @property
    def path(self) -> kiv.Path:
        """The path of that item."""
        return self.item_path(Sdf.Path.absoluteRootPath)

    @property
    def is_open(self) -> bool:
        """Whether the stage is shown now."""
        return self._notices is not None and (self._at_top or bool(self.gateway))

    @property
    def edit_layer(self) -> Sdf.Layer:
        """The layer that edits are authored in, at first the root layer; one of the stage's local layers.

        An edit is undone in the layer that it was authored in.
        """
        return self._usd_stage.GetEditTarget().GetLayer()

    @edit_layer.setter
    def edit_layer(self, layer: Sdf.Layer) -> None:
        if not self._usd_stage.HasLocalLayer(layer):
            raise ValueError(f"'{layer.identifier}' is no local layer of the stage")
        self._usd_stage.SetEditTarget(Usd.EditTarget(layer))

    @property
    def time(self) -> Usd.TimeCode:
        """The time that values are read at, at first the default time. Setting it announces the whole stage."""
        return self._time

    @time.setter
    def time(self, time: Usd.TimeCode | float) -> None:
        self._time = Usd.TimeCode(time)
        self._bounds = None
        self._forget_matrices()
        if self.is_open:
            self._invalidate([Sdf.Path.absoluteRootPath])

    def item_path(self, path: Sdf.Path) -> kiv.Path:
        """The path of the item that stands for the prim at `path`."""
        names = [self._name, *(prefix.name for prefix in path.GetPrefixes())]
        segment = kiv.PathSegment(names, self._id, "/")
        return self.gateway / segment if self.gateway else kiv.Path(segment)

    def prim(self, path: kiv.Path) -> Usd.Prim | None:
        """The prim of the item at `path`, which leads into this stage; None if there is none."""
        known = self._prims.get(path)
        if known is None:
            known = self._named(list(path.segments[-1]))
            if known is not None:
                self._prims[path] = known
        return known

    def _named(self, names: list[str]) -> Usd.Prim | None:
        if not names or names[0] != self._name:
            return None
        if any(not Sdf.Path.IsValidIdentifier(name) for name in names[1:]):
            return None
        return self._usd_stage.GetPrimAtPath("/" + "/".join(names[1:])) or None

    @property
    def bounds(self) -> UsdGeom.BBoxCache:
        """Bounds at the stage's time, of all purposes, of what is hidden as well."""
        if self._bounds is None:
            purposes = [UsdGeom.Tokens.default_, UsdGeom.Tokens.render, UsdGeom.Tokens.proxy, UsdGeom.Tokens.guide]
            self._bounds = UsdGeom.BBoxCache(self._time, purposes, useExtentsHint=False, ignoreVisibility=True)
        return self._bounds

    @contextmanager
    def editing(self, *paths: Sdf.Path) -> Iterator[None]:
        """An edit of ours of the prims at `paths`, which its maker announces; other effects are announced here."""
        self._expected.append(list(paths))
        try:
            yield
        finally:
            expected = self._expected.pop()
            if not self._expected:
                others, self._others = self._others, []
                self._announce([path for path in others
                                if not any(path.HasPrefix(each) or each.HasPrefix(path) for each in expected)])

    def close(self) -> None:
        """Hears no notices any more. The run-time calls it."""
        if self._notices is not None:
            self._notices.Revoke()
            self._notices = None
            self._forget_all()

    def _changed(self, notice: Usd.Notice.ObjectsChanged, _: Usd.Stage) -> None:
        self._bounds = None
        self._forget(notice)
        paths = [*notice.GetResyncedPaths(), *notice.GetChangedInfoOnlyPaths()]
        if self._expected:
            self._others += paths
            return
        for path in paths:
            if path.IsPropertyPath():
                self.opinions.forget(path.GetPrimPath(), path.name)
        infos = [path for path in notice.GetChangedInfoOnlyPaths() if path.IsPropertyPath()]
        self._announce([*notice.GetResyncedPaths(), *infos])

    def _forget(self, notice: Usd.Notice.ObjectsChanged) -> None:
        """Drops what was remembered of prims that are no longer the same."""
        if any(not path.IsPropertyPath() for path in notice.GetResyncedPaths()):
            self._forget_all()
        for path in (*notice.GetResyncedPaths(), *notice.GetChangedInfoOnlyPaths()):
            self.tables.pop(path.GetPrimPath(), None)
            if path.name == "xformOpOrder" and not self._expected:  # edits of ours keep a reset
                self._resets = None
            if path.name.startswith("xformOp"):
                self._forget_matrix(path.GetPrimPath())

    def _forget_all(self) -> None:
        self._prims.clear()
        self.tables.clear()
        self._forget_matrices()
        self._resets = None

    def _forget_matrices(self) -> None:
        self.matrices.clear()
        self.has_resets = False

    def _forget_matrix(self, path: Sdf.Path) -> None:
        if self.has_resets:
            self._forget_matrices()
        elif self._usd_stage.GetPrimAtPath(path):
            self.matrices.pop(self.item_path(path), None)

    def _announce(self, paths: Iterable[Sdf.Path]) -> None:
        if not self.is_open:
            return
        paths = list(paths)
        self._invalidate([path.GetParentPath() if path.IsPrimPath() else path
                          for path in paths if not path.IsPropertyPath()])
        for path in paths:
            if path.IsPropertyPath():
                self._announce_property(path)
            elif path.IsPrimPath() and self._usd_stage.GetPrimAtPath(path):
                for name in ("usd:active", "usd:kind"):
                    kiv.Attributes.notify(kiv.AttributeChanged(self.item_path(path), name))

    def _invalidate(self, parents: list[Sdf.Path]) -> None:
        """The children of these prims, and what is below, have to be asked for anew."""
        for path in Sdf.Path.RemoveDescendentPaths(parents):
            while not self._usd_stage.GetPrimAtPath(path):
                path = path.GetParentPath()
            item = kiv.Hierarchy.create_item(self.item_path(path))
            if item is not None:
                kit.announce(kiv.SubtreeInvalidate(item))

    def announce_resets(self, above: Sdf.Path) -> None:
        """The prim at `above` has moved: those below that do not move with it are elsewhere, as seen from it."""
        if self._resets is None:
            self._resets = [prim.GetPath() for prim in Usd.PrimRange.Stage(self._usd_stage, ALL_PRIMS)
                            if prim.IsA(UsdGeom.Xformable) and UsdGeom.Xformable(prim).GetResetXformStack()]
        for path in self._resets:
            if path != above and path.HasPrefix(above):
                kiv.Transform3d.notify(self.item_path(path))

    def _announce_property(self, path: Sdf.Path) -> None:
        prim = self._usd_stage.GetPrimAtPath(path.GetPrimPath())
        if not prim or prim.IsInPrototype():
            return
        item = self.item_path(prim.GetPath())
        if path.name.startswith("xformOp"):
            kiv.Transform3d.notify(item)
            self.announce_resets(prim.GetPath())
            return
        kiv.Attributes.notify(kiv.AttributeChanged(item, path.name))
        for notify in also_notified(prim, path.name):
            notify(item)


def _visibility_changed(path: kiv.Path) -> None:
    kiv.Object3d.notify(kiv.VisibilityChanged(path))


def is_light(prim: Usd.Prim) -> bool:
    """Whether the prim shines, by its type or because it was made to."""
    return bool(prim.HasAPI("LightAPI"))


def also_notified(prim: Usd.Prim, name: str) -> list[Callable[[kiv.Path], None]]:
    """What shows the attribute of that name besides the attribute itself."""
    if name == "visibility":
        return [_visibility_changed]
    if prim.IsA(UsdGeom.Camera):
        return [kiv.Camera.notify]
    return [kiv.Light.notify] if is_light(prim) else []
