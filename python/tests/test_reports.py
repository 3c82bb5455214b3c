"""What tools ask of a scene: its rows, its differences, what matches, and what happened in it."""

import gc
import weakref

import pytest
from hypothesis import HealthCheck, given, settings
from test_edits import GUARDED_STEPS, random_edits

import kiv
from kiv import host


class Rows(host.SceneTree.Listener):
    """Mirrors a tree in lists of names by the calls alone."""

    def __init__(self, tree):
        super().__init__()
        self.tree = tree
        self.rows = {tree.root: []}
        self.under_way = []

    def begin_insert(self, parent, first, count):
        self.under_way.append((parent, first, count))

    def end_insert(self):
        parent, first, count = self.under_way.pop()
        self.rows[parent][first:first] = new = [parent.child(row) for row in range(first, first + count)]
        self.rows.update({node: [] for node in new})

    def begin_remove(self, parent, first, count):
        self.under_way.append((parent, first, count))

    def end_remove(self):
        parent, first, count = self.under_way.pop()
        assert not any(node.is_valid for node in self.rows[parent][first:first + count])
        del self.rows[parent][first:first + count]

    def begin_move(self, node, new_parent, new_row):
        self.under_way.append((node, new_parent, new_row))
        self.rows[node.parent].remove(node)

    def end_move(self):
        node, parent, row = self.under_way.pop()
        self.rows[parent].insert(row, node)


def test_rows_follow_the_scene_and_nodes_end_with_their_items(scene):
    table = scene.make(scene.root, "group", "table")
    for name in "abc":
        scene.make(table.path, "mesh", name)
    with host.SceneTree() as tree:
        rows = Rows(tree)
        tree.add_listener(rows)
        world = tree.reveal(table.path).parent
        tree.fetch(tree.find(table.path), 2)
        assert tree.can_fetch(tree.find(table.path)) and not tree.can_fetch(world)
        tree.fetch(tree.find(table.path))
        node, b = tree.find(table.path), tree.find(table.path / "b")
        assert [child.name for child in node] == ["a", "b", "c"]
        assert node.child(1) is b and b.item.path == "/world/table/b"
        history = kiv.UndoableCommandMgr.instance()
        history.execute_cmd(table.operations.rename_item_cmd("desk"))
        assert b.is_valid and b.path == "/world/desk/b" and tree.find("/world/table") is None
        history.execute_cmd(b.item.operations.delete_item_cmd())
        assert not b.is_valid and [child.name for child in rows.rows[node]] == ["a", "c"]
        with pytest.raises(RuntimeError, match="no longer in a tree"):
            _ = b.path
        history.undo()
        scene.move("/world/desk/a", scene.root)
        assert [each.name for each in rows.rows[node]] == ["b", "c"]
        assert [each.name for each in rows.rows[world]] == ["desk", "a"]
        with pytest.raises(IndexError):
            node.child(2)
        history.clear()
    assert not node.is_valid and not tree.is_open


@settings(suppress_health_check=[HealthCheck.function_scoped_fixture], max_examples=40)
@given(steps=GUARDED_STEPS)
def test_rows_are_those_of_the_scene_after_any_edits(scene, steps):
    with host.SceneTree() as tree:
        rows = Rows(tree)
        tree.add_listener(rows)

        def compare():
            open_ = [tree.root]
            while open_:
                node = open_.pop()
                tree.fetch(node)
                assert rows.rows[node] == list(node) and all(child.row == row for row, child in enumerate(node))
                shown = [child.path for child in node.item.children] if node.item else [scene.root]
                assert [child.path for child in node] == shown
                open_ += node

        random_edits(scene, steps, compare)


def test_a_listener_may_fail_end_its_tree_and_hold_it(scene):
    class Window(host.SceneTree.Listener):
        def __init__(self):
            super().__init__()
            self.is_ending = False
            self.tree = host.SceneTree()
            self.tree.add_listener(self)
            self.tree.fetch(self.tree.root)

        def changed(self, node):
            raise KeyError(node.name)

        def begin_insert(self, parent, first, count):
            if self.is_ending:
                self.tree.close()

        def end_insert(self):
            assert not self.is_ending, "called after the end"

    scene.make(scene.root, "group", "first")
    window, records = Window(), []
    with host.ErrorChannel(records.append):
        window.tree.fetch(window.tree.find(scene.root))
        scene.rename(scene.root / "first", "earth")
        assert [repr(record.error) for record in records] == ["KeyError('earth')"] and window.tree.is_open
        window.is_ending = True
        scene.make(scene.root, "group", "g")
        assert not window.tree.is_open
        scene.make(scene.root, "group", "h")
        assert len(records) == 1
    records.clear()
    gone = weakref.ref(window)
    del window
    gc.collect()
    assert gone() is None
    other = weakref.ref(Window())
    gc.collect()
    assert other() is None


