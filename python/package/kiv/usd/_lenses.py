"""Cameras and lights, whose properties are attributes of their prims."""

from collections.abc import Callable
from typing import Any, ClassVar

from pxr import UsdGeom, UsdLux

import kiv
from kiv import kit
from kiv.usd._attributes import Tables, is_animated, plain, value_of
from kiv.usd._stage import is_light
from kiv.usd._tree import Tree

Values = dict[str, Any]
Command = Any  # a kiv.UndoableCommand; None refuses


class _Attributes:
    """Reads and writes attributes of the prim of an item."""

    def __init__(self, item: kiv.SceneItem, tree: Tree, tables: Tables) -> None:
        self.path = item.path
        self.tree = tree
        self._tables = tables

    def read(self, name: str, otherwise: Any = None) -> Any:
        """The value of the attribute, in plain Python; `otherwise` if there is none."""
        found = self.tree.found(self.path)
        attribute = found[1].GetAttribute(name) if found else None
        return plain(value_of(found[0], attribute)) if found and attribute else otherwise

    def write_cmd(self, text: str, *names: str, values: Callable[[], Values]) -> kiv.UndoableCommand | None:
        """A command that sets these attributes to what `values` gives when it runs; None if one cannot be set."""
        found = self.tree.found(self.path)
        if found is None or found[1].IsInstanceProxy():
            return None
        if any(not found[1].GetAttribute(name) or is_animated(found[1].GetAttribute(name)) for name in names):
            return None
        before: Values = {}

        def write(all_: Values) -> None:
            table = self._tables.table(self.path)
            if table is None:
                raise ValueError(f"no such item '{self.path}'")
            for name, value in all_.items():
                table.set_value(self.path, name, value)

        def redo() -> None:
            new = values()
            before.update({name: self.read(name) for name in new})
            write(new)

        return kit.command(self.path.run_time_id, text, redo, lambda: write(before))


class Camera(kit.CameraBase):
    """A `UsdGeom.Camera`. Its apertures are tenths of a scene unit, which is what millimetres of a lens camera mean;
    those of an orthographic camera are given in scene units."""

    FLOATS: ClassVar[dict[str, str]] = {
        "horizontal_aperture": "horizontalAperture", "vertical_aperture": "verticalAperture",
        "horizontal_aperture_offset": "horizontalApertureOffset",
        "vertical_aperture_offset": "verticalApertureOffset", "focal_length": "focalLength", "f_stop": "fStop",
        "focus_distance": "focusDistance"}

    def __init__(self, item: kiv.SceneItem, tree: Tree, tables: Tables) -> None:
        super().__init__(item)
        self.data = _Attributes(item, tree, tables)

    def scale_of(self, name: str) -> float:
        """What one unit of the property is in the attribute."""
        parallel = self.data.read("projection") == UsdGeom.Tokens.orthographic
        return 10.0 if parallel and "aperture" in name else 1.0

    def near_clip_plane_cmd(self, value: float) -> Command:
        return self.data.write_cmd("Set near clip plane", "clippingRange", values=lambda: {
            "clippingRange": (value, self.data.read("clippingRange")[1])})

    def far_clip_plane_cmd(self, value: float) -> Command:
        return self.data.write_cmd("Set far clip plane", "clippingRange", values=lambda: {
            "clippingRange": (self.data.read("clippingRange")[0], value)})

    def projection_cmd(self, value: kiv.Camera.Projection) -> Command:
        parallel = value == kiv.Camera.Projection.ORTHOGRAPHIC
        token = UsdGeom.Tokens.orthographic if parallel else UsdGeom.Tokens.perspective
        return self.data.write_cmd("Set projection", "projection", values=lambda: {"projection": token})


class _Sphere(kiv.Light.SphereInterface):
    def __init__(self, data: _Attributes) -> None:
        super().__init__()
        self.data = data

    def sphere_props_cmd(self, radius: float, as_point: bool) -> Command:
        return self.data.write_cmd("Set sphere", "inputs:radius", "treatAsPoint", values=lambda: {
            "inputs:radius": radius, "treatAsPoint": as_point})


