"""Commands for run-times in Python: `python -m kiv tree|shell|check|window SOURCE`.

A source is a folder, a scene file, a document, or `module:function`: a function that returns an object, which is
closed by its `close()`, and the paths of its roots.
"""

import argparse
import contextlib
import importlib
import os
import re
import signal
import sys
from typing import TYPE_CHECKING

import kiv
from kiv import conformance, host

if TYPE_CHECKING:
    from kiv._scene import Scene


def _called(text: str) -> tuple[object, list[kiv.Path]]:
    module, _, function = text.partition(":")
    sys.path.insert(0, os.getcwd())
    make = getattr(importlib.import_module(module), function, None)
    if make is None:
        raise ValueError(f"no function '{function}' in the module '{module}'")
    made, roots = make()
    return made, [kiv.Path(root) if isinstance(root, str) else root for root in roots]


def opened(source: str) -> tuple[object, list[kiv.Path]]:
    """What holds the scene of a source, to be closed, and the paths of its roots."""
    if os.path.isdir(source):
        from kiv import files

        folder = files.RunTime(source)
        return folder, [folder.root.path]
    if ":" in source and not os.path.exists(source):
        return _called(source)
    if is_stage(source):
        from kiv import usd

        stages = usd.RunTime(source)
        return stages, [stage.path for stage in stages.stages]
    return as_scene(source)


def item_at(path: kiv.Path) -> kiv.SceneItem:
    """The item at the path, which must exist."""
    item = kiv.Hierarchy.create_item(path)
    if item is None:
        raise ValueError(f"no such item '{path}'")
    return item


def is_stage(source: str) -> bool:
    """Whether the file is one of OpenUSD."""
    return source.lower().endswith((".usd", ".usda", ".usdc", ".usdz"))


def as_scene(*files: str) -> tuple["Scene", list[kiv.Path]]:
    """Documents and scene files under one root, which can be saved as a document."""
    from kiv._scene import Scene

    scene = Scene(list(files))
    return scene, [scene.root]


def install() -> host.UndoHistory:
    """Installs what hosts have: a scene, a selection and an undo history, which it returns."""
    history = host.UndoHistory()
    kiv.Scene.initialize_instance(host.HostScene())
    kiv.UndoableCommandMgr.initialize_instance(history)
    kiv.GlobalSelection.initialize_instance(kiv.ObservableSelection())
    return history


def tree(source: str) -> int:
    """Prints the items of the source, a line each."""
    install()
    held, roots = opened(source)
    for root in roots:
        for row in host.outline(item_at(root)):
            print(f"{'  ' * row.depth}{row.name}  {row.node_type}")
    held.close()  # type: ignore[attr-defined]
    return 0


def check(source: str, options: conformance.Options, form: str) -> int:
    """Checks the run-time of the source against the contracts. `form` is text, json or junit."""
    report = conformance.check(conformance.Candidate(source, lambda: opened(source)), options)
    print({"json": report.json, "junit": report.junit}.get(form, report.text)())
    return 0 if report.passed else 1


def window(words: list[str]) -> int:
    """Runs the window, whose options and files the words are; folders and `module:function` are shown beside them."""
    try:
        module = importlib.import_module("kiv._window")
    except ImportError as error:
        raise ImportError(f"the window needs Qt 6, and a package that was built with it ({error})") from error
    from kiv._scene import stages

    signal.signal(signal.SIGINT, signal.SIG_DFL)  # the window's loop does not look after Python's handlers
    with contextlib.ExitStack() as held:
        held.enter_context(stages())
        others = []
        for word in words:
            if os.path.isdir(word) or re.fullmatch(r"[\w.]+:\w+", word):
                held.callback(opened(word)[0].close)  # type: ignore[attr-defined]
            else:
                others.append(word)
        return int(module.run(["kiv window", *others]))


def main(arguments: list[str] | None = None) -> int:
    parser = argparse.ArgumentParser(prog="python -m kiv", description="Shows, edits and checks scenes.")
    commands = parser.add_subparsers(dest="command", required=True)
    for name, about in (("tree", "print the items"), ("shell", "browse and edit them by commands"),
                        ("check", "hold the run-time against its contracts")):
        command = commands.add_parser(name, help=about)
        command.add_argument("source", help="a folder, a scene file, a document, or module:function")
        if name == "check":
            command.add_argument("--seed", type=int, default=1)
            command.add_argument("--steps", type=int, default=100)
            command.add_argument("--only", action="append", default=[], metavar="CONTRACT")
            form = command.add_mutually_exclusive_group()
            form.add_argument("--json", action="store_const", dest="form", const="json", default="text")
            form.add_argument("--junit", action="store_const", dest="form", const="junit")
    commands.add_parser("window", help="show them in a window; -h lists its options", add_help=False)
    given, words = parser.parse_known_args(arguments)
    if words and given.command != "window":
        parser.error(f"unrecognized arguments: {' '.join(words)}")
    try:
        if given.command == "window":
            return window(words)
        if given.command == "tree":
            return tree(given.source)
        if given.command == "check":
            options = conformance.Options()
            options.seed, options.nb_steps, options.only = given.seed, given.steps, given.only
            return check(given.source, options, given.form)
        from kiv import _shell

        history = install()
        held, roots = (as_scene if is_stage(given.source) else opened)(given.source)
        return _shell.run(history, held, item_at(roots[0]))
    except (kiv.Error, OSError, ImportError, ValueError) as error:
        print(f"kiv: {error}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
