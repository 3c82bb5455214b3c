"""Prims as items, and the edits of them in a layer."""

from collections.abc import Callable, Sequence
from dataclasses import dataclass
from typing import Any

from pxr import Pcp, Sdf, Tf, Usd

import kiv
from kiv import kit
from kiv.usd._opinions import Stacks, children_of
from kiv.usd._stage import ALL_PRIMS, Stage

Aim = tuple[Sdf.Path, Sdf.Path]  # of an entry, at a path
Items = list[dict[str, list[Sdf.Path]]]  # of the lists of an entry, by kind
KINDS = ("explicitItems", "addedItems", "prependedItems", "appendedItems", "deletedItems", "orderedItems")

STAGE = "stage"
UNTYPED = {"prim": Sdf.SpecifierDef, "over": Sdf.SpecifierOver, "class": Sdf.SpecifierClass}


def type_of(prim: Usd.Prim) -> str:
    """The node type of a prim: that of its schema or, if it has none, what it is made by."""
    name = prim.GetTypeName()
    if name:
        return str(name)
    if prim.IsPseudoRoot():
        return STAGE
    return next(name for name, specifier in UNTYPED.items() if specifier == prim.GetSpecifier())


@dataclass
class Part:
    """A prim outside the stage: a layer that has it alone, and where it was."""

    layer: Sdf.Layer
    path: Sdf.Path
    origin: Sdf.Path
    known: Stacks


@dataclass
class Arrival:
    """What must not follow, or not simply, when a prim leaves a place again."""

    dangling: set[Aim]  # what aimed at the place before
    merged: dict[Sdf.Path, tuple[Items, Items]]  # lists with both the old and the new path, as they were and became


