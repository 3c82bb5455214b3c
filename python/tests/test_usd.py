"""Stages as a run-time: what USD says of them, and what edits leave in their layers."""

import difflib
import random
import subprocess
import sys

import pytest

import kiv
from kiv import host

Usd = pytest.importorskip("pxr.Usd", reason="usd-core is not installed", exc_type=ImportError)

from pxr import Gf, Sdf, UsdGeom, UsdLux, UsdShade, Vt  # noqa: E402

from kiv import usd  # noqa: E402


def shop_of(stage):
    """A shop window: transforms of all kinds, a camera, lights, a material, a mesh."""
    shop = UsdGeom.Xform.Define(stage, "/Shop")
    shop.AddTranslateOp().Set(Gf.Vec3d(1, 2, 3))
    shop.AddRotateXYZOp().Set(Gf.Vec3f(10, 20, 30))
    shop.AddScaleOp().Set(Gf.Vec3f(2, 2, 2))
    box = UsdGeom.Cube.Define(stage, "/Shop/box")
    box.AddRotateYOp().Set(30)
    ball = UsdGeom.Sphere.Define(stage, "/Shop/box/ball")
    ball.AddTranslateOp().Set(Gf.Vec3d(5, 0, 0))
    ball.SetResetXformStack(True)
    UsdGeom.Scope.Define(stage, "/Shop/looks")
    UsdGeom.Cone.Define(stage, "/Shop/looks/cone").AddTransformOp().Set(Gf.Matrix4d(1).SetTranslate((0, 1, 0)))
    mesh = UsdGeom.Mesh.Define(stage, "/Shop/sheet")
    mesh.CreatePointsAttr(Vt.Vec3fArray([(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0)]))
    mesh.CreateFaceVertexCountsAttr([4])
    mesh.CreateFaceVertexIndicesAttr([0, 1, 2, 3])
    mesh.CreateExtentAttr([(0, 0, 0), (1, 1, 0)])
    mesh.CreateVisibilityAttr("invisible")
    UsdGeom.Camera.Define(stage, "/Shop/camera").CreateFocalLengthAttr(35)
    spot = UsdLux.SphereLight.Define(stage, "/Shop/spot").GetPrim()
    UsdLux.ShapingAPI.Apply(spot)
    UsdLux.ShadowAPI.Apply(spot)
    UsdLux.DistantLight.Define(stage, "/Shop/sun").CreateExposureAttr(3)
    steel = UsdShade.Material.Define(stage, "/Shop/looks/steel")
    UsdShade.MaterialBindingAPI.Apply(box.GetPrim()).Bind(steel)
    return stage


@pytest.fixture
def shop(scene):
    """The run-time of a shop window, and its stage."""
    with usd.RunTime(shop_of(Usd.Stage.CreateInMemory())) as run_time:
        yield run_time, run_time.stages[0]
        kiv.UndoableCommandMgr.instance().clear()


def item_at(stage, path):
    return kiv.Hierarchy.create_item(stage.item_path(Sdf.Path(path)))


def matrix_of(rows):
    return Gf.Matrix4d(*(number for row in rows for number in row))


def assert_same_places(stage):
    """Every prim has the place and the bounds that USD gives it."""
    places = UsdGeom.XformCache(stage.time)
    for prim in Usd.PrimRange.Stage(stage.usd_stage, Usd.TraverseInstanceProxies(Usd.PrimAllPrimsPredicate)):
        item = item_at(stage, prim.GetPath())
        assert item is not None, prim.GetPath()
        if item.transform3d:
            place = matrix_of(item.transform3d.segment_inclusive_matrix)
            assert Gf.IsClose(place, places.GetLocalToWorldTransform(prim), 1e-9), prim.GetPath()
        if item.object3d:
            fresh = UsdGeom.BBoxCache(stage.time, [UsdGeom.Tokens.default_, UsdGeom.Tokens.render,
                                                   UsdGeom.Tokens.proxy, UsdGeom.Tokens.guide], False, True)
            box, wanted = item.object3d.bounding_box, fresh.ComputeUntransformedBound(prim).ComputeAlignedRange()
            assert box.empty == wanted.IsEmpty(), prim.GetPath()
            assert box.empty or (tuple(box.min), tuple(box.max)) == (tuple(wanted.GetMin()), tuple(wanted.GetMax()))


