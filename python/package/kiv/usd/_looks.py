"""What hosts show of prims besides their names: a menu, and a look that tells instances and inactive prims apart."""

from collections.abc import Callable, Sequence
from typing import Any

from pxr import Usd

import kiv
from kiv import kit
from kiv.usd._stage import Stage
from kiv.usd._tree import Tree


class Looks(kit.UIInfoHandlerBase):
    """Inactive prims are struck out, instances and what is in them italic; the tooltip tells what is not loaded."""

    def __init__(self, run_time_id: int, tree: Tree) -> None:
        super().__init__(run_time_id)
        self._tree = tree

    def tree_view_cell_info(self, item: kiv.SceneItem, host_look: kiv.CellInfo) -> kiv.CellInfo:
        found = self._tree.found(item.path)
        if found:
            host_look.font_strike_out = not found[1].IsActive()
            host_look.font_italic = bool(found[1].IsInstance() or found[1].IsInstanceProxy())
        return host_look

    def tree_view_tooltip(self, item: kiv.SceneItem) -> str:
        found = self._tree.found(item.path)
        return ", ".join([item.node_type, *_states(found[1])]) if found else ""


def _states(prim: Usd.Prim) -> list[str]:
    states = {"inactive": not prim.IsActive(), "instance": prim.IsInstance(),
              "in an instance": prim.IsInstanceProxy(), "abstract": prim.IsAbstract(),
              "undefined": not prim.IsDefined(), "not loaded": prim.HasPayload() and not prim.IsLoaded()}
    return [state for state, holds in states.items() if holds and not prim.IsPseudoRoot()]


class Menu(kit.ContextOpsBase):
    """Loads and unloads payloads, activates and deactivates prims, and selects variants."""

    def __init__(self, item: kiv.SceneItem, tree: Tree) -> None:
        super().__init__(item)
        self._path = item.path
        self._tree = tree

    def items(self, item_path: Sequence[str] = ()) -> list[kiv.ContextItem]:
        found = self._tree.found(self._path)
        if found is None or found[1].IsPseudoRoot() or found[1].IsInstanceProxy():
            return []
        prim = found[1]
        if not item_path:
            return self._top(prim)
        variants = prim.GetVariantSets()
        if item_path[0] != "variants":
            return []
        if len(item_path) == 1:
            return [kiv.ContextItem(name, name, has_children=True) for name in variants.GetNames()]
        known = variants.GetVariantSet(item_path[1])
        return [kiv.ContextItem(name, name, checkable=True, checked=name == known.GetVariantSelection(),
                                exclusive=True) for name in known.GetVariantNames()]

    @staticmethod
    def _top(prim: Usd.Prim) -> list[kiv.ContextItem]:
        entries = []
        if prim.HasPayload() and prim.IsActive():
            entries.append(kiv.ContextItem("unload", "Unload") if prim.IsLoaded()
                           else kiv.ContextItem("load", "Load"))
        entries.append(kiv.ContextItem("deactivate", "Deactivate") if prim.IsActive()
                       else kiv.ContextItem("activate", "Activate"))
        if prim.GetVariantSets().GetNames():
            entries.append(kiv.ContextItem("variants", "Variants", has_children=True))
        return entries

    def do_op_cmd(self, item_path: Sequence[str]) -> kiv.UndoableCommand | None:
        found = self._tree.found(self._path)
        offered = found is not None and item_path and any(
            entry.item == item_path[-1] and not entry.has_children for entry in self.items(item_path[:-1]))
        if not found or not offered:
            return None
        stage, prim = found
        if len(item_path) == 3:
            return self._variant_cmd(stage, prim, item_path[1], item_path[2])
        return {"load": lambda: load_cmd(self._tree, self._path, True),
                "unload": lambda: load_cmd(self._tree, self._path, False),
                "activate": lambda: self._active_cmd(stage, prim, True),
                "deactivate": lambda: self._active_cmd(stage, prim, False)}[item_path[0]]()

    def _active_cmd(self, stage: Stage, prim: Usd.Prim, active: bool) -> kiv.UndoableCommand:
        name = prim.GetName()

        def undo(before: object, there: Usd.Prim) -> None:
            if before is None:
                there.ClearActive()
            else:
                there.SetActive(before)

        return self._authored_cmd(
            f"{'Activate' if active else 'Deactivate'} {name}", stage,
            lambda spec: spec.GetInfo("active") if spec.HasInfo("active") else None,
            lambda there: there.SetActive(active), undo)

    def _variant_cmd(self, stage: Stage, prim: Usd.Prim, name: str, variant: str) -> kiv.UndoableCommand:
        def undo(before: object, there: Usd.Prim) -> None:
            variants = there.GetVariantSet(name)
            if before is None:
                variants.ClearVariantSelection()
            else:
                variants.SetVariantSelection(before)

        return self._authored_cmd(
            f"Select {name} {variant} of {prim.GetName()}", stage,
            lambda spec: spec.variantSelections.get(name),
            lambda there: there.GetVariantSet(name).SetVariantSelection(variant), undo)

    def _authored_cmd(self, text: str, stage: Stage, read: Callable[[Any], object],
                      redo: Callable[[Usd.Prim], object],
                      undo: Callable[[object, Usd.Prim], object]) -> kiv.UndoableCommand:
        """A command that authors something in the layer that is edited, and takes it back from there. What it
        changes is announced as the stage reports it."""
        kept: list[Any] = []

        def do() -> None:
            there = self._tree.required(self._path)[1]
            target = stage.usd_stage.GetEditTarget()
            place = target.MapToSpecPath(there.GetPath())
            spec = target.GetLayer().GetPrimAtPath(place)
            kept[:] = [target, place, read(spec) if spec else None]
            stage.opinions.entries.require(target.GetLayer(), place)
            redo(there)

        def take_back() -> None:
            target, place, before = kept
            with Usd.EditContext(stage.usd_stage, target):
                undo(before, self._tree.required(self._path)[1])
                stage.opinions.entries.prune(target.GetLayer(), place)

        return kit.command(self._path.run_time_id, text, do, take_back)


def load_cmd(tree: Tree, path: kiv.Path, load: bool) -> kiv.UndoableCommand:
    """A command that loads or unloads the payloads at and below the item. It authors nothing."""
    kept: list[Usd.StageLoadRules] = []

    def redo() -> None:
        stage, prim = tree.required(path)
        kept[:] = [stage.usd_stage.GetLoadRules()]
        if load:
            stage.usd_stage.Load(prim.GetPath())
        else:
            stage.usd_stage.Unload(prim.GetPath())

    def undo() -> None:
        tree.required(path)[0].usd_stage.SetLoadRules(kept[0])

    return kit.command(path.run_time_id, f"{'Load' if load else 'Unload'} {path.name}", redo, undo)