class _Cone(kiv.Light.ConeInterface):
    """USD's angle is that from the axis to where the light ends; its softness is the part of it that fades."""

    def __init__(self, data: _Attributes) -> None:
        super().__init__()
        self.data = data

    def cone_props_cmd(self, cone_angle: float, penumbra_angle: float, dropoff: float) -> Command:
        end = cone_angle / 2 + penumbra_angle
        names = ("inputs:shaping:cone:angle", "inputs:shaping:cone:softness", "inputs:shaping:focus")
        all_ = dict(zip(names, (end, penumbra_angle / end if end else 0.0, dropoff), strict=True))
        return self.data.write_cmd("Set cone", *names, values=lambda: all_)


class _Directional(kiv.Light.DirectionalInterface):
    def __init__(self, data: _Attributes) -> None:
        super().__init__()
        self.data = data

    def angle_cmd(self, value: float) -> Command:
        return self.data.write_cmd("Set angle", "inputs:angle", values=lambda: {"inputs:angle": value})


class _Area(kiv.Light.AreaInterface):
    def __init__(self, data: _Attributes) -> None:
        super().__init__()
        self.data = data

    def normalize_cmd(self, value: bool) -> Command:
        return self.data.write_cmd("Set normalize", "inputs:normalize", values=lambda: {"inputs:normalize": value})


class Light(kit.LightBase):
    """A light of UsdLux. Its intensity is that of USD times two to the power of the exposure; its colour is that of
    USD, times that of the colour temperature where that is enabled, and then cannot be set."""

    def __init__(self, item: kiv.SceneItem, tree: Tree, tables: Tables) -> None:
        super().__init__(item)
        self.data = _Attributes(item, tree, tables)

    def intensity_cmd(self, value: float) -> Command:
        return self.data.write_cmd("Set intensity", "inputs:intensity", values=lambda: {
            "inputs:intensity": value / self.exposure_factor()})

    def exposure_factor(self) -> float:
        return float(2.0 ** self.data.read("inputs:exposure", 0.0))

    def color_cmd(self, r: float, g: float, b: float) -> Command:
        if self.data.read("inputs:enableColorTemperature"):
            return None
        return self.data.write_cmd("Set colour", "inputs:color", values=lambda: {"inputs:color": (r, g, b)})

    def shadow_color_cmd(self, r: float, g: float, b: float) -> Command:
        name = "inputs:shadow:color"
        return self.data.write_cmd("Set shadow colour", name, values=lambda: {name: (r, g, b)})

    def directional_interface_impl(self) -> kiv.Light.DirectionalInterface:
        return _Directional(self.data)

    def sphere_interface_impl(self) -> kiv.Light.SphereInterface:
        return _Sphere(self.data)

    def cone_interface_impl(self) -> kiv.Light.ConeInterface:
        return _Cone(self.data)

    def area_interface_impl(self) -> kiv.Light.AreaInterface:
        return _Area(self.data)


def _run(command: kiv.UndoableCommand | None) -> None:
    if command is not None:
        command.execute()


def _give(owner: type, noun: str, get: Callable[[Any], Any], spread: bool = False) -> None:
    """Gives a class the property, whose setter runs the command of the class."""

    def put(self: Any, value: Any) -> None:
        make = getattr(self, f"{noun}_cmd")
        _run(make(*value) if spread else make(value))

    setattr(owner, noun, property(get, put))


def _give_value(owner: type, noun: str, name: str, otherwise: Any) -> None:
    """Gives a class the property and the command that are those of an attribute."""

    def get(self: Any) -> Any:
        return self.data.read(name, otherwise)

    def make(self: Any, value: Any) -> Any:
        return self.data.write_cmd(f"Set {noun.replace('_', ' ')}", name, values=lambda: {name: value})

    _give(owner, noun, get)
    setattr(owner, f"{noun}_cmd", make)


