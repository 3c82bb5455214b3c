"""A folder of the file system as a run-time.

Its items are the files and folders in it. They are renamed, moved, copied and deleted by commands that can be undone,
since what is deleted goes to a trash folder. Sizes and times of files are attributes.

    with kiv.files.RunTime("/projects/film") as files:
        for item in files.root.children:
            print(item.path.name, item.attributes["size"].value)
"""

import os
import shutil
import stat
import tempfile
from collections.abc import Iterable
from pathlib import Path

import kiv
from kiv import kit

FILE = "file"
FOLDER = "folder"
TRASH = ".trash"


class _Folder(kit.Tree):
    """What the kit asks of the tree of a folder; it makes the items and the commands of it."""

    def __init__(self, root: kiv.Path, folder: Path, trash: Path) -> None:
        super().__init__(root)
        self._folder = folder
        self._trash = trash
        self._orders: dict[int, list[str]] = {}  # the order of the children, by the inode of the folder

    def file(self, path: kiv.Path) -> Path:
        return self._folder.joinpath(*path.names[1:])

    def node_type(self, path: kiv.Path) -> str:
        if not self.covers(path) or any(name in ("", ".", "..") or "/" in name for name in path.names):
            return ""
        file = self.file(path)
        try:
            mode = file.lstat().st_mode
        except (OSError, ValueError):
            return ""
        if file == self._trash:
            return ""
        return FOLDER if stat.S_ISDIR(mode) else FILE

    def children(self, path: kiv.Path) -> list[kit.Tree.Child]:
        if self.node_type(path) != FOLDER:
            return []
        return [kit.Tree.Child(name, self.node_type(path / name)) for name in self._names(path)]

    def accepts(self, parent: kiv.Path, node_type: str) -> bool:
        return node_type in ("", FILE, FOLDER) and self.node_type(parent) == FOLDER

    def make(self, node_type: str) -> Path:
        part = self._place()
        if node_type == FOLDER:
            part.mkdir()
        else:
            part.touch()
        return part

    def copy(self, path: kiv.Path) -> Path:
        part = self._place()
        if self.node_type(path) == FOLDER:
            shutil.copytree(self.file(path), part, symlinks=True)
        else:
            shutil.copy2(self.file(path), part, follow_symlinks=False)
        return part

    def take(self, path: kiv.Path) -> Path:
        part = self._place()
        order = self._order(path.parent)
        self.file(path).rename(part)
        order.remove(path.name)
        return part

    def put(self, path: kiv.Path, part: Path, row: int) -> None:
        order = self._order(path.parent)
        part.rename(self.file(path))
        part.parent.rmdir()
        order.insert(row, path.name)

    def rename(self, path: kiv.Path, name: str) -> None:
        order = self._order(path.parent)
        self.file(path).rename(self.file(path.parent) / name)
        order[order.index(path.name)] = name

    def reorder(self, parent: kiv.Path, names: Iterable[str]) -> None:
        self._order(parent)[:] = names

    def _place(self) -> Path:
        """A place in the trash for one file or folder."""
        self._trash.mkdir(exist_ok=True)
        return Path(tempfile.mkdtemp(dir=self._trash)) / "part"

    def _order(self, path: kiv.Path) -> list[str]:
        return self._orders.setdefault(self.file(path).stat().st_ino, self._names(path))

    def _names(self, path: kiv.Path) -> list[str]:
        """The names in the folder: those whose order is known first, then by name."""
        file = self.file(path)
        with os.scandir(file) as entries:
            there = {entry.name for entry in entries if file / entry.name != self._trash}
        known = self._orders.get(file.stat().st_ino)
        if known is None:
            return sorted(there)
        known[:] = [name for name in known if name in there]
        known += sorted(there.difference(known))
        return list(known)


class RunTime:
    """The run-time of one folder, for as long as it is open.

    What is deleted goes to `trash`, which must be on the same file system: by default `.trash` in the folder itself,
    which is not shown. Nothing is ever deleted for good. The order of items is that of their names until they are
    reordered; it is not written to the disk.
    """

    def __init__(self, folder: str | os.PathLike[str], name: str = "files",
                 trash: str | os.PathLike[str] | None = None) -> None:
        place = Path(folder).resolve(strict=True)
        if not place.is_dir():
            raise NotADirectoryError(f"{place} is no folder")
        self._registration = kiv.RunTimeRegistration(name, "/")
        top = kiv.PathSegment([place.name or "root"], self.id, "/")
        self._tree = _Folder(kiv.Path(top), place, Path(trash).resolve() if trash else place / TRASH)
        self._table = self._attributes()
        kit.register_tree(self.id, self._tree)
        kiv.RunTimeMgr.instance().set_attributes_handler(self.id, kit.attributes_handler(self._attributes_of))

    @property
    def id(self) -> int:
        """The id of the run-time."""
        return self._registration.id

    @property
    def root(self) -> kiv.SceneItem:
        """The item of the folder."""
        item = self._tree.item(self._tree.root)
        if item is None:
            raise FileNotFoundError(str(self._tree.file(self._tree.root)))
        return item

    def file(self, path: kiv.Path) -> Path:
        """The file or folder that the item at `path` stands for."""
        return self._tree.file(path)

    def refresh(self) -> None:
        """Tells the scene that files may have changed behind our back."""
        kit.announce(kiv.SubtreeInvalidate(self.root))

    def close(self) -> None:
        """Takes the run-time back. Files and trash stay."""
        self._registration.close()

    def __enter__(self) -> "RunTime":
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def _attributes_of(self, item: kiv.SceneItem) -> kiv.Attributes | None:
        """Files have attributes; those of folders would change with every edit in them."""
        return self._table.attributes(item) if item.node_type == FILE else None

    def _attributes(self) -> kit.AttributeTable:
        tree = self._tree

        def size(path: kiv.Path) -> float | None:
            return float(tree.file(path).stat().st_size) if tree.node_type(path) == FILE else None

        def modified(path: kiv.Path) -> float | None:
            return tree.file(path).stat().st_mtime if tree.node_type(path) == FILE else None

        def set_modified(path: kiv.Path, seconds: float) -> None:
            os.utime(tree.file(path), (seconds, seconds))

        table = kit.AttributeTable()
        table.add("size", kiv.Attribute.DOUBLE, size, display_name="size in bytes")
        table.add("modified", kiv.Attribute.DOUBLE, modified, set_modified,
                  display_name="modified, in seconds since 1970")
        return table
