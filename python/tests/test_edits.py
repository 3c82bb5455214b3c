"""Commands, undo and notifications over a scene in memory."""

import math

import numpy
import pytest
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st

import kiv
from kiv import host, kit

STEPS = st.lists(st.tuples(st.sampled_from(["make", "delete", "rename", "move", "undo", "redo"]), st.integers(0, 99),
                           st.integers(0, 99)), max_size=20)


def snapshot(item):
    return (item.path.name, item.node_type, [snapshot(child) for child in item.children])


def flat(item):
    return [item] + [each for child in item.children for each in flat(child)]


def edit(kind, item, other):
    if kind == "make":
        return item.hierarchy.create_child_cmd("group", "n")
    if kind == "rename":
        return item.operations.rename_item_cmd("renamed")
    if kind == "move":
        return other.hierarchy.insert_child_cmd(item) if not other.path.is_at_or_below(item.path) else None
    return item.operations.delete_item_cmd()


@settings(suppress_health_check=[HealthCheck.function_scoped_fixture], max_examples=60)
@given(steps=STEPS)
def test_undo_and_redo_lead_through_the_same_scenes(scene, steps):
    history = kiv.UndoableCommandMgr.instance()
    history.clear()
    root = kiv.Hierarchy.create_item(scene.root)
    states, at = [snapshot(root)], 0
    for kind, first, second in steps:
        if kind in ("undo", "redo"):
            assert getattr(history, kind)() == (at > 0 if kind == "undo" else at + 1 < len(states))
            at = max(0, at - 1) if kind == "undo" else min(at + 1, len(states) - 1)
        else:
            items = flat(root)
            item, other = items[first % len(items)], items[second % len(items)]
            command = edit(kind, item, other) if kind == "make" or item != root else None
            if command is None:
                continue
            history.execute_cmd(command)
            at += 1
            states[at:] = [snapshot(root)]
        assert snapshot(root) == states[at]
        assert (history.can_undo, history.can_redo) == (at > 0, at + 1 < len(states))
    while history.undo():
        pass
    assert snapshot(root) == states[0]


class Mirror:
    """The paths of a scene, by its notifications alone."""

    def __init__(self, root):
        self.paths = {item.path for item in flat(root)}

    def __call__(self, notification):
        for op in kiv.for_each_op(notification):
            if op.op_type == kiv.SceneChanged.OpType.DELETED:
                self.paths = {path for path in self.paths if not path.is_at_or_below(op.path)}
                continue
            if op.op_type == kiv.SceneChanged.OpType.PATH_CHANGED:
                self.paths = {path.reparent(op.path, op.item.path) if path.is_at_or_below(op.path) else path
                              for path in self.paths}
            now = kiv.Hierarchy.create_item(op.item.path)  # later changes under the guard may have taken it away
            self.paths |= {item.path for item in flat(now)} if now else {op.item.path}


def random_edits(scene, steps, compare):
    """Makes edits of the steps, some under a guard; `compare` is called outside of it."""
    history, root, guards = kiv.UndoableCommandMgr.instance(), kiv.Hierarchy.create_item(scene.root), []
    history.clear()
    for kind, first, second in steps:
        items = flat(root)
        item, other = items[first % len(items)], items[second % len(items)]
        if kind == "guard" and not guards:
            guards.append(kiv.NotificationGuard(kiv.Scene.instance()).__enter__())
        elif kind == "guard":
            guards.pop().__exit__(None, None, None)
        elif kind in ("undo", "redo"):
            getattr(history, kind)()
        else:
            command = edit(kind, item, other) if kind == "make" or item != root else None
            if command is not None:
                history.execute_cmd(command)
        if not guards:
            compare()
    for guard in guards:
        guard.__exit__(None, None, None)
    compare()


GUARDED_STEPS = st.lists(st.tuples(st.sampled_from(["make", "delete", "rename", "move", "undo", "redo", "guard"]),
                                   st.integers(0, 99), st.integers(0, 99)), max_size=20)


@settings(suppress_health_check=[HealthCheck.function_scoped_fixture], max_examples=60)
@given(steps=GUARDED_STEPS)
def test_notifications_tell_all_that_happens(scene, steps):
    root = kiv.Hierarchy.create_item(scene.root)
    mirror = Mirror(root)

    def compare():
        assert mirror.paths == {item.path for item in flat(root)}

    with kiv.Scene.instance().add_observer(mirror):
        random_edits(scene, steps, compare)