class Tree(kit.Tree):
    """The prims of all stages of a run-time."""

    def __init__(self, run_time_id: int, stage_of: Callable[[kiv.Path], Stage | None],
                 roots_of: Callable[[kiv.Path], list[kiv.Path]]) -> None:
        super().__init__(kiv.Path(kiv.PathSegment([STAGE], run_time_id, "/")))
        self._stage_of = stage_of
        self._roots_of = roots_of
        self._arrivals: dict[tuple[str, Sdf.Path], list[Arrival]] = {}  # by place, the latest last

    def found(self, path: kiv.Path) -> tuple[Stage, Usd.Prim] | None:
        """The stage and the prim that the item at `path` stands for; None if there is no such item."""
        stage = self._stage_of(path)
        prim = stage.prim(path) if stage else None
        return (stage, prim) if stage and prim else None

    def required(self, path: kiv.Path) -> tuple[Stage, Usd.Prim]:
        """The same for an item that must exist."""
        found = self.found(path)
        if found is None:
            raise ValueError(f"no such item '{path}'")
        return found

    def roots(self, gateway: kiv.Path | str = "") -> list[kiv.Path]:
        return self._roots_of(kiv.Path(gateway) if isinstance(gateway, str) else gateway)

    def node_type(self, path: kiv.Path | str) -> str:
        found = self.found(kiv.Path(path) if isinstance(path, str) else path)
        return type_of(found[1]) if found else ""

    def children(self, path: kiv.Path | str) -> list[kit.Tree.Child]:
        found = self.found(kiv.Path(path) if isinstance(path, str) else path)
        children = found[1].GetFilteredChildren(ALL_PRIMS) if found else ()
        return [kit.Tree.Child(child.GetName(), type_of(child)) for child in children]

    def accepts(self, parent: kiv.Path, node_type: str) -> bool:
        found = self.found(parent)
        if found is None:
            return False
        stage, prim = found
        if prim.IsInstance() or prim.IsInstanceProxy() or not prim.IsActive():
            return False
        if not node_type:
            return all(self._is_ours(stage, child) for child in prim.GetFilteredChildren(ALL_PRIMS))
        return node_type in UNTYPED or Usd.SchemaRegistry.IsConcrete(node_type)

    def is_editable(self, path: kiv.Path) -> bool:
        found = self.found(path)
        return found is not None and self._is_ours(*found)

    def make(self, node_type: str) -> Part:
        layer = Sdf.Layer.CreateAnonymous()
        typed = "" if node_type in UNTYPED else node_type
        Sdf.PrimSpec(layer.pseudoRoot, "new", UNTYPED.get(node_type, Sdf.SpecifierDef), typed)
        return Part(layer, Sdf.Path("/new"), Sdf.Path(), {})

    def copy(self, path: kiv.Path) -> Part:
        stage, prim = self.required(path)
        part = self._copied(stage, prim.GetPath())
        return Part(part.layer, part.path, Sdf.Path(), {})  # what aims at the prim does not aim at its copy

    def take(self, path: kiv.Path) -> Part:
        stage, prim = self.required(path)
        place = prim.GetPath()
        part = self._copied(stage, place)
        layer, spec_path = self._spec(stage, place)
        entries = stage.opinions.entries
        with stage.editing(place):
            entries.remember_order(layer, spec_path, _names(prim.GetParent()))
            entries.remove(layer, spec_path)
            entries.prune(layer, spec_path.GetParentPath())
            part.known = stage.opinions.take(place)
        return part

    def put(self, path: kiv.Path, part: Part, row: int) -> None:
        stage, parent = self.required(path.parent)
        place = parent.GetPath().AppendChild(path.name)
        layer, spec_path = self._spec(stage, place)
        names = _names(parent)
        names[row:row] = [path.name]
        entries, parent_path = stage.opinions.entries, spec_path.GetParentPath()
        with stage.editing(place):
            entries.require(layer, parent_path)
            Sdf.CopySpec(part.layer, part.path, layer, spec_path)
            if not entries.restore_order(layer, spec_path, names):
                self._order(layer, parent_path, path.name, names[names.index(path.name) + 1:])
            if part.origin and part.origin != place:
                self._retarget(layer, part.origin, place)
            stage.opinions.put(part.known, part.origin, place)

    def rename(self, path: kiv.Path, name: str) -> None:
        stage, prim = self.required(path)
        old = prim.GetPath()
        new = old.ReplaceName(name)
        layer, spec_path = self._spec(stage, old)
        with stage.editing(old, new):
            edit = Sdf.BatchNamespaceEdit()
            edit.Add(Sdf.NamespaceEdit.Rename(spec_path, name))
            if not layer.Apply(edit):
                raise ValueError(f"'{path}' cannot be renamed")
            stage.opinions.entries.rename(layer, spec_path, spec_path.ReplaceName(name))
            self._retarget(layer, old, new)
            stage.opinions.put(stage.opinions.take(old), old, new)

    def reorder(self, parent: kiv.Path | str, names: Sequence[str]) -> None:
        if not names:
            return
        stage, prim = self.required(kiv.Path(parent) if isinstance(parent, str) else parent)
        layer, spec_path = self._spec(stage, prim.GetPath())
        with stage.editing(prim.GetPath()):
            children = children_of(layer, spec_path)
            children[:] = [children[name] for name in names]

    def free_name(self, parent: kiv.Path, name: str, own: str = "") -> str:
        taken = {child.name for child in self.children(parent)} - {own}
        valid = name if Sdf.Path.IsValidIdentifier(name) else Tf.MakeValidIdentifier(name)
        return kiv.unique_name(valid, taken.__contains__)

    def _retarget(self, layer: Sdf.Layer, old: Sdf.Path, new: Sdf.Path) -> None:
        """Lets what aims in the layer at the prim that was at `old` aim at `new`. Linear in the layer."""
        arrivals = self._arrivals.get((layer.identifier, old))
        last = arrivals.pop() if arrivals else Arrival(set(), {})
        left = {(place.ReplacePrefix(old, new), path) for place, path in last.dangling}
        restored = {place.ReplacePrefix(old, new) for place, (before, after) in last.merged.items()
                    if _restore(layer.GetObjectAtPath(place.ReplacePrefix(old, new)), before, after)}
        aims = aims_of(layer)
        arrival = Arrival({aim for aim in aims if aim[1].HasPrefix(new)}, {})
        for place, path in aims:
            if not path.HasPrefix(old) or (place, path) in left or place in restored:
                continue
            spec, image = layer.GetObjectAtPath(place), path.ReplacePrefix(old, new)
            before = _items(spec)
            for paths in _path_lists(spec):
                paths.ReplaceItemEdits(path, image)
            if (place, image) in arrival.dangling or place in arrival.merged:
                arrival.merged[place] = arrival.merged.get(place, (before, before))[0], _items(spec)
        self._arrivals.setdefault((layer.identifier, new), []).append(arrival)

    @staticmethod
    def _spec(stage: Stage, place: Sdf.Path) -> tuple[Sdf.Layer, Sdf.Path]:
        target = stage.usd_stage.GetEditTarget()
        return target.GetLayer(), target.MapToSpecPath(place)

    def _copied(self, stage: Stage, place: Sdf.Path) -> Part:
        layer, spec_path = self._spec(stage, place)
        copy = Sdf.Layer.CreateAnonymous()
        path = Sdf.Path.absoluteRootPath.AppendChild(place.name)
        if not Sdf.CopySpec(layer, spec_path, copy, path):
            raise ValueError(f"'{place}' is not in the layer '{layer.identifier}'")
        return Part(copy, path, place, {})

    def _is_ours(self, stage: Stage, prim: Usd.Prim) -> bool:
        """Whether all that is said of the prim at its own place is said in the layer that is edited."""
        if prim.IsPseudoRoot() or prim.IsInstanceProxy():
            return False
        place = prim.GetPath()
        layer, spec_path = self._spec(stage, place)
        if not layer.permissionToEdit or not layer.GetPrimAtPath(spec_path):
            return False
        others = (each for each in stage.usd_stage.GetLayerStack() if each != layer)
        return not any(each.GetPrimAtPath(place) for each in others) and not _has_ancestral_specs(prim)

    @staticmethod
    def _order(layer: Sdf.Layer, parent: Sdf.Path, name: str, after: list[str]) -> None:
        """Puts the last child before the first of those that are to come after it."""
        children = children_of(layer, parent)
        names = list(children.keys())
        names.remove(name)
        row = next((names.index(each) for each in after if each in names), None)
        if row is not None:
            names.insert(row, name)
            children[:] = [children[each] for each in names]


