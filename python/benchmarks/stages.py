"""What `kiv.usd` costs beside USD's own API, on a stage with thousands of prims. Run it with the package installed."""

import argparse

from border import report
from pxr import Gf, Usd, UsdGeom

import kiv
from kiv import host, usd

WIDTH = 50


def authored(width: int) -> Usd.Stage:
    """A stage with a group for each row of cubes; groups and cubes are transformed."""
    stage = Usd.Stage.CreateInMemory()
    top = UsdGeom.Xform.Define(stage, "/Top")
    for row in range(width):
        group = UsdGeom.Xform.Define(stage, f"/Top/row{row}")
        group.AddTranslateOp().Set(Gf.Vec3d(0, row, 0))
        for column in range(width):
            cube = UsdGeom.Cube.Define(stage, f"/Top/row{row}/cube{column}")
            cube.AddTranslateOp().Set(Gf.Vec3d(column, 0, 0))
            cube.AddRotateXYZOp().Set(Gf.Vec3f(column, 0, 0))
            cube.GetSizeAttr().Set(1.0 + column)
    stage.SetDefaultPrim(top.GetPrim())
    return stage


def main() -> None:
    parser = argparse.ArgumentParser()
    parser.add_argument("--width", type=int, default=WIDTH, help="rows, and cubes in a row")
    stage = authored(parser.parse_args().width)
    prims = list(stage.Traverse())
    with usd.RunTime(stage) as run_time:
        shown = run_time.stages[0]
        top = kiv.Hierarchy.create_item(shown.path)
        items = [kiv.Hierarchy.create_item(shown.item_path(prim.GetPath())) for prim in prims]
        cubes = [item for item in items if item.node_type == "Cube"]
        names = {item.path: prim for item, prim in zip(items, prims, strict=True)}
        sizes = [item.attributes["size"] for item in cubes]
        attributes = [names[item.path].GetAttribute("size") for item in cubes]

        def moved() -> None:
            cubes[0].transform3d.translation = (1, 2, 3)
            _ = [item.transform3d.inclusive_matrix for item in cubes[:10]]

        def moved_in_usd() -> None:
            op = UsdGeom.Xformable(names[cubes[0].path]).GetOrderedXformOps()[0]
            op.Set(Gf.Vec3d(1, 2, 3))
            cache = UsdGeom.XformCache()
            _ = [cache.GetLocalToWorldTransform(names[item.path]) for item in cubes[:10]]

        def worlds() -> None:
            cache = UsdGeom.XformCache()
            _ = [cache.GetLocalToWorldTransform(prim) for prim in prims]

        def bounds() -> None:
            cache = UsdGeom.BBoxCache(Usd.TimeCode.Default(), ["default"])
            _ = [cache.ComputeUntransformedBound(prim).ComputeAlignedRange() for prim in prims]

        count = len(prims)
        report(["kiv.usd", "pxr"], [
            ("outline of the stage", count, (
                lambda: host.outline(top),
                lambda: [(prim.GetName(), prim.GetTypeName()) for prim in stage.Traverse()])),
            ("the items of all paths", count, (
                lambda: [kiv.Hierarchy.create_item(item.path) for item in items],
                lambda: [stage.GetPrimAtPath(prim.GetPath()) for prim in prims])),
            ("names of all attributes", count, (
                lambda: [list(item.attributes) for item in items],
                lambda: [[each.GetName() for each in prim.GetAttributes()] for prim in prims])),
            ("read an attribute", len(cubes), (
                lambda: [size.value for size in sizes], lambda: [attribute.Get() for attribute in attributes])),
            ("world matrices of all", count, (
                lambda: [item.transform3d.inclusive_matrix for item in items], worlds)),
            ("bounds of all", count, (lambda: [item.object3d.bounding_box for item in items], bounds)),
            ("move one, read ten matrices", 1, (moved, moved_in_usd)),
        ])


if __name__ == "__main__":
    main()