def test_prims_are_items_with_the_places_that_usd_gives_them(shop):
    _, stage = shop
    rows = [(row.name, row.node_type) for row in host.outline(kiv.Hierarchy.create_item(stage.path))]
    assert rows[:4] == [("stage", "stage"), ("Shop", "Xform"), ("box", "Cube"), ("ball", "Sphere")]
    assert item_at(stage, "/Shop/box/ball").path == kiv.Path("/stage/Shop/box/ball")
    for text in ("/stage/Shop/none", "/stage/..", "/stage/Shop/a b", "/stage/Shop/box.size", "/other"):
        assert kiv.Hierarchy.create_item(kiv.Path(kiv.PathSegment(text, stage.path.run_time_id, "/"))) is None
    assert_same_places(stage)
    assert not item_at(stage, "/Shop/sheet").object3d.visibility
    assert [str(item.path) for item in item_at(stage, "/Shop/box").material.materials] == ["/stage/Shop/looks/steel"]


def test_attributes_have_the_types_and_definitions_of_usd(shop):
    run_time, stage = shop
    item = item_at(stage, "/Shop/box")
    prim = run_time.prim(item)
    values = {"b": ("Bool", True), "i": ("Int", 3), "f": ("Float", 0.5), "d": ("Double", 0.25), "s": ("String", "x"),
              "t": ("Token", "y"), "a": ("Asset", "z.png"), "f2": ("Float2", (1, 2)), "c3": ("Color3f", (1, 0.5, 0)),
              "c4": ("Color4f", (1, 0.5, 0, 1)), "v3": ("Vector3f", (1, 2, 3)), "p": ("Point3d", (1, 2, 3)),
              "i3": ("Int3", (1, 2, 3)), "f4": ("Float4", (1, 2, 3, 4)), "m": ("Matrix4d", None),
              "m3": ("Matrix3d", None), "many": ("FloatArray", None), "h": ("Half", None)}
    for name, (type_name, _) in values.items():
        made = prim.CreateAttribute(f"user:{name}", getattr(Sdf.ValueTypeNames, type_name))
        made.SetDocumentation("Ours.")
    attributes = item.attributes
    types = {name: attributes[f"user:{name}"].type for name in values}
    assert types == {
        "b": "Bool", "i": "Int", "f": "Float", "d": "Double", "s": "String", "t": "String", "a": "Filename",
        "f2": "Float2", "c3": "ColorFloat3", "c4": "ColorFloat4", "v3": "Float3", "p": "Double3", "i3": "Int3",
        "f4": "Float4", "m": "Matrix4d", "m3": "Matrix3d", "many": "Generic", "h": "Generic"}
    for name, (_, value) in values.items():
        if value is not None:
            attributes[f"user:{name}"].value = value
            known = prim.GetAttribute(f"user:{name}").Get()
            assert (known.path if name == "a" else tuple(known) if isinstance(value, tuple) else known) == value
    matrix = [[float(row * 4 + column) for column in range(4)] for row in range(4)]
    attributes["user:m"].value = matrix
    assert prim.GetAttribute("user:m").Get() == Gf.Matrix4d(*range(16))
    assert attributes["visibility"].type == "EnumString" and attributes["usd:kind"].has_metadata("Locked")
    with pytest.raises(ValueError):
        attributes["visibility"].value = "maybe"
    sized = kiv.Attributes_v4_2.of(item).attribute_def("size")
    assert sized.default_value == "2" and attributes["user:f"].metadata("documentation") == "Ours."
    prim.GetAttribute("size").Set(3.0, 1)
    prim.GetAttribute("size").Set(5.0, 3)
    assert item.attributes["size"].has_metadata("Locked")
    stage.time = 2
    assert item.attributes["size"].value == 4