def _give_scaled(noun: str, name: str) -> None:
    def get(self: Camera) -> Any:
        return self.data.read(name, 0.0) / self.scale_of(noun)

    def make(self: Camera, value: float) -> Any:
        text = f"Set {noun.replace('_', ' ')}"
        return self.data.write_cmd(text, name, values=lambda: {name: value * self.scale_of(noun)})

    _give(Camera, noun, get)
    setattr(Camera, f"{noun}_cmd", make)


def _projection(self: Camera) -> kiv.Camera.Projection:
    parallel = self.data.read("projection") == UsdGeom.Tokens.orthographic
    return kiv.Camera.Projection.ORTHOGRAPHIC if parallel else kiv.Camera.Projection.PERSPECTIVE


def _light_type(self: Light) -> kiv.Light.Type:
    found = self.data.tree.found(self.data.path)
    prim = found[1] if found else None
    if not prim:
        return kiv.Light.Type.OTHER
    if prim.IsA(UsdLux.DistantLight):
        return kiv.Light.Type.DIRECTIONAL
    if prim.IsA(UsdLux.SphereLight):
        return kiv.Light.Type.SPOT if prim.HasAPI(UsdLux.ShapingAPI) else kiv.Light.Type.POINT
    areas = (UsdLux.RectLight, UsdLux.DiskLight, UsdLux.CylinderLight, UsdLux.PortalLight)
    return kiv.Light.Type.AREA if any(prim.IsA(each) for each in areas) else kiv.Light.Type.OTHER


def _light_color(self: Light) -> kiv.Color3f:
    color = self.data.read("inputs:color", (1.0, 1.0, 1.0))
    if self.data.read("inputs:enableColorTemperature"):
        warm = UsdLux.BlackbodyTemperatureAsRgb(self.data.read("inputs:colorTemperature"))
        color = [one * other for one, other in zip(color, warm, strict=True)]
    return kiv.Color3f(color)


def _cone_props(self: _Cone) -> kiv.Light.ConeProps:
    end = self.data.read("inputs:shaping:cone:angle", 90.0)
    softness = self.data.read("inputs:shaping:cone:softness", 0.0)
    return kiv.Light.ConeProps(2 * end * (1 - softness), end * softness, self.data.read("inputs:shaping:focus", 0.0))


for _noun, _name in Camera.FLOATS.items():
    _give_scaled(_noun, _name)
_give(Camera, "near_clip_plane", lambda self: self.data.read("clippingRange", (1.0, 1e6))[0])
_give(Camera, "far_clip_plane", lambda self: self.data.read("clippingRange", (1.0, 1e6))[1])
_give(Camera, "projection", _projection)
_give(Light, "intensity", lambda self: self.data.read("inputs:intensity", 1.0) * self.exposure_factor())
_give(Light, "color", _light_color, spread=True)
_give(Light, "shadow_color", lambda self: kiv.Color3f(self.data.read("inputs:shadow:color", (0.0, 0.0, 0.0))),
      spread=True)
_give_value(Light, "diffuse", "inputs:diffuse", 1.0)
_give_value(Light, "specular", "inputs:specular", 1.0)
_give_value(Light, "shadow_enable", "inputs:shadow:enable", True)
setattr(Light, "type", property(_light_type))  # noqa: B010 - the class has it as a property with a setter
_give(_Directional, "angle", lambda self: self.data.read("inputs:angle", 0.0))
_give(_Area, "normalize", lambda self: self.data.read("inputs:normalize", False))
setattr(_Sphere, "sphere_props", property(lambda self: kiv.Light.SphereProps(  # noqa: B010
    self.data.read("inputs:radius", 0.0), self.data.read("treatAsPoint", False))))
setattr(_Cone, "cone_props", property(_cone_props))  # noqa: B010


def camera(item: kiv.SceneItem, tree: Tree, tables: Tables) -> Camera | None:
    """The camera of an item; None if its prim is none."""
    found = tree.found(item.path)
    return Camera(item, tree, tables) if found and found[1].IsA(UsdGeom.Camera) else None


def light(item: kiv.SceneItem, tree: Tree, tables: Tables) -> Light | None:
    """The light of an item; None if its prim is none."""
    found = tree.found(item.path)
    return Light(item, tree, tables) if found and is_light(found[1]) else None
