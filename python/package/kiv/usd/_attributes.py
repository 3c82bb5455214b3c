"""Properties of prims as attributes, each with its type and its definition."""

from collections.abc import Callable, Sequence
from dataclasses import dataclass
from typing import Any

from pxr import Gf, Sdf, Usd

import kiv
from kiv import kit
from kiv.usd._stage import Stage, also_notified
from kiv.usd._tree import Tree

_COLORS = {"GfVec3f": kiv.Attribute.COLOR_FLOAT3, "GfVec4f": kiv.Attribute.COLOR_FLOAT4}
_TYPES = {
    "bool": kiv.Attribute.BOOL, "int": kiv.Attribute.INT, "float": kiv.Attribute.FLOAT,
    "double": kiv.Attribute.DOUBLE, "string": kiv.Attribute.STRING, "std::string": kiv.Attribute.STRING,
    "TfToken": kiv.Attribute.STRING,
    "SdfAssetPath": kiv.Attribute.FILENAME, "GfVec2f": kiv.Attribute.FLOAT2, "GfVec3f": kiv.Attribute.FLOAT3,
    "GfVec4f": kiv.Attribute.FLOAT4, "GfVec3d": kiv.Attribute.DOUBLE3, "GfVec3i": kiv.Attribute.INT3,
    "GfMatrix3d": kiv.Attribute.MATRIX3D, "GfMatrix4d": kiv.Attribute.MATRIX4D}
_CLASSES: dict[str, Callable[..., Any]] = {
    "SdfAssetPath": Sdf.AssetPath, "GfVec2f": Gf.Vec2f, "GfVec3f": Gf.Vec3f, "GfVec4f": Gf.Vec4f,
    "GfVec3d": Gf.Vec3d, "GfVec3i": Gf.Vec3i, "GfMatrix3d": Gf.Matrix3d, "GfMatrix4d": Gf.Matrix4d}


def plain(value: Any) -> Any:
    """A value of USD as plain Python."""
    if isinstance(value, Sdf.AssetPath):
        return value.path
    if isinstance(value, (Gf.Matrix3d, Gf.Matrix4d)):
        return [list(row) for row in value]
    return tuple(value) if hasattr(value, "dimension") else value


def _hashable(value: Any) -> Any:
    return tuple(_hashable(each) for each in value) if isinstance(value, list) else value


def native(value: Any, cpp_type: str) -> Any:
    """A value of an attribute as USD has it."""
    make = _CLASSES.get(cpp_type)
    if make is None:
        return str(value) if cpp_type == "TfToken" else value
    if make is Sdf.AssetPath:
        return Sdf.AssetPath(str(value))
    return make(*(number for row in value for number in row)) if "Matrix" in cpp_type else make(*value)


def enumeration(attribute: Usd.Attribute) -> list[str]:
    """The tokens that the attribute may have; none if it may have any."""
    allowed = [str(token) for token in attribute.GetMetadata("allowedTokens") or ()]
    return allowed if attribute.Get() in allowed else []


def kiv_type(attribute: Usd.Attribute) -> str:
    """The type of an attribute: generic if it has no value that can be shown, such as an array."""
    type_name = attribute.GetTypeName()
    if enumeration(attribute):
        return kiv.Attribute.ENUM_STRING
    cpp = type_name.cppTypeName
    if type_name.isArray:
        return kiv.Attribute.GENERIC
    if type_name.role == "Color" and cpp in _COLORS:
        return _COLORS[cpp]
    return _TYPES.get(cpp, kiv.Attribute.GENERIC)


def value_of(stage: Stage, attribute: Usd.Attribute) -> Any:
    """The value at the stage's time; if there is none, the default of the type."""
    value = attribute.Get(stage.time)
    return attribute.GetTypeName().defaultValue if value is None else value


def is_animated(attribute: Usd.Attribute) -> bool:
    """Whether the value comes from time samples, which edits leave alone."""
    return attribute.GetNumTimeSamples() > 0 or bool(attribute.ValueMightBeTimeVarying())