def test_cameras_and_lights_are_those_of_usd(shop):
    _, stage = shop
    camera = item_at(stage, "/Shop/camera").camera
    camera.near_clip_plane = 0.5
    camera.focal_length = 50
    real = UsdGeom.Camera(stage.usd_stage.GetPrimAtPath("/Shop/camera"))
    assert real.GetFocalLengthAttr().Get() == 50 and tuple(real.GetClippingRangeAttr().Get()) == (0.5, 1000000)
    camera.projection = kiv.Camera.Projection.ORTHOGRAPHIC
    window = real.GetCamera(0).frustum.GetWindow()
    assert camera.horizontal_aperture == pytest.approx(window.GetSize()[0])
    camera.horizontal_aperture = 4
    assert real.GetCamera(0).frustum.GetWindow().GetSize()[0] == pytest.approx(4)
    sun, spot = item_at(stage, "/Shop/sun").light, item_at(stage, "/Shop/spot").light
    assert (sun.type, spot.type) == (kiv.Light.Type.DIRECTIONAL, kiv.Light.Type.SPOT)
    sun.intensity = 16
    prim = stage.usd_stage.GetPrimAtPath("/Shop/sun")
    assert prim.GetAttribute("inputs:intensity").Get() == 2 and sun.intensity == 16
    spot.color = (1, 0.5, 0.25)
    spot.cone_interface.cone_props_cmd(40, 5, 1).execute()
    spot.sphere_interface.sphere_props_cmd(2, True).execute()
    assert spot.cone_interface.cone_props == kiv.Light.ConeProps(40, 5, 1)
    assert spot.sphere_interface.sphere_props == kiv.Light.SphereProps(2, True)
    assert stage.usd_stage.GetPrimAtPath("/Shop/spot").GetAttribute("inputs:shaping:cone:angle").Get() == 25
    light = stage.usd_stage.GetPrimAtPath("/Shop/spot")
    light.GetAttribute("inputs:enableColorTemperature").Set(True)
    light.GetAttribute("inputs:colorTemperature").Set(3000.0)
    assert spot.color.b < spot.color.r and spot.color_cmd(1, 1, 1) is None


def edit_of(stage, random_):
    """A command of any kind on an item that is there; None if it is refused."""
    items = [item_at(stage, prim.GetPath()) for prim in stage.usd_stage.TraverseAll()]
    item, other = random_.choice(items), random_.choice(items)

    def reorder():
        children = list(item.hierarchy.children)
        random_.shuffle(children)
        return item.hierarchy.reorder_cmd(children)

    def write():
        doubles = [name for name in item.attributes if item.attributes[name].type == "Double"]
        return item.attributes[doubles[0]].set_cmd(random_.choice([1.0, 2.0, 7.0])) if doubles else None

    def move():
        return random_.choice([item.transform3d.translate_cmd, item.transform3d.rotate_cmd,
                               item.transform3d.scale_cmd])(1, random_.random(), 3) if item.transform3d else None

    return random_.choice([
        reorder, write, write, move, move, item.operations.duplicate_item_cmd, item.operations.delete_item_cmd,
        lambda: item.operations.rename_item_cmd(random_.choice(["box", "1 x", "\u00fc", "looks"])),
        lambda: item.hierarchy.create_child_cmd(random_.choice(["Cube", "Xform", "over", "prim"]), "new"),
        lambda: item.object3d and item.object3d.set_visibility_cmd(random_.random() < 0.5),
        lambda: kiv.ContextOps.of(item).do_op_cmd(["deactivate"]),
        lambda: None if other.path.is_at_or_below(item.path) else other.hierarchy.insert_child_cmd(item)])()


