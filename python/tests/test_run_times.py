"""Run-times written in Python: by the kit, by handlers, and the folder of the file system."""

import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path
from types import SimpleNamespace

import pytest

import kiv
from kiv import conformance, files, host, kit


class Rows(kit.Tree):
    """A tree in nested dictionaries; a part is the dictionary of an item."""

    def __init__(self, root):
        super().__init__(root)
        self.top = {"type": "group", "size": 1.0, "children": {}}

    def row(self, path):
        row = self.top if self.covers(path) else None
        for name in path.names[len(self.root):] if row else ():
            row = row["children"].get(name)
            if row is None:
                return None
        return row

    def node_type(self, path):
        row = self.row(path)
        return row["type"] if row else ""

    def children(self, path):
        row = self.row(path)
        return [(name, child["type"]) for name, child in row["children"].items()] if row else []

    def accepts(self, parent, node_type):
        return node_type in ("", "group", "row") and self.node_type(parent) == "group"

    def make(self, node_type):
        return {"type": node_type, "size": 1.0, "children": {}}

    def copy(self, path):
        row = self.row(path)
        return {**row, "children": {name: self.copy(path / name) for name in row["children"]}}

    def take(self, path):
        return self.row(path.parent)["children"].pop(path.name)

    def put(self, path, part, row):
        into = self.row(path.parent)["children"]
        listed = list(into.items())
        listed.insert(row, (path.name, part))
        into.clear()
        into.update(listed)


class Look(kit.UIInfoHandlerBase):
    run_time_label = "Rows"

    def tree_view_tooltip(self, item):
        return f"a {item.node_type}"


class Lens(kit.CameraBase):
    focal_length = 35.0

    @property
    def f_stop(self):
        return 2.0


def rows_run_time():
    registration = kiv.RunTimeRegistration("rows", "/")
    tree = Rows(kiv.Path(kiv.PathSegment(["rows"], registration.id, "/")))
    kit.register_tree(registration.id, tree)

    def set_size(path, value):
        tree.row(path)["size"] = value

    table = kit.AttributeTable()
    table.add("size", kiv.Attribute.FLOAT, lambda path: (tree.row(path) or {}).get("size"), set_size)
    manager = kiv.RunTimeMgr.instance()
    manager.set_attributes_handler(registration.id, kit.attributes_handler(table.attributes))
    manager.set_ui_info_handler(registration.id, Look(registration.id))
    manager.set_camera_handler(registration.id, kit.camera_handler(lambda item: Lens(item)))
    tree.put(tree.root / "a", tree.make("group"), 0)
    tree.put(tree.root / "b", tree.make("row"), 1)
    return SimpleNamespace(close=registration.close, tree=tree), [tree.root]


def test_a_tree_in_python_is_edited_as_any_scene(scene):
    made, (root,) = rows_run_time()
    history, told = kiv.UndoableCommandMgr.instance(), []
    top = kiv.Hierarchy.create_item(root)
    with kiv.Scene.instance().add_observer(told.append):
        command = top.hierarchy.create_child_cmd("row", "b")
        history.execute_cmd(command)
        history.execute_cmd(top.children[0].hierarchy.insert_child_cmd(command.scene_item))
    assert [str(each.item.path) for each in told] == ["/rows/b1", "/rows/a/b1"]
    item = kiv.Hierarchy.create_item("/rows/a/b1")
    history.execute_cmd(item.attributes["size"].set_cmd(2))
    assert item.attributes["size"].value == 2 and item.camera.f_stop == 2 and item.camera.focal_length == 35
    assert kiv.UIInfoHandler.of(item.run_time_id).tree_view_tooltip(item) == "a row"
    while history.undo():
        pass
    assert [row.name for row in host.outline(top)] == ["rows", "a", "b"]
    history.clear()
    made.close()