def set_value(stage: Stage, prim: Usd.Prim, name: str, value: Any) -> None:
    """Authors the default value in the layer that is edited."""
    attribute = prim.GetAttribute(name)
    if is_animated(attribute):
        raise ValueError(f"'{name}' is animated")
    made = native(value, attribute.GetTypeName().cppTypeName)

    def author() -> None:
        attribute.Set(made)

    with stage.editing(prim.GetPath()):
        stage.opinions.write(prim.GetPath(), name, value_of(stage, attribute), made, author)


# What USD says of a prim besides its properties.

Fact = Callable[[Usd.Prim], object]


def _listed(key: str) -> Fact:
    def text(prim: Usd.Prim) -> str:
        listed = prim.GetMetadata(key)
        return ", ".join(_arc(each) for each in listed.GetAppliedItems()) if listed else ""

    return text


def _arc(item: Any) -> str:
    if isinstance(item, Sdf.Path):
        return f"<{item}>"
    asset = f"@{item.assetPath}@" if item.assetPath else ""
    return asset + (f"<{item.primPath}>" if item.primPath else "")


def _variants(prim: Usd.Prim) -> str:
    sets = prim.GetVariantSets()
    return ", ".join(f"{name}={sets.GetVariantSelection(name)}" for name in sets.GetNames())


FACTS: dict[str, tuple[str, Fact]] = {
    "usd:active": (kiv.Attribute.BOOL, lambda prim: bool(prim.IsActive())),
    "usd:kind": (kiv.Attribute.STRING, lambda prim: str(prim.GetMetadata("kind") or "")),
    "usd:specifier": (kiv.Attribute.STRING, lambda prim: prim.GetSpecifier().displayName.lower()),
    "usd:loaded": (kiv.Attribute.BOOL, lambda prim: bool(prim.IsLoaded()) if prim.HasPayload() else None),
    "usd:instanceable": (kiv.Attribute.BOOL, lambda prim: True if prim.IsInstanceable() else None),
    "usd:instance": (kiv.Attribute.STRING, lambda prim: "instance" if prim.IsInstance() else
                     "in an instance" if prim.IsInstanceProxy() else None),
    "usd:references": (kiv.Attribute.STRING, _listed("references")),
    "usd:payloads": (kiv.Attribute.STRING, _listed("payload")),
    "usd:inherits": (kiv.Attribute.STRING, _listed("inheritPaths")),
    "usd:specializes": (kiv.Attribute.STRING, _listed("specializes")),
    "usd:variants": (kiv.Attribute.STRING, _variants),
    "usd:apiSchemas": (kiv.Attribute.STRING, lambda prim: ", ".join(prim.GetAppliedSchemas())),
}
_ALWAYS = ("usd:active", "usd:kind", "usd:specifier")


@dataclass(frozen=True)
class Row:
    """All that a row of a table is made of, so that prims with the same rows share a table."""

    name: str
    type: str
    is_locked: bool
    native_type: str = ""
    display_name: str = ""
    documentation: str = ""
    enum_values: tuple[str, ...] = ()
    default: Any = None
    notified: tuple[Callable[[kiv.Path], None], ...] = ()