def test_a_transaction_is_done_as_a_whole_or_not_at_all(scene):
    history, top = kiv.UndoableCommandMgr.instance(), kiv.Hierarchy.create_item(scene.root)
    with host.Transaction("two") as edits:
        edits.run(top.hierarchy.create_child_cmd("group", "a"))
        edits.run(top.hierarchy.create_child_cmd("group", "b"))
    assert (history.entries, len(top.children)) == (["two"], 2)
    with pytest.raises(KeyError), host.Transaction("fails") as edits:
        edits.run(top.hierarchy.create_child_cmd("group", "c"))
        raise KeyError
    assert (history.entries, len(top.children)) == (["two"], 2)
    with kiv.UndoableCommandGuard("guarded"):
        kiv.UndoableCommandMgr.instance().execute_cmd(top.hierarchy.create_child_cmd("group", "d"))
    assert history.entries == ["two", "guarded"]
    with pytest.raises(RuntimeError), host.Transaction("null") as edits:
        edits.run(None)


def test_the_scene_tells_what_happens_as_values(scene):
    told, top = [], kiv.Hierarchy.create_item(scene.root)
    installed = kiv.Scene.instance()
    with installed.add_observer(told.append):
        made = top.hierarchy.create_child_cmd("group", "a")
        made.execute()
        made.scene_item.operations.rename_item("b")
        with kiv.NotificationGuard(installed):
            scene.make_all(scene.root, "mesh", ["x", "y"])
    top.hierarchy.create_child_cmd("group", "unheard").execute()
    assert [type(each) for each in told] == [kiv.ObjectAdd, kiv.ObjectRename, kiv.SceneCompositeNotification]
    assert (str(told[0].changed_path), str(told[1].previous_path), told[1].item.node_name) == \
        ("/world/a", "/world/a", "b")
    assert [(op.op_type, op.path.name) for op in told[2]] == [(kiv.SceneChanged.OpType.ADDED, name) for name in "xy"]
    assert [op.path.name for op in kiv.for_each_op(told[2])] == ["x", "y"]


def test_an_attribute_is_of_its_class_and_values_round_trip(scene):
    item = scene.make(scene.root, "mesh", "m")
    for kind in kiv.attribute_types():
        if kind == kiv.Attribute.GENERIC:
            continue
        attribute = item.attributes.add_attribute(kind, f"a{kind}")
        assert type(attribute).__name__ == f"Attribute{kind}" and attribute.type == kind
        value = kiv.initial_value(kind)
        if kind != kiv.Attribute.ENUM_STRING:  # a new one has no values
            attribute.value = value
        assert attribute.value == value and type(attribute.value) is type(value)
        with pytest.raises(TypeError):
            attribute.value = object()
    number = item.attributes["aFloat"]
    command = number.set_cmd(0.5)
    command.execute()
    assert (number.value, number.string) == (0.5, "0.5")
    command.undo()
    assert number.value == 0
    number.set_metadata("range", 3)
    number.set_metadata("on", True)
    assert (number.metadata("range"), number.metadata("on"), number.metadata("none")) == (3, True, None)
    with pytest.raises(KeyError):
        item.attributes["none"]


def test_commands_of_interfaces_can_be_set_again(scene):
    camera = scene.make(scene.root, "camera", "c").camera
    command = camera.focal_length_cmd(20)
    assert type(command) is kiv.SetFloatUndoableCommand
    command.execute()
    assert command.set(35) and camera.focal_length == 35
    command.undo()
    camera.focal_length = 85
    assert camera.focal_length == 85 and camera.projection is kiv.Camera.Projection.PERSPECTIVE


def test_matrices_are_buffers(scene):
    transform = scene.make(scene.root, "group", "t").transform3d
    transform.translation = (1, 2, 3)
    matrix = transform.matrix
    view = numpy.asarray(matrix)
    assert view.shape == (4, 4) and list(view[3]) == [1, 2, 3, 1]
    view[3, 0] = 7
    assert matrix[3][0] == 7 and memoryview(matrix).format == "d"
    assert numpy.allclose(numpy.asarray(matrix * matrix), view @ view)
    assert transform.translation == (1, 2, 3) and transform.translation != (1, 2, 4)
    rotated = kit.rotation_matrix((0, 0, 90))
    assert math.isclose(kit.transformed_point((1, 0, 0), rotated).y, 1)
    with pytest.raises(ValueError):
        kiv.Matrix4d([[1, 2], [3, 4]])


def test_items_move_among_all_run_times(scene):
    group, lamp = scene.make(scene.root, "group", "group"), scene.make(scene.root, "light", "lamp")
    scene.make(group.path, "light", "lamp")
    with host.Transaction("Move") as edits:
        assert host.move_under(edits, lamp, group).path == group.path / "lamp1"
    assert [item.path for item in host.top_items()] == [scene.root]
    history = kiv.UndoableCommandMgr.instance()
    assert history.undo() and lamp.path in {child.path for child in kiv.Hierarchy.create_item(scene.root).children}