@pytest.mark.parametrize("in_session", [False, True])
def test_undo_and_redo_restore_the_text_of_the_layer(shop, in_session):
    _, stage = shop
    history = kiv.UndoableCommandMgr.instance()
    if in_session:
        stage.edit_layer = stage.usd_stage.GetSessionLayer()
    layers = [stage.usd_stage.GetRootLayer(), stage.usd_stage.GetSessionLayer()]
    texts, seed = [[layer.ExportToString() for layer in layers]], random.randrange(10000)
    random_ = random.Random(seed)

    def assert_text(index, doing):
        for layer, text in zip(layers, texts[index], strict=True):
            changed = difflib.unified_diff(text.split("\n"), layer.ExportToString().split("\n"), lineterm="")
            assert layer.ExportToString() == text, f"seed {seed}, {doing} {index}:\n" + "\n".join(changed)

    for _ in range(60):
        command = edit_of(stage, random_) if stage.usd_stage.GetPrimAtPath("/Shop") else None
        if command is not None:
            history.execute_cmd(command)
            texts.append([layer.ExportToString() for layer in layers])
    untouched = 0 if in_session else 1
    assert all(text[untouched] == texts[0][untouched] for text in texts)
    assert_same_places(stage)
    for index in reversed(range(len(texts) - 1)):
        assert history.undo()
        assert_text(index, "undo to")
    for index in range(1, len(texts)):
        assert history.redo()
        assert_text(index, "redo to")


def test_what_others_author_is_announced(shop):
    run_time, stage = shop
    real, told = stage.usd_stage, []
    box = item_at(stage, "/Shop/box")
    with kiv.Scene.instance().add_observer(told.append), kiv.Attributes.add_observer(told.append), \
            kiv.Object3d.add_observer(told.append), kiv.Transform3d.add_observer(box, told.append):
        UsdGeom.Cube(real.GetPrimAtPath("/Shop/box")).GetSizeAttr().Set(9.0)
        assert {(type(each).__name__, each.name) for each in told} == {("AttributeChanged", "size")}
        told.clear()
        UsdGeom.Imageable(real.GetPrimAtPath("/Shop/box")).MakeInvisible()
        assert {type(each).__name__ for each in told} == {"AttributeChanged", "VisibilityChanged"}
        told.clear()
        UsdGeom.Xformable(real.GetPrimAtPath("/Shop/box")).AddTranslateOp().Set(Gf.Vec3d(1, 0, 0))
        assert {type(each).__name__ for each in told} == {"Transform3dChanged"}
        told.clear()
        real.DefinePrim("/Shop/looks/brass", "Material")
        anew = [str(each.root.path) for each in told if isinstance(each, kiv.SubtreeInvalidate)]
        assert anew == ["/stage/Shop/looks"]
        told.clear()
        Usd.ModelAPI(real.GetPrimAtPath("/Shop")).SetKind("group")
        assert any(isinstance(each, kiv.AttributeChanged) and each.name == "usd:kind" for each in told)
        told.clear()
        kiv.UndoableCommandMgr.instance().execute_cmd(box.attributes["size"].set_cmd(3.0))
        assert [each.name for each in told] == ["size"]  # once, and not as someone else's
        told.clear()
        run_time.close_stage(stage)
        real.RemovePrim("/Shop/box")
        assert not told and not run_time.stages