class Tables:
    """The attribute tables of a run-time. Properties that make the transform are no attributes."""

    def __init__(self, tree: Tree) -> None:
        self._tree = tree
        self._tables: dict[tuple[Row, ...], kit.AttributeTable] = {}
        self._built_in: dict[tuple[object, ...], Row] = {}  # of attributes that no layer mentions

    def attributes(self, item: kiv.SceneItem) -> kiv.Attributes | None:
        """The attributes of a prim; None for a stage."""
        table = self.table(item.path)
        return table.attributes(item) if table else None

    def table(self, path: kiv.Path) -> kit.AttributeTable | None:
        """The table of the item at `path`."""
        found = self._tree.found(path)
        if found is None or found[1].IsPseudoRoot():
            return None
        stage, prim = found
        known = stage.tables.get(prim.GetPath())
        if known is not None:
            return known
        kind = (prim.GetTypeName(), tuple(prim.GetAppliedSchemas()), prim.IsInstanceProxy())
        rows = (*(self._built_in_row(kind, prim, attribute) for attribute in prim.GetAttributes()
                  if not attribute.GetName().startswith("xformOp")),
                *(Row(relationship.GetName(), kiv.Attribute.STRING, True, "rel")
                  for relationship in prim.GetRelationships()),
                *(Row(name, type_, True, "fact") for name, (type_, fact) in FACTS.items()
                  if name in _ALWAYS or fact(prim) not in ("", None)))
        table = self._tables.get(rows)
        if table is None:
            table = self._tables[rows] = self._made(rows)
        stage.tables[prim.GetPath()] = table
        return table

    def set_cmd(self, item: kiv.SceneItem, name: str, value: object) -> kiv.UndoableCommand | None:
        """A command that sets the attribute of that name; None if it cannot be set or there is none."""
        attributes = self.attributes(item)
        if attributes is None or name not in attributes or attributes[name].has_metadata(kiv.Attribute.LOCKED):
            return None
        return attributes[name].set_cmd(value)

    def _built_in_row(self, kind: tuple[object, ...], prim: Usd.Prim, attribute: Usd.Attribute) -> Row:
        """The row of the attribute, which is the same in all prims of a kind unless a layer mentions it."""
        if attribute.IsAuthored():
            return self._row(prim, attribute)
        key = (*kind, attribute.GetName())
        if key not in self._built_in:
            self._built_in[key] = self._row(prim, attribute)
        return self._built_in[key]

    @staticmethod
    def _row(prim: Usd.Prim, attribute: Usd.Attribute) -> Row:
        name, type_ = attribute.GetName(), kiv_type(attribute)
        locked = type_ == kiv.Attribute.GENERIC or bool(prim.IsInstanceProxy()) or is_animated(attribute)
        fallback = prim.GetPrimDefinition().GetAttributeFallbackValue(name)
        return Row(name, type_, locked, str(attribute.GetTypeName()), attribute.GetDisplayName(),
                   attribute.GetDocumentation(), tuple(enumeration(attribute)),
                   None if type_ == kiv.Attribute.GENERIC or fallback is None else _hashable(plain(fallback)),
                   tuple(also_notified(prim, name)))

    def _made(self, rows: Sequence[Row]) -> kit.AttributeTable:
        table = kit.AttributeTable()
        for row in rows:
            metadata = kit.Metadata()
            if row.documentation:
                metadata["documentation"] = kiv.Value(row.documentation)
            table.add(row.name, row.type, None if row.type == kiv.Attribute.GENERIC else self._get(row),
                      None if row.is_locked else self._set(row), display_name=row.display_name,
                      default_value=row.default, enum_values=row.enum_values,
                      native_type=row.native_type if row.type == kiv.Attribute.GENERIC else "",
                      metadata=metadata, also_notified=list(row.notified))
        return table

    def _get(self, row: Row) -> Callable[[kiv.Path], object]:
        def fact(path: kiv.Path) -> object:
            found = self._tree.found(path)
            value = FACTS[row.name][1](found[1]) if found else None
            return value if value is not None or found is None else False if row.type == kiv.Attribute.BOOL else ""

        def targets(path: kiv.Path) -> object:
            found = self._tree.found(path)
            relationship = found[1].GetRelationship(row.name) if found else None
            return " ".join(str(target) for target in relationship.GetTargets()) if relationship else None

        def value(path: kiv.Path) -> object:
            found = self._tree.found(path)
            attribute = found[1].GetAttribute(row.name) if found else None
            return plain(value_of(found[0], attribute)) if found and attribute else None

        return {"fact": fact, "rel": targets}.get(row.native_type, value)

    def _set(self, row: Row) -> Callable[[kiv.Path, Any], None]:
        def write(path: kiv.Path, value: Any) -> None:
            stage, prim = self._tree.required(path)
            set_value(stage, prim, row.name, value)

        return write