def test_differences_and_conditions(scene):
    old, new = scene.make(scene.root, "group", "old"), scene.make(scene.root, "group", "new")
    for top in (old, new):
        for name in ("lamp", "cup"):
            scene.make(top.path, "mesh", name).attributes.add_attribute(kiv.Attribute.FLOAT, "size").value = 2
    assert host.compare(old, new) == []
    scene.rename(new.path / "cup", "mug")
    kiv.Hierarchy.create_item(new.path / "lamp").attributes["size"].value = 2.5
    scene.make(new.path, "group", "more")
    found = {host.text_of(each.kind): each for each in host.compare(old, new)}
    assert list(found) == ["changed", "renamed", "added"]
    changed = found["changed"]
    assert (changed.group, changed.name, changed.was, changed.is_) == (host.ATTRIBUTE, "size", 2, 2.5)
    assert found["renamed"].after == new.path / "mug" and not found["added"].before
    assert not any(each.name for each in host.compare(old, new, tolerance=0.5))
    assert not any(each.name for each in host.compare(old, new, counts=lambda group, name: name != "size"))
    assert host.is_same(kiv.Attribute.FLOAT, 1.0, 1.01, 0.1) and not host.is_same("Int", 1, 2, 0)
    big = host.ItemCondition("size>2.25")
    assert [item.path.name for item in host.items_like(scene_root(scene), scene_root(scene), "**/[lc]*")
            if big.holds(item)] == ["lamp"]
    assert big.holds_for(kiv.Attribute.FLOAT, 3) and not big.holds_for(kiv.Attribute.FLOAT, None)
    assert host.is_like("Lamp", "l*", ignores_case=True) and host.is_pattern("l*") and not host.is_pattern("l")
    with pytest.raises(ValueError, match="not a number"):
        host.ItemCondition("size>big")


def scene_root(model):
    return kiv.Hierarchy.create_item(model.root)


@pytest.fixture
def selection():
    kiv.GlobalSelection.initialize_instance(kiv.ObservableSelection())
    yield
    kiv.GlobalSelection.initialize_instance(None)


def test_a_recording_is_replayed(scene, selection):
    history, root, records = kiv.UndoableCommandMgr.instance(), scene_root(scene), []

    def run(line):
        word, name = line.split()
        if word != "make":
            raise ValueError(f"unknown command '{word}'")
        history.execute_cmd(root.hierarchy.create_child_cmd("group", name))

    with host.Recorder(records.append, root, history) as recorder:
        with recorder.input("make a"):
            run("make a")
        with pytest.raises(ValueError), recorder.input("paint a"):
            run("paint a")
        open_ = recorder.input("left open")
        open_.__enter__()
    open_.failed("too late")
    kinds = [record.kind for record in records]
    assert kinds[0] == "scene" and {"input", "entered", "error", "notification"} <= set(kinds)
    assert {record.cause for record in records if record.kind == "entered"} == {records[kinds.index("input")].id}
    read = host.read_records("".join(host.json_line(record) + "\n" for record in records))
    assert [(each.id, each.kind, each.text) for each in read] == [(each.id, each.kind, each.text) for each in records]
    with pytest.raises(RuntimeError, match="1"):
        host.read_records("not JSON")
    history.undo()
    history.clear()
    played = [record for record in read if record.text != "left open"]
    assert host.replay(played, run, root, history) == []
    (first, *_) = host.replay(played, run, root, history)
    assert first.input.kind == "scene" or first.now.text != first.recorded.text


def test_a_watch_hears_everything_and_may_end_itself(scene, selection):
    root, told = scene_root(scene), []
    lamp = scene.make(scene.root, "light", "lamp")
    with host.SceneWatch(told.append, root) as watch:
        lamp.transform3d.translation = (1, 2, 3)
        scene.make(scene.root, "group", "g")
        kiv.GlobalSelection.get().append(lamp)
        texts = [host.text_of(each) for each in told]
        assert len(told) >= 3 and any("/world/g" in text for text in texts), texts
        assert any(item.interface_name == "Transform3d" and item.path == lamp.path for item in kiv.observed_items())
        state = host.inspect(root)
        assert state.nb_items == 3 and state.leftovers == [] and state.run_times[0].name == "memory"
        assert {"scene", "global selection"} <= {each.subject for each in state.subjects}
        assert len(state.observed_items) >= 1 and state.run_times[0].handlers
    assert not watch.is_open and not any(item.path == lamp.path for item in kiv.observed_items())
    calls = []

    def once(notification):
        calls.append(notification)
        ending.close()

    ending = host.SceneWatch(once, root)
    scene.make(scene.root, "group", "h")
    scene.make(scene.root, "group", "i")
    assert len(calls) == 1
    with host.SceneWatch(lambda notification: None, root):
        assert not host.inspect(root).leftovers
