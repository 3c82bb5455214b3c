"""What layers said before an edit, so that undo gives back their text."""

from collections.abc import Callable, Sequence
from dataclasses import dataclass, field
from typing import Any

from pxr import Sdf, Usd

Copies = dict[str, Sdf.Layer]


class Entries:
    """Adds entries of prims to layers and removes them, so that a layer has its text again when an edit is undone:
    entries that were only made for others to be below them leave with the last of these, and entries that come back
    have their places again."""

    def __init__(self) -> None:
        self._made: set[tuple[str, Sdf.Path]] = set()
        self._orders: dict[tuple[str, Sdf.Path, frozenset[str], tuple[str, ...]], list[list[str]]] = {}

    def require(self, layer: Sdf.Layer, path: Sdf.Path) -> None:
        """Makes the entries at and above `path` that are missing."""
        for prefix in path.GetPrefixes():
            if not layer.GetPrimAtPath(prefix):
                Sdf.CreatePrimInLayer(layer, prefix)
                self._made.add((layer.identifier, prefix))
                self.restore_order(layer, prefix)

    def prune(self, layer: Sdf.Layer, path: Sdf.Path) -> None:
        """Removes those at and above `path` that were made for others and say nothing."""
        while (layer.identifier, path) in self._made:
            spec = layer.GetPrimAtPath(path)
            if spec and (spec.specifier != Sdf.SpecifierOver or not spec.IsInert()):
                return
            if spec:
                self.remember_order(layer, path)
                self.remove(layer, path)
            self._made.discard((layer.identifier, path))
            path = path.GetParentPath()

    @staticmethod
    def remove(layer: Sdf.Layer, path: Sdf.Path) -> None:
        """Removes an entry, with everything below it."""
        del children_of(layer, path.GetParentPath())[path.name]

    def remember_order(self, layer: Sdf.Layer, path: Sdf.Path, shown: Sequence[str] = ()) -> None:
        """The entry at `path` is about to leave; `shown` is the order of the prims beside it."""
        names = list(children_of(layer, path.GetParentPath()).keys())
        self._orders.setdefault((layer.identifier, path, frozenset(names), tuple(shown)), []).append(names)

    def restore_order(self, layer: Sdf.Layer, path: Sdf.Path, shown: Sequence[str] = ()) -> bool:
        """The entry at `path` has come. Whether it left the same ones before: all have their places again."""
        children = children_of(layer, path.GetParentPath())
        names = list(children.keys())
        left = self._orders.get((layer.identifier, path, frozenset(names), tuple(shown)))
        known = left.pop() if left else None  # what left last comes first: undo and redo turn back in that order
        if known is not None and known != names:
            children[:] = [children[name] for name in known]
        return known is not None

    def rename(self, layer: Sdf.Layer, old: Sdf.Path, new: Sdf.Path) -> None:
        """The entry at `old` is now at `new`."""
        moved = {key for key in self._made if key[0] == layer.identifier and key[1].HasPrefix(old)}
        self._made -= moved
        self._made |= {(layer.identifier, path.ReplacePrefix(old, new)) for _, path in moved}


def children_of(layer: Sdf.Layer, path: Sdf.Path) -> Any:
    """The entries below a prim that the layer has, or at the top."""
    return (layer.pseudoRoot if path.IsAbsoluteRootPath() else layer.GetPrimAtPath(path)).nameChildren


def remove_property(layer: Sdf.Layer, path: Sdf.Path) -> None:
    """Removes a property from the layer, if it has it."""
    spec = layer.GetPropertyAtPath(path)
    if spec:
        spec.owner.RemoveProperty(spec)


@dataclass
class Before:
    """Properties of a prim, as one layer had them, and the value that they made."""

    layer: Sdf.Layer
    value: object
    prefix: str
    copies: Copies = field(default_factory=dict)

    @classmethod
    def of(cls, layer: Sdf.Layer, path: Sdf.Path, prefix: str, value: object) -> "Before":
        before = cls(layer, value, prefix)
        for name in before.names(path):
            copy = Sdf.Layer.CreateAnonymous()
            Sdf.CreatePrimInLayer(copy, "/a")
            Sdf.CopySpec(layer, path.AppendProperty(name), copy, Sdf.Path("/a").AppendProperty(name))
            before.copies[name] = copy
        return before

    def names(self, path: Sdf.Path) -> list[str]:
        """The names of the properties that it is about, of those that the layer has now."""
        spec = self.layer.GetPrimAtPath(path)
        whole = not self.prefix.endswith("*")
        return [name for name in spec.properties.keys()
                if (name == self.prefix if whole else name.startswith(self.prefix[:-1]))] if spec else []

    def restore(self, path: Sdf.Path, entries: Entries) -> None:
        for name in self.names(path):
            if name not in self.copies:
                remove_property(self.layer, path.AppendProperty(name))
        for name, copy in self.copies.items():
            entries.require(self.layer, path)
            Sdf.CopySpec(copy, Sdf.Path("/a").AppendProperty(name), self.layer, path.AppendProperty(name))
        entries.prune(self.layer, path)


Stacks = dict[Sdf.Path, dict[str, list[Before]]]


class Opinions:
    """Writes properties so that each write can be taken back without a trace.

    The properties of one value have the name `prefix`, or names that begin with it if it ends with "*". A value that
    was there before gets its opinions back as they were: those of the fallback are none.
    """

    MOST = 64  # of the states of one value; a drag makes many between the first and the last

    def __init__(self, stage: Usd.Stage) -> None:
        self._stage = stage
        self._stacks: Stacks = {}
        self.entries = Entries()

    def write(self, path: Sdf.Path, prefix: str, before: object, value: object, author: Callable[[], None]) -> None:
        """Gives the prim at `path` a value, by `author`, unless it is `before`, the present value."""
        if value == before:
            return
        stack = self._stacks.setdefault(path, {}).setdefault(prefix, [])
        known = next((index for index in reversed(range(len(stack))) if stack[index].value == value), None)
        if known is not None:
            self._restore(path, stack, known)
            return
        target = self._stage.GetEditTarget()
        spec_path = target.MapToSpecPath(path)
        stack.append(Before.of(target.GetLayer(), spec_path, prefix, before))
        try:
            self.entries.require(target.GetLayer(), spec_path)
            author()
        except BaseException:
            self._restore(path, stack, len(stack) - 1)
            raise
        if len(stack) > self.MOST:
            del stack[1]

    def _restore(self, path: Sdf.Path, stack: list[Before], index: int) -> None:
        """The state before the write of that index; those of later ones are over."""
        while len(stack) > index:
            last = stack.pop()
            last.restore(self._spec_path(path, last.layer), self.entries)

    def forget(self, path: Sdf.Path, name: str) -> None:
        """Someone else wrote the property: what was before is no longer what undo has to give back."""
        stacks = self._stacks.get(path, {})
        for prefix in [each for each in stacks if each == name or each[-1] == "*" and name.startswith(each[:-1])]:
            del stacks[prefix]

    def take(self, top: Sdf.Path) -> Stacks:
        """What is known of the prims at and below `top`, which leave."""
        return {path: self._stacks.pop(path) for path in list(self._stacks) if path.HasPrefix(top)}

    def put(self, stacks: Stacks, old: Sdf.Path, new: Sdf.Path) -> None:
        """They are back, maybe under another name."""
        self._stacks.update({path.ReplacePrefix(old, new): known for path, known in stacks.items()})

    def _spec_path(self, path: Sdf.Path, layer: Sdf.Layer) -> Sdf.Path:
        target = self._stage.GetEditTarget()
        return target.MapToSpecPath(path) if target.GetLayer() == layer else path
