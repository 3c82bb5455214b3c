"""The shell of `python -m kiv shell`: browses and edits a scene by commands, each of which can be undone."""

from __future__ import annotations

import cmd
import shlex
import sys
from collections.abc import Callable

import kiv
from kiv import host

try:
    from kiv import document
    from kiv._scene import Scene
except ImportError:  # built without scene files
    Scene = type(None)  # type: ignore[misc, assignment]


class Shell(cmd.Cmd):
    """Commands on the items below a root. `help` lists them."""

    def __init__(self, root: kiv.SceneItem, history: host.UndoHistory, scene: Scene | None) -> None:
        super().__init__()
        self._scene = scene
        self._root = root
        self._here = root
        self._history = history
        self._say_where()

    def onecmd(self, line: str) -> bool:
        try:
            return super().onecmd(line)
        except (kiv.Error, ValueError, RuntimeError, TypeError, LookupError, OSError) as error:
            print(f"error: {error}")
            return False

    def emptyline(self) -> bool:
        return False

    def default(self, line: str) -> None:
        if line == "EOF":
            raise SystemExit(0)
        words = [name[3:] for name in self.get_names() if name.startswith("do_")]
        raise ValueError(f"unknown command '{line.split()[0]}'{host.suggestion(line.split()[0], words)}")

    def do_ls(self, text: str) -> None:
        """ls [ITEM]: the children of an item."""
        for child in self._item(text).children:
            print(f"{child.path.name}  {child.node_type}")

    def do_tree(self, text: str) -> None:
        """tree [ITEM]: everything below an item."""
        for row in host.outline(self._item(text)):
            print(f"{'  ' * row.depth}{row.name}  {row.node_type}")

    def do_cd(self, text: str) -> None:
        """cd [ITEM]: goes to an item."""
        self._here = self._item(text) if text else self._root
        self._say_where()

    def do_show(self, text: str) -> None:
        """show [ITEM]: the type and the attributes of an item."""
        item = self._item(text)
        print(f"{item.path}  {item.node_type}")
        try:
            attributes = item.attributes
        except kiv.InvalidRunTimeId:
            return
        for name in attributes or ():
            print(f"  {name} = {attributes[name]}")

    def do_set(self, text: str) -> None:
        """set ITEM NAME VALUE: sets an attribute."""
        where, name, value = self._words(text, 3)
        attribute = self._item(where).attributes[name]
        self._run(attribute.set_cmd(kiv.value_from_text(attribute.type, value)))

    def do_make(self, text: str) -> None:
        """make TYPE NAME: makes a child of the current item."""
        node_type, name = self._words(text, 2)
        self._run(self._here.hierarchy.create_child_cmd(node_type, name))

    def do_rename(self, text: str) -> None:
        """rename ITEM NAME: gives an item another name."""
        where, name = self._words(text, 2)
        self._run(self._item(where).operations.rename_item_cmd(name))

    def do_move(self, text: str) -> None:
        """move ITEM PARENT: puts an item under another one."""
        where, parent = self._words(text, 2)
        self._run(self._item(parent).hierarchy.insert_child_cmd(self._item(where), None))

    def do_rm(self, text: str) -> None:
        """rm ITEM: deletes an item."""
        (where,) = self._words(text, 1)
        self._run(self._item(where).operations.delete_item_cmd())

    def do_mount(self, text: str) -> None:
        """mount FILE: shows a scene file under a new item below the current one."""
        (file,) = self._words(text, 1)
        self._run(self._workspace.mount_cmd(file, self._here))

    def do_save(self, text: str) -> None:
        """save FILE: saves everything as a document, in which scene files stay files."""
        (file,) = self._words(text, 1)
        document.save(self._workspace, file)
        self._history.set_clean()

    def do_undo(self, _: str) -> None:
        """undo: takes the last edit back."""
        self._step(self._history.undo, "nothing to undo")

    def do_redo(self, _: str) -> None:
        """redo: does it again."""
        self._step(self._history.redo, "nothing to redo")

    def do_quit(self, _: str) -> bool:
        """quit: ends the shell."""
        return True

    @property
    def _workspace(self) -> document.Workspace:
        if self._scene is None:
            raise ValueError("only scene files and documents can be saved and mounted")
        return self._scene.workspace

    def _item(self, text: str) -> kiv.SceneItem:
        return host.require_item(self._root, self._here, text) if text else self._here

    @staticmethod
    def _words(text: str, count: int) -> list[str]:
        words = shlex.split(text)
        if len(words) != count:
            raise ValueError(f"expected {count} words")
        return words

    def _run(self, command: kiv.UndoableCommand | None) -> None:
        if command is None:
            raise ValueError("the run-time refuses")
        self._history.execute_cmd(command)
        print(command.command_string)

    @staticmethod
    def _step(step: Callable[[], bool], refusal: str) -> None:
        if not step():
            raise ValueError(refusal)

    def _say_where(self) -> None:
        self.prompt = f"{self._here.path}> " if sys.stdin.isatty() else ""


def run(history: host.UndoHistory, held: object, root: kiv.SceneItem) -> int:
    """Runs the shell on the items below a root, until the input ends; closes `held`."""
    try:
        Shell(root, history, held if isinstance(held, Scene) else None).cmdloop()
    except SystemExit:
        pass
    history.clear()
    held.close()  # type: ignore[attr-defined]
    return 0