def _has_ancestral_specs(prim: Usd.Prim) -> bool:
    nodes = list(prim.GetPrimIndex().rootNode.children)
    while nodes:
        node = nodes.pop()
        if node.hasSpecs and node.arcType != Pcp.ArcTypeVariant and node.IsDueToAncestor():
            return True
        nodes += node.children
    return False


def _names(prim: Usd.Prim) -> list[str]:
    return [child.GetName() for child in prim.GetFilteredChildren(ALL_PRIMS)]


def aims_of(layer: Sdf.Layer) -> set[Aim]:
    """What in the layer aims at which paths: relationships, connections, inherited and specialized prims."""
    aims: set[Aim] = set()

    def collect(place: Sdf.Path) -> None:
        for paths in _path_lists(layer.GetObjectAtPath(place)):
            aims.update((place, path) for path in _mentioned(paths))

    layer.Traverse(Sdf.Path.absoluteRootPath, collect)
    return aims


def _path_lists(spec: Any) -> list[Any]:
    if isinstance(spec, Sdf.PrimSpec):
        return [each for each in (spec.inheritPathList, spec.specializesList) if each]
    if isinstance(spec, Sdf.RelationshipSpec):
        return [spec.targetPathList]
    return [spec.connectionPathList] if isinstance(spec, Sdf.AttributeSpec) else []


def _mentioned(paths: Any) -> list[Sdf.Path]:
    return [path for kind in KINDS for path in getattr(paths, kind)]


def _items(spec: Any) -> Items:
    return [{kind: list(getattr(paths, kind)) for kind in KINDS} for paths in _path_lists(spec)]


def _restore(spec: Any, before: Items, after: Items) -> bool:
    """Gives the lists of the entry the items that they had, if nothing else has changed them since."""
    if spec is None or _items(spec) != after:
        return False
    for paths, items in zip(_path_lists(spec), before, strict=True):
        for kind in KINDS:
            if items[kind]:
                setattr(paths, kind, items[kind])
    return True
