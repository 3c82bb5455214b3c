#!/usr/bin/env python3
"""Writes the stub of a module as nanobind does, and says what nanobind cannot know.

stubs.py MODULE OUTPUT

The stub lies in the package. What nanobind cannot know is what is converted where it is an argument (text to a path,
numbers to a vector), that anything may be compared, and what some arguments of any type are.
"""

import re
import sys
from pathlib import Path

from nanobind.stubgen import main as stubgen

SEQUENCE = "collections.abc.Sequence"
ROWS = f"{SEQUENCE}[{SEQUENCE}[float]]"
ACCEPTED = {
    "Path": "str", "PathComponent": "str", "Value": "bool | int | float | str",
    "EditTransform3dHint": "EditTransform3dHint.Type",
    **dict.fromkeys(["Int3"], f"{SEQUENCE}[int]"),
    **dict.fromkeys(["Float2", "Float3", "Float4", "Vector3d", "Color3f", "Color4f"], f"{SEQUENCE}[float]"),
    **dict.fromkeys(["Matrix3d", "Matrix4d"], ROWS),
}
ITERATED = {
    "Path": "str", "PathSegment": "str", "Attributes": "str", "Selection": "SceneItem", "Hierarchy": "SceneItem",
    "CompositeUndoableCommand": "UndoableCommand", "SceneCompositeNotification": "SceneCompositeNotification.Op",
    "SelectionCompositeNotification": "SelectionCompositeNotification.Op", "SceneTree": "SceneTree.Node",
}
TYPES = "|".join(ACCEPTED)


def accepted(match):
    """An argument of a type with what is converted to it."""
    name, space, kind, rest = match.groups()
    space = space or ""
    others = ACCEPTED[kind].replace("EditTransform3dHint.Type", f"{space}EditTransform3dHint.Type")
    return f"{name}: {space}{kind} | {others}{rest}"


def arguments(line, owner):
    """The line of a function of the class `owner` with its arguments widened; what it returns stays, unless it is an
    iterator. Functions that classes in Python override are given what they are declared with."""
    if not line.lstrip().startswith("def ") or "-> " not in line:
        return line
    head, arrow, result = line.rpartition(" -> ")
    result = re.sub(r"^Iterator\b(?!\[)", f"Iterator[{ITERATED.get(owner, 'typing.Any')}]", result)
    if owner != "Tree" and not owner.endswith("Handler"):
        head = re.sub(rf"(\w+): (kiv\.)?({TYPES})(?! \||\.|\w)((?: = )?)", accepted, head)
        head = re.sub(r"Sequence\[(kiv\.)?(Path|PathComponent)\]",
                      lambda match: f"Sequence[{match[1] or ''}{match[2]} | str]", head)
    if owner == "Tree" and " children(" in head:
        result = result.replace("list[Tree.Child]", f"{SEQUENCE}[Tree.Child | tuple[str, str]]")
    head = head.replace("= BadgePosition.", "= UIInfoHandler.BadgePosition.")
    head = head.replace("part: object | None", "part: typing.Any")
    if head.lstrip().startswith("def set_cmd(") and re.match("Attribute.", owner):
        result += "  # type: ignore[override]"
    head = re.sub(r"(def __(?:eq|ne)__\(self, \w+): [\w.]+", r"\1: object", head)
    head = re.sub(r": (Sequence|list)(?=[,) ])", r": \1[typing.Any]", head)
    result = re.sub(r"\btuple\b(?!\[)", "tuple[typing.Any, ...]", result)
    head = re.sub(r"\bCallable\b(?!\[)", "Callable[..., object]", head)
    head = re.sub(r"\*\*(\w+)(?=[,)])", r"**\1: typing.Any", head)
    head = re.sub(r"(?<!\*)\*(\w+)(?=[,)])", r"*\1: object", head)
    # Makers give None where an item has no such interface.
    head = re.sub(r"(Callable\[\[(?:kiv\.)?SceneItem\], )((?:kiv\.)?\w+)\]", r"\1\2 | None]", head)
    return head + arrow + result


def optional(text):
    """What a function may give instead of an object, by its docstring."""
    def widened(match):
        said = re.sub(r"\s+", " ", match[4])
        gives_none = re.search(r"(; None|, None|, or None|or None\.|[Rr]eturns None|^ ?None|\. None|otherwise None\.?) "
                               r"?(for|if(?! one of them)|unless|when|at|after|before|only|$)", said)
        return f"{match[1]}{match[2]} | None{match[3]}" if gives_none else match[0]

    # The makers of commands of the interfaces give None where the run-time refuses.
    text = re.sub(r"(?<=\n)( +def (?!copy_mount)\w+_cmd\(.*\) -> \w*Command)(?=:)", r"\1 | None", text)
    made = r"((?:kiv\.)?(?!(?:Observation|None|Any)\b)[A-Z][\w.]*)"
    return re.sub(rf'(-> ){made}(:\n\s+"""(.*?)""")', widened, text, flags=re.S)


def shortcuts(text):
    """The properties that are added to items once their types are known."""
    def as_property(match):
        return f"    @property\n    def {match[1]}(self) -> {match[2]}: ..."

    start = text.find("class SceneItem:")
    end = text.find("\nclass ", start + 1)
    inside = re.sub(r"(?:    @property\n)?(?:    @staticmethod\n)?    def (\w+)\(arg: SceneItem, /\) -> (\w[\w\[\]]*): "
                    r"\.\.\.", as_property, text[start:end])
    return text[:start] + inside + text[end:] if start >= 0 else text


def typed_run(text):
    """`Transaction.run` returns the command with the class that it has."""
    command = "kiv.UndoableCommand"
    ran = text.replace(f"def run(self, command: {command} | None) -> {command}:",
                       "def run(self, command: _Command | None) -> _Command:")
    if ran == text:
        return text
    variable = f'import typing\n\n_Command = typing.TypeVar("_Command", bound={command})\n'
    return re.sub(r"\n(?=\n(?:class|def|\w+:) )", "\n" + variable, ran, count=1)


def main():
    module, output = sys.argv[1:]
    sys.path.insert(0, str(Path(output).resolve().parent.parent))
    stubgen(["-q", "-m", module, "-o", output])
    with open(output, encoding="utf-8") as file:
        text = shortcuts(file.read())
    owner, inner, lines = "", "", []
    for line in text.split("\n"):
        if match := re.match(r"class (\w+)", line):
            owner, inner = match[1], match[1]
        elif match := re.match(r"    class (\w+)", line):
            inner = f"{owner}.{match[1]}"
        elif re.match(r"    \S", line):
            inner = owner
        lines.append(arguments(line, owner).replace("def __enter__(self) -> object", f"def __enter__(self) -> {inner}"))
    text = typed_run(optional("\n".join(lines)))
    for name in ("typing", "collections.abc"):
        if f"{name}." in text and not re.search(rf"^import {re.escape(name)}$", text, flags=re.M):
            text = f"import {name}\n" + text
    with open(output, "w", encoding="utf-8") as file:
        file.write(text)


if __name__ == "__main__":
    main()