def test_payloads_instances_and_inactive_prims(scene, tmp_path):
    part = Usd.Stage.CreateNew(str(tmp_path / "part.usda"))
    part.SetDefaultPrim(shop_of(part).GetPrimAtPath("/Shop"))
    part.Save()
    whole = Usd.Stage.CreateNew(str(tmp_path / "whole.usda"))
    whole.DefinePrim("/a", "Xform").GetPayloads().AddPayload("./part.usda")
    for name in ("/b", "/c"):
        prim = whole.DefinePrim(name, "Xform")
        prim.GetReferences().AddReference("./part.usda")
        prim.SetInstanceable(True)
    looks = whole.DefinePrim("/d", "Xform").GetVariantSets().AddVariantSet("look")
    for name in ("red", "blue"):
        looks.AddVariant(name)
        looks.SetVariantSelection(name)
        with looks.GetVariantEditContext():
            whole.DefinePrim(f"/d/{name}", "Scope")
    whole.Save()
    history = kiv.UndoableCommandMgr.instance()
    with usd.RunTime(tmp_path / "whole.usda") as run_time:
        stage = run_time.stages[0]
        text = stage.edit_layer.ExportToString()
        assert str(stage.path) == "/whole"
        a, b, _, d = kiv.Hierarchy.create_item(stage.path).children
        assert not a.children and not a.attributes["usd:loaded"].value
        assert a.attributes["usd:payloads"].value == "@./part.usda@"
        history.execute_cmd(run_time.load_cmd(a))
        assert len(a.children) == 6 and a.attributes["usd:loaded"].value
        assert a.children[0].operations.delete_item_cmd() is None  # it comes from the other layer
        history.execute_cmd(a.children[0].attributes["size"].set_cmd(6.0))
        assert_same_places(stage)
        inside = b.children[0]
        assert b.attributes["usd:instance"].value == "instance" and b.attributes["usd:references"].value
        assert inside.attributes["usd:instance"].value == "in an instance"
        assert inside.attributes["size"].has_metadata("Locked")
        assert inside.operations.rename_item_cmd("x") is None and b.hierarchy.create_child_cmd("Cube", "x") is None
        menu = kiv.ContextOps.of(d)
        assert [entry.item for entry in menu.items(["variants", "look"]) if entry.checked] == ["blue"]
        history.execute_cmd(menu.do_op_cmd(["variants", "look", "red"]))
        assert [child.path.name for child in d.children] == ["red"]
        history.execute_cmd(menu.do_op_cmd(["deactivate"]))
        assert not d.children and not d.attributes["usd:active"].value
        look = kiv.UIInfoHandler.of(run_time.id)
        assert look.tree_view_cell_info(d, kiv.CellInfo("d")).font_strike_out
        assert "inactive" in look.tree_view_tooltip(d)
        while history.undo():
            pass
        assert not a.children and [child.path.name for child in d.children] == ["blue"]
        assert stage.edit_layer.ExportToString() == text
        history.clear()
    with pytest.raises(OSError, match="none.usda"):
        usd.RunTime(tmp_path / "none.usda")


def test_stages_follow_the_items_that_they_are_mounted_under(scene):
    set_ = scene.make("/world", "group", "set")
    history = kiv.UndoableCommandMgr.instance()
    with usd.RunTime(shop_of(Usd.Stage.CreateInMemory()), set_.path) as run_time:
        scene.set_gateway(set_.path, run_time.id)
        assert "ball" in [row.name for row in host.outline(set_)]
        stage = run_time.stages[0]
        box = item_at(stage, "/Shop/box")
        assert str(box.path).startswith("/world/set") and box.hierarchy.parent.path == stage.path / "Shop"
        history.execute_cmd(box.transform3d.translate_cmd(1, 1, 1))
        history.execute_cmd(set_.operations.rename_item_cmd("stock"))
        assert str(stage.path).startswith("/world/stock")
        assert_same_places(stage)
        told = []
        with kiv.Attributes.add_observer(told.append):
            UsdGeom.Cube(stage.usd_stage.GetPrimAtPath("/Shop/box")).GetSizeAttr().Set(9.0)
        assert {str(each.path) for each in told} == {str(stage.path / "Shop" / "box")}
        history.execute_cmd(kiv.Hierarchy.create_item("/world/stock").operations.delete_item_cmd())
        assert not stage.is_open and kiv.Hierarchy.create_item(stage.path / "Shop") is None
        history.undo()
        assert stage.is_open and item_at(stage, "/Shop/box")
        history.clear()


def test_the_run_time_keeps_the_contracts_and_the_commands_show_it(run_script, tmp_path):
    stage = Usd.Stage.CreateNew(str(tmp_path / "shop.usda"))
    shop_of(stage).Save()
    printed = run_script(f"""
        from kiv import conformance, usd
        from kiv.__main__ import main, opened
        options, file = conformance.Options(), {str(tmp_path / "shop.usda")!r}
        options.nb_steps = 10
        report = conformance.check(conformance.Candidate("shop", lambda: opened(file)), options)
        assert report.passed, report.text()
        assert main(["tree", "--paths", file]) == 0
        assert main(["check", "--only", "paths", file]) == 0
    """)
    assert "/world/shop,/shop/Shop/box/ball\n" in printed and "3 contracts held" in printed