def test_values_make_attributes_cameras_and_lights(scene):
    made, (root,) = rows_run_time()
    tree, manager, lens, lamp = made.tree, kiv.RunTimeMgr.instance(), kit.CameraValues(), kit.LightValues()
    custom = {"mass": 1.5, "note": "heavy", "count": 3, "on": True, "at": kiv.Vector3d([1, 2, 3]), "none": None}
    lamp.type = kiv.Light.Type.POINT

    def set_lens(path, values):
        lens.focal_length = values.focal_length

    def set_lamp(path, values):
        lamp.intensity = values.intensity

    table = kit.AttributeTable().add_item_values(
        lambda path: custom if tree.row(path) else {}, lambda path, name, value: custom.update({name: value}))
    manager.set_attributes_handler(root.run_time_id, kit.attributes_handler(table))
    manager.set_camera_handler(root.run_time_id, kit.camera_handler(kit.CameraAccess(lambda path: lens, set_lens)))
    manager.set_light_handler(root.run_time_id, kit.light_handler(kit.LightAccess(lambda path: lamp, set_lamp)))

    item = kiv.Hierarchy.create_item(root / "a")
    types = ("Double", "String", "Int", "Bool", "Double3", "Generic")
    assert {name: item.attributes[name].type for name in item.attributes} == dict(zip(custom, types, strict=True))
    command = item.attributes["mass"].set_cmd(2)
    command.execute()
    assert custom["mass"] == 2 and isinstance(custom["mass"], float)
    command.undo()
    assert custom["mass"] == 1.5
    zoom = item.camera.focal_length_cmd(85)
    zoom.execute()
    assert lens.focal_length == 85
    zoom.undo()
    assert item.camera.focal_length == 50 and zoom.command_string == "Set focal length of a"
    item.light.intensity_cmd(4).execute()
    assert lamp.intensity == 4 and item.light.type == kiv.Light.Type.POINT
    made.close()


def test_super_reaches_the_function_that_is_overridden(scene):
    class Careful(Rows):
        def free_name(self, parent, name, own=""):
            return super().free_name(parent, name, own) + "_"

        def is_editable(self, path):
            return super().is_editable(path)

    class Logged(kiv.UndoableCommand):
        command_string = "logged"

        def execute(self):
            done.append("execute")
            super().execute()

        def undo(self):
            done.append("undo")

        def redo(self):
            done.append("redo")

    done = []
    with kiv.RunTimeRegistration("careful", "/") as registration:
        tree = Careful(kiv.Path(kiv.PathSegment(["careful"], registration.id, "/")))
        kit.register_tree(registration.id, tree)
        tree.put(tree.root / "a", tree.make("row"), 0)
        command = kiv.Hierarchy.create_item(tree.root).hierarchy.create_child_cmd("row", "a")
        kiv.UndoableCommandMgr.instance().execute_cmd(command)
        assert command.scene_item.node_name == "a1_"
        kiv.UndoableCommandMgr.instance().clear()
    Logged().execute()
    assert done == ["execute", "redo"], "execute does what redo does"


def test_run_times_in_python_keep_the_contracts(tmp_path):
    options = conformance.Options()
    options.nb_steps = 30

    def film():  # each time a new folder: files outlive their run-time
        folder = Path(tempfile.mkdtemp(dir=tmp_path)) / "film"
        (folder / "shots").mkdir(parents=True)
        (folder / "shots" / "one.txt").write_text("1")
        os.utime(folder / "shots" / "one.txt", (1, 1))
        run_time = files.RunTime(folder)
        return run_time, [run_time.root.path]

    for name, make in (("rows", rows_run_time), ("files", film)):
        report = conformance.check(conformance.Candidate(name, make), options)
        assert report.passed, report.text()


def test_files_are_renamed_moved_and_deleted_and_brought_back(scene, tmp_path):
    (tmp_path / "a").mkdir()
    (tmp_path / "a" / "one.txt").write_text("one")
    (tmp_path / "b").mkdir()
    history = kiv.UndoableCommandMgr.instance()
    with files.RunTime(tmp_path) as folder:
        a, b = folder.root.children
        one = a.children[0]
        assert (one.node_type, one.attributes["size"].value) == ("file", 3)
        history.execute_cmd(one.operations.rename_item_cmd("two.txt"))
        history.execute_cmd(b.hierarchy.insert_child_cmd(a.children[0]))
        assert (tmp_path / "b" / "two.txt").read_text() == "one"
        history.execute_cmd(b.children[0].attributes["modified"].set_cmd(1000.0))
        assert (tmp_path / "b" / "two.txt").stat().st_mtime == 1000
        history.execute_cmd(b.operations.delete_item_cmd())
        assert [item.path.name for item in folder.root.children] == ["a"] and not (tmp_path / "b").exists()
        while history.undo():
            pass
        assert (tmp_path / "a" / "one.txt").read_text() == "one" and (tmp_path / "b").is_dir()
        history.clear()
    with pytest.raises(FileNotFoundError):
        files.RunTime(tmp_path / "gone")


