"""Prims in space: transforms, bounds, visibility and materials."""

from typing import Any

from pxr import Gf, Sdf, UsdGeom, UsdShade

import kiv
from kiv import kit
from kiv.usd._attributes import Tables, is_animated
from kiv.usd._stage import Stage
from kiv.usd._tree import Tree

_FACTORS = ["xformOp:translate", "xformOp:rotateXYZ", "xformOp:scale"]


def _above(stage: Stage, xform: UsdGeom.Xformable) -> Gf.Matrix4d | None:
    """The matrix of the parent in the stage, for a prim whose transform does not build on it."""
    if not xform.GetResetXformStack():
        return None
    return UsdGeom.XformCache(stage.time).GetParentToWorldTransform(xform.GetPrim())


def _usd_matrix(matrix: kiv.Matrix4d) -> Gf.Matrix4d:
    return Gf.Matrix4d(*(float(matrix[row][column]) for row in range(4) for column in range(4)))


class Transforms:
    """Matrices of prims, relative to the item above them."""

    def __init__(self, tree: Tree) -> None:
        self._tree = tree

    def get(self, path: kiv.Path) -> kiv.Matrix4d | None:
        found = self._tree.found(path)
        if not found:
            return None
        stage, prim = found
        if path not in stage.matrices:
            stage.matrices[path] = self._read(stage, UsdGeom.Xformable(prim))
        return stage.matrices[path]

    @staticmethod
    def _read(stage: Stage, xform: UsdGeom.Xformable) -> kiv.Matrix4d | None:
        if not xform:
            return None
        local, above = xform.GetLocalTransformation(stage.time), _above(stage, xform)
        stage.has_resets |= above is not None
        return kiv.Matrix4d(local * above.GetInverse() if above else local)

    def set(self, path: kiv.Path, matrix: kiv.Matrix4d) -> None:
        """Authors translate, rotateXYZ and scale where the prim is made of these and they are exact enough,
        otherwise one matrix, which replaces the other operations."""
        stage, prim = self._tree.required(path)
        xform = UsdGeom.Xformable(prim)
        if prim.IsInstanceProxy():
            raise ValueError(f"'{path}' is in an instance")
        if any(is_animated(op.GetAttr()) for op in xform.GetOrderedXformOps()):
            raise ValueError(f"the transform of '{path}' is animated")
        above, wanted, before = _above(stage, xform), _usd_matrix(matrix), self.get(path)
        local = wanted * above if above else wanted

        def author() -> None:
            if not _author_factors(xform, local):
                reset = xform.GetResetXformStack()
                op = _operation(xform, "xformOp:transform") or xform.AddTransformOp()
                op.Set(local)
                xform.SetXformOpOrder([op], reset)

        with stage.editing(prim.GetPath()):
            stage.opinions.write(prim.GetPath(), "xformOp*", _usd_matrix(before) if before else None, wanted, author)
        if stage.is_open:
            stage.announce_resets(prim.GetPath())


def _operation(xform: UsdGeom.Xformable, name: str) -> UsdGeom.XformOp | None:
    attribute = xform.GetPrim().GetAttribute(name)
    return UsdGeom.XformOp(attribute) if attribute else None


def _author_factors(xform: UsdGeom.Xformable, local: Gf.Matrix4d) -> bool:
    """Whether the operations there are made the matrix."""
    names = [op.GetOpName() for op in xform.GetOrderedXformOps()]
    if not names or names != [name for name in _FACTORS if name in names]:
        return False
    factors = kit.decomposed(kiv.Matrix4d(local))
    if factors is None or any(abs(factors.shear[axis]) > 1e-9 for axis in range(3)):
        return False
    values: dict[str, Any] = dict(zip(_FACTORS, (factors.translation, factors.rotation, factors.scale), strict=True))
    now = xform.GetLocalTransformation()
    if all(local.GetRow3(row) == now.GetRow3(row) for row in range(3)) and _FACTORS[0] in names:
        values = {_FACTORS[0]: factors.translation}
    if not all(name in names or _is_neutral(name, value) for name, value in values.items()):
        return False
    for name, value in values.items():
        operation = _operation(xform, name) if name in names else None
        if operation:
            _set_vector(operation, [float(value[axis]) for axis in range(3)])
    return bool(Gf.IsClose(xform.GetLocalTransformation(), local, 1e-7 * max(1.0, _largest(local))))


def _is_neutral(name: str, value: Any) -> bool:
    wanted = 1.0 if name == "xformOp:scale" else 0.0
    return all(value[axis] == wanted for axis in range(3))


def _largest(matrix: Gf.Matrix4d) -> float:
    return float(max(abs(number) for row in matrix for number in row))


def _set_vector(operation: UsdGeom.XformOp, numbers: list[float]) -> None:
    kind = Gf.Vec3d if operation.GetPrecision() == UsdGeom.XformOp.PrecisionDouble else Gf.Vec3f
    operation.Set(kind(*numbers))


class Object(kit.Object3dBase):
    """The bounds of a prim and of what is below it, and whether it is shown."""

    def __init__(self, item: kiv.SceneItem, tree: Tree, tables: Tables) -> None:
        super().__init__(item)
        self._path = item.path
        self._tree = tree
        self._tables = tables

    @property
    def bounding_box(self) -> kiv.BoundingBox3d:
        found = self._tree.found(self._path)
        if found is None:
            return kiv.BoundingBox3d()
        stage, prim = found
        box = stage.bounds.ComputeUntransformedBound(prim).ComputeAlignedRange()
        return kiv.BoundingBox3d() if box.IsEmpty() else kiv.BoundingBox3d(tuple(box.GetMin()), tuple(box.GetMax()))

    @property
    def visibility(self) -> bool:
        found = self._tree.found(self._path)
        attribute = UsdGeom.Imageable(found[1]).GetVisibilityAttr() if found else None
        return not attribute or not found or attribute.Get(found[0].time) != UsdGeom.Tokens.invisible

    @visibility.setter
    def visibility(self, shown: bool) -> None:
        self.set_visibility(shown)

    def set_visibility_cmd(self, visible: bool) -> kiv.UndoableCommand | None:
        token = UsdGeom.Tokens.inherited if visible else UsdGeom.Tokens.invisible
        item = self._tree.item(self._path)
        return self._tables.set_cmd(item, "visibility", token) if item else None


class Materials(kiv.Material):
    """The materials bound to a prim and to the parts of its surface."""

    def __init__(self, item: kiv.SceneItem, tree: Tree) -> None:
        super().__init__()
        self._path = item.path
        self._tree = tree

    @property
    def materials(self) -> list[kiv.SceneItem]:
        found = self._tree.found(self._path)
        if found is None:
            return []
        stage, prim = found
        parts = [prim, *(subset.GetPrim() for subset in UsdShade.MaterialBindingAPI(prim).GetMaterialBindSubsets())]
        bound: dict[Sdf.Path, kiv.SceneItem | None] = {}
        for part in parts:
            material = UsdShade.MaterialBindingAPI(part).ComputeBoundMaterial()[0]
            if material:
                bound[material.GetPath()] = self._tree.item(stage.item_path(material.GetPath()))
        return [item for item in bound.values() if item is not None]
