"""The program `kiv` in the interpreter: `python -m kiv COMMAND ...`, with run-times in Python.

Where the program takes a scene file, it also takes a folder, or `module:function`: a function that returns an object,
which is closed by its `close()`, and the paths of its roots.
"""

import contextlib
import importlib
import os
import re
import signal
import sys
import traceback
from types import ModuleType

import kiv

SUFFIXES = (".usd", ".usda", ".usdc", ".usdz")


def is_source(word: str) -> bool:
    """Whether the word is a folder or `module:function`."""
    return os.path.isdir(word) or (not os.path.exists(word) and bool(re.fullmatch(r"[\w.]+:\w+", word)))


def opened(source: str) -> tuple[object, list[kiv.Path]]:
    """What holds the run-time of a source or of a scene file, to be closed, and the paths of its roots."""
    if os.path.isdir(source):
        from kiv import files

        folder = files.RunTime(source)
        return folder, [folder.root.path]
    if is_source(source):
        return _called(source)
    if source.lower().endswith(SUFFIXES):
        from kiv import usd

        stages = usd.RunTime(source)
        return stages, [stage.path for stage in stages.stages]
    from kiv import document

    workspace = document.Workspace()
    workspace.mount(source)
    return workspace, [workspace.root.path]


def _called(text: str) -> tuple[object, list[kiv.Path]]:
    module, _, function = text.partition(":")
    sys.path.insert(0, os.getcwd())
    make = getattr(importlib.import_module(module), function, None)
    if make is None:
        raise ValueError(f"no function '{function}' in the module '{module}'")
    returned = make()
    try:
        made, roots = returned
        return made, [kiv.Path(root) if isinstance(root, str) else root for root in roots]
    except (TypeError, ValueError) as error:
        raise ValueError(f"the function must return an object and the paths of its roots ({error})") from error


class _Process:
    """What the program has from the interpreter."""

    def __init__(self, words: list[str]) -> None:
        self._held = contextlib.ExitStack()
        self._is_checking = "check" in words  # then, nothing else may be registered
        if not any(word.startswith("--python") or is_source(word) for word in words):
            self._show_stages()

    def open(self, source: str) -> tuple[object, list[kiv.Path]]:
        """As `opened`, with the traceback of what is a fault of the function."""
        try:
            made = opened(source)
        except (kiv.Error, OSError, ModuleNotFoundError, ValueError):
            raise
        except Exception as error:
            traceback.print_exc()
            raise ValueError(f"{type(error).__name__}: {error}") from error
        self._show_stages()
        return made

    def is_source(self, word: str) -> bool:
        """Whether `open` opens what stands in the place of a scene file."""
        if not is_source(word):
            self._show_stages()
        return is_source(word)

    def show_window(self, words: list[str]) -> int:
        """Shows the window, whose options and files the words are; sources are shown beside them."""
        shown = _built("_window", "the window needs Qt 6, and a package that was built with it")
        for word in words:
            if is_source(word):
                self._held.callback(opened(word)[0].close)  # type: ignore[attr-defined]
        self._show_stages()
        return int(shown.run(["kiv window", *(word for word in words if not is_source(word))]))

    def close(self) -> None:
        """Takes the run-times back."""
        self._held.close()

    def _show_stages(self) -> None:
        """Lets scenes mount stages, where OpenUSD is installed and no function does that by itself."""
        if not self._is_checking:
            with contextlib.suppress(ImportError, kiv.InvalidRunTimeName):
                from kiv import usd

                self._held.enter_context(usd.RunTime())


def _built(name: str, advice: str) -> ModuleType:
    try:
        return importlib.import_module(f"kiv.{name}")
    except ImportError as error:
        raise ImportError(f"{advice} ({error})") from error


def main(arguments: list[str] | None = None) -> int:
    """Runs the program with the arguments, by default those of the command line. Returns the exit status."""
    words = sys.argv[1:] if arguments is None else arguments
    signal.signal(signal.SIGINT, signal.SIG_DFL)  # the program does not look after Python's handlers
    try:
        program = _built("_program", "the commands need a package that was built with CLI11")
        with contextlib.closing(_Process(words)) as process:
            return int(program.run(["kiv", *words], process.open, process.is_source, process.show_window))
    except (kiv.Error, OSError, ImportError, ValueError) as error:
        print(f"kiv: {error}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