MINE = """
import kiv
from kiv import kit, memory

def scene():
    run_time = memory.RunTime("mine", "mine")
    run_time.model.make(run_time.model.root, "group", "a")
    return run_time, [run_time.model.root]

def nothing():
    return scene()[0], [kiv.Path()]

def broken():
    return {}["key"]

def forgetful():
    return 3

class Late(kit.Tree):
    def node_type(self, path):
        return "x" if path == self.root else ""

    def children(self, path):
        return [self.nowhere]

def late():
    registration = kiv.RunTimeRegistration("late", "/")
    root = kiv.Path(kiv.PathSegment(["late"], registration.id, "/"))
    kit.register_tree(registration.id, Late(root))
    return registration, [root]
"""


def test_the_program_shows_run_times_in_python(tmp_path):
    pytest.importorskip("kiv._program", exc_type=ImportError)
    (tmp_path / "mine.py").write_text(MINE)
    (tmp_path / "film").mkdir()
    (tmp_path / "film" / "one.txt").write_text("1")

    def run(*words, text=""):
        ended = subprocess.run([sys.executable, "-m", "kiv", *words], input=text, capture_output=True, text=True,
                               check=False, timeout=300, cwd=tmp_path,
                               env={**os.environ, "KIV_LEAK_WARNINGS": "1"})
        assert "nanobind" not in ended.stderr, ended.stderr
        return ended.returncode, ended.stdout, ended.stderr

    paths = "/mine\n/mine/a\n"
    for words in (["--python", "mine:scene", "tree", "--paths"], ["tree", "--paths", "mine:scene"]):
        assert run(*words) == (0, "/world\n" + paths, "")
    assert run("tree", "--paths", "film", "mine:scene")[1] == "/world\n/film\n/film/one.txt\n" + paths
    assert "parent          /mine\n" in run("show", "mine:scene", "/mine/a")[1]
    assert run("find", "--name", "one*", "--paths", "film")[1] == "/film/one.txt\n"

    code, printed, _ = run("shell", "film", text="pwd\nmake folder new\nrename one.txt two.txt\nundo\nls\n")
    assert code == 0 and printed.splitlines()[0] == "/film" and "one.txt  file\nnew  folder\n" in printed
    assert (tmp_path / "film" / "new").is_dir()
    code, _, said = run("shell", "film", "--keep-going", "-c", "nope\nmake row x")
    assert code == 1 and "unknown command 'nope'" in said and len(said.splitlines()) == 2

    code, printed, _ = run("check", "mine:scene", "--only", "paths", "--json")
    assert code == 0 and json.loads(printed)["candidate"] == "mine:scene"
    assert run("check", "--python", "film", "--only", "paths,names")[0] == 0
    assert run("check", "mine:nothing", "--only", "hierarchy")[0] == 1
    assert [run(*words)[0] for words in (["check"], ["check", "film", "--python", "mine:scene", "x"])] == [2, 2]

    assert run("tree", "mine:gone")[2] == "kiv: mine:gone: no function 'gone' in the module 'mine'\n"
    code, _, said = run("--python", "mine:broken", "tree", "film")
    assert code == 1 and "mine.py" in said and said.endswith("kiv: mine:broken: KeyError: 'key'\n")
    assert run("tree", "mine:forgetful")[2].startswith("kiv: mine:forgetful: the function must return an object and")
    lines = run("--python", "mine:late", "shell", "-c", "ls")[2].splitlines()
    assert lines[0].startswith("Traceback") and "mine.py" in lines[-2] and lines[-2].endswith("in children")
    assert lines[-1] == "kiv: line 1: AttributeError: 'Late' object has no attribute 'nowhere'"