def test_without_usd_the_package_says_what_is_missing(run_script):
    printed = run_script("""
        import sys
        sys.modules["pxr"] = None
        import kiv
        try:
            import kiv.usd
        except ImportError as error:
            print(error)
    """)
    assert "pip install 'kiv[usd]'" in printed


@pytest.mark.parametrize("suffix", [".usd", ".usda", ".usdc"])
def test_documents_mount_stages(history, tmp_path, suffix):
    document = pytest.importorskip("kiv.document")
    file, saved = tmp_path / f"shop{suffix}", str(tmp_path / "scene.json")
    authored = Usd.Stage.CreateNew(str(file))
    shop_of(authored).Save()
    del authored
    with usd.RunTime() as run_time, document.Workspace() as workspace:
        history.execute_cmd(workspace.mount_cmd(str(file), workspace.root))
        (mount,), (stage,) = workspace.mounts(), run_time.stages
        assert (mount.file, mount.run_time, mount.gateway) == (str(file), "usd", stage.gateway)
        names = [row.name for row in host.outline(workspace.root)]
        assert names[:3] == ["world", "shop", "shop"] and "ball" in names
        assert_same_places(stage)
        history.execute_cmd(item_at(stage, "/Shop/box").attributes["size"].set_cmd(7.0))
        document.save(workspace, saved)
        history.clear()
        document.open(workspace, saved)
        history.clear()
        assert [row.name for row in host.outline(workspace.root)] == names
        (stage,) = run_time.stages
        workspace.mount(str(file))
        (one, other) = (item_at(each, "/Shop/box").attributes["size"] for each in run_time.stages)
        history.execute_cmd(one.set_cmd(8.0))
        assert other.value == 8.0  # of the same layer
        with pytest.raises(RuntimeError, match="^Failed to open layer"):
            workspace.mount(str(tmp_path / f"none{suffix}"))
        history.clear()


def test_the_window_shows_stages_and_what_python_registers(tmp_path):
    pytest.importorskip("kiv._window", exc_type=ImportError)
    stage = Usd.Stage.CreateNew(str(tmp_path / "shop.usda"))
    shop_of(stage).Save()
    (tmp_path / "folder").mkdir()
    (tmp_path / "mine.py").write_text("""
import kiv
from kiv import memory

def scene():
    run_time = memory.RunTime("mine", "mine")
    return run_time, [run_time.model.root]
""")

    def window(*words):
        return subprocess.run([sys.executable, "-X", "dev", "-m", "kiv", "window", "--screenshot", "out.png", *words],
                              capture_output=True, text=True, check=False, cwd=tmp_path, timeout=300)

    shown = window("--camera", "/world/shop,/shop/Shop/camera", "shop.usda", "folder", "mine:scene")
    assert shown.returncode == 0 and (tmp_path / "out.png").read_bytes()[1:4] == b"PNG", shown.stderr
    failed = window("none.usda")
    assert failed.returncode == 1 and "none.usda: Failed to open layer" in failed.stderr
    assert window("--nonsense").returncode == 2


def test_the_shell_mounts_edits_and_saves_stages(tmp_path):
    pytest.importorskip("kiv._program", exc_type=ImportError)
    stage = Usd.Stage.CreateNew(str(tmp_path / "shop.usda"))
    shop_of(stage).Save()

    def shell(source, *lines, code=0):
        ended = subprocess.run([sys.executable, "-m", "kiv", "shell", source, "-c", "\n".join(lines)], check=False,
                               capture_output=True, text=True, cwd=tmp_path, timeout=300)
        assert ended.returncode == code, ended.stderr
        return ended.stdout + ended.stderr

    first = shell("shop.usda", "make group set", "mount shop.usda set/other", "save scene.json")
    assert "/world/set/other" in first
    assert "ball  Sphere" in shell("scene.json", "tree set")
    assert "none.usd: Failed to open layer" in shell("shop.usda", "mount none.usd", code=1)