def test_scene_files_are_mounted_saved_and_opened(tmp_path):
    assimp = pytest.importorskip("kiv.assimp", exc_type=ImportError)
    from kiv import document

    triangle = tmp_path / "triangle.obj"
    triangle.write_text("o triangle\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n")
    with document.Workspace() as workspace:
        gateway = workspace.mount(str(triangle))
        assert workspace.mounted_file(gateway) == str(triangle)
        names = [row.name for row in host.outline(workspace.root)]
        document.save(workspace, str(tmp_path / "scene.json"))
    with document.Workspace() as workspace:
        with pytest.raises(RuntimeError, match="no command manager"):
            document.open(workspace, str(tmp_path / "scene.json"))
        kiv.UndoableCommandMgr.initialize_instance(kiv.UndoableCommandMgr())
        document.open(workspace, str(tmp_path / "scene.json"))
        assert [row.name for row in host.outline(workspace.root)] == names and "triangle" in names
    kiv.UndoableCommandMgr.initialize_instance(None)
    with pytest.raises(assimp.ImportError):
        assimp.read(str(tmp_path / "scene.json"))


class Notes(kit.Tree):
    """The lines of the text files that are mounted."""

    def __init__(self, mounts):
        super().__init__(kiv.Path(kiv.PathSegment(["notes"], mounts.run_time_id, ":")))
        self.mounts = mounts

    def roots(self, gateway=""):
        gateway = kiv.Path(gateway) if isinstance(gateway, str) else gateway
        shown = gateway and self.mounts.find(gateway)
        return [gateway / kiv.PathSegment(["notes"], self.mounts.run_time_id, ":")] if shown else []

    def node_type(self, path):
        mount = self.mounts.at(path)
        names = list(path.segments[-1]) if mount else []
        if len(names) == 1:
            return "notes"
        return "note" if names and names[1] in mount.lines else ""

    def children(self, path):
        mount = self.mounts.at(path)
        return [(line, "note") for line in mount.lines] if mount and len(path.segments[-1]) == 1 else []


class Note(kit.Mount):
    def __init__(self, file):
        super().__init__()
        with open(file) as lines:
            self.lines = lines.read().split()


class OwnHandler(kiv.SceneFileHandler):
    """The same without the kit's help."""

    suffixes = (".own",)

    def __init__(self, mounts):
        super().__init__()
        self.mounts = mounts

    def read(self, file, progress):
        if progress is not None and not progress(0.5):
            raise RuntimeError("given up")
        note = Note(file)

        def mounting(gateway):
            note.file_name = file
            return self.mounts.mount_cmd(note, gateway, "Mount")

        return mounting

    def file(self, gateway):
        mount = self.mounts.find(gateway)
        return mount.file_name if mount else ""


@pytest.mark.parametrize("suffix", [".notes", ".own"])
def test_documents_mount_files_of_run_times_in_python(history, tmp_path, suffix):
    document = pytest.importorskip("kiv.document")
    file, saved = tmp_path / f"shopping{suffix}", str(tmp_path / "scene.json")
    file.write_text("milk bread")
    with kiv.RunTimeRegistration("notes", ":") as registration, document.Workspace() as workspace:
        mounts = kit.Mounts(registration.id, ":")
        kit.register_tree(registration.id, Notes(mounts))
        handler = OwnHandler(mounts) if suffix == ".own" else mounts.scene_file_handler([".notes"], Note)
        kiv.RunTimeMgr.instance().set_scene_file_handler(registration.id, handler)
        assert kiv.SceneFileHandler.run_times_for(f"X{suffix.upper()}") == [registration.id]
        history.execute_cmd(workspace.mount_cmd(str(file), workspace.root))
        shown = [row.name for row in host.outline(workspace.root)]
        assert shown == ["world", "shopping", "notes", "milk", "bread"]
        (mount,) = workspace.mounts()
        assert (mount.file, mount.run_time) == (str(file), "notes")
        assert workspace.mount_at(mount.gateway).file == mount.file
        history.execute_cmd(kiv.Hierarchy.create_item(mount.gateway).operations.duplicate_item_cmd())
        history.undo()
        document.save(workspace, saved)
        history.undo()
        assert len(workspace.root.children) == 0
        document.open(workspace, saved)
        assert [row.name for row in host.outline(workspace.root)] == shown
        with pytest.raises(RuntimeError, match="^No such file or directory"):
            workspace.mount(str(tmp_path / f"none{suffix}"))
        if suffix == ".own":
            def cancel(name, fraction):
                raise document.Cancelled("enough") if fraction < 1 else AssertionError

            workspace.set_progress(cancel)
            with pytest.raises(document.Cancelled, match="enough"):
                workspace.mount(str(file))
            workspace.set_progress(None)
        history.clear()
        mounts.close()
