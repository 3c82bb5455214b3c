"""What is kept for how long, and that nothing is lost or left."""

import gc
import threading
import weakref

import pytest

import kiv
from kiv import host, kit


def test_an_observation_ends_when_it_is_closed_or_dropped(scene):
    subject, told = kiv.Subject(), []
    observation = subject.add_observer(told.append)
    assert subject.has_observer(observation) and subject.nb_observers == 1
    note = kiv.ObjectDestroyed("/world/x")
    subject.notify(note)
    assert told == [note] and told[0] is note
    observation.close()
    observation.close()
    subject.notify(note)
    assert len(told) == 1 and not observation.is_open and not subject.has_observers
    observation = subject.add_observer(told.append)
    with pytest.warns(ResourceWarning, match="observer was dropped"):
        del observation
        gc.collect()
    assert not subject.has_observers


def test_an_observer_that_is_held_by_itself_is_collected(scene):
    class Window:
        def __init__(self, subject):
            self.observation = subject.add_observer(self.update)

        def update(self, notification):
            pass

    subject = kiv.Subject()
    window = weakref.ref(Window(subject))
    with pytest.warns(ResourceWarning):
        gc.collect()
    assert window() is None and not subject.has_observers


def test_what_an_observer_raises_reaches_the_error_channel(scene):
    def fails(notification):
        raise KeyError("lost")

    records = []
    with host.ErrorChannel(records.append), kiv.Scene.instance().add_observer(fails):
        scene.make(scene.root, "group", "g")
    (record,) = records
    assert "in fails" in record.message and isinstance(record.error, KeyError)
    assert record.error.__traceback__.tb_frame.f_code.co_name == "fails"


class Stamped(kiv.SceneItem):
    node_type = "stamped"

    def __init__(self, path):
        super().__init__(path)
        self.stamp = 7


def test_an_object_that_only_cpp_holds_keeps_its_python_half(scene):
    selection = kiv.Selection([Stamped(scene.root / "s")])
    gc.collect()
    (item,) = selection
    assert type(item) is Stamped and item.stamp == 7 and item.node_type == "stamped"
    alive = weakref.ref(item) if hasattr(item, "__weakref__") else None
    del item
    selection.clear()
    assert alive is None or alive() is None


def test_commands_in_python_are_undone_as_all_others(scene):
    class Count(kiv.UndoableCommand):
        command_string = "Count"
        total = 0

        def undo(self):
            Count.total -= 1

        def redo(self):
            Count.total += 1

    history = kiv.UndoableCommandMgr.instance()
    history.execute_cmd(Count())
    gc.collect()
    assert (Count.total, history.undo_text) == (1, "Count")
    assert history.undo() and Count.total == 0 and history.redo() and Count.total == 1
    command = kit.command(5, "add", lambda: None, lambda: None)
    assert command.belongs_to(5) and not command.belongs_to(6) and command.command_string == "add"


def test_what_is_not_overridden_is_said(scene):
    with pytest.raises(NotImplementedError, match="must define 'node_type'"):
        _ = kiv.SceneItem(scene.root).node_type
    with pytest.raises(NotImplementedError, match="HierarchyHandler must define 'create_item'"):
        kiv.HierarchyHandler().create_item(scene.root)
    with pytest.raises(TypeError):
        kiv.Hierarchy()


def test_a_table_and_what_it_calls_are_collected_together(scene):
    class Data:
        def __init__(self):
            self.table = kit.AttributeTable().add("size", kiv.Attribute.FLOAT, self.size)

        def size(self, path):
            return 1.0

    data = Data()
    assert data.table.value(scene.root, "size") == 1
    gone = weakref.ref(data)
    del data
    gc.collect()
    assert gone() is None


def test_the_collector_may_run_on_another_thread(scene):
    def churn():
        for _ in range(50):
            loop = [kiv.Selection([Stamped(scene.root / "s")])]
            loop.append(loop)
            gc.collect()

    threads = [threading.Thread(target=churn) for _ in range(2)]
    for thread in threads:
        thread.start()
    for index in range(200):
        scene.make(scene.root, "group", f"g{index}")
    for thread in threads:
        thread.join()
    assert len(scene) == 201


def test_the_interpreter_ends_with_everything_installed(run_script):
    assert run_script("""
        import kiv
        from kiv import host, kit, memory

        class Item(kiv.SceneItem):
            node_type = "thing"

        class Handler(kiv.HierarchyHandler):
            def hierarchy(self, item): return None
            def create_item(self, path): return Item(path)
            def root_items(self, gateway): return []

        run_time = memory.RunTime()
        kiv.Scene.initialize_instance(host.HostScene())
        history = host.UndoHistory()
        kiv.UndoableCommandMgr.initialize_instance(history)
        kiv.GlobalSelection.initialize_instance(kiv.ObservableSelection())
        registration = kiv.RunTimeRegistration("things", ":", kiv.RunTimeMgr.Handlers(hierarchy_handler=Handler()))
        kiv.set_log_listener(lambda record: None)
        kiv.set_run_time_listener(lambda event, id: None)
        channel = host.ErrorChannel(lambda record: None)
        top = kiv.Hierarchy.create_item(run_time.model.root)
        history.execute_cmd(top.hierarchy.create_child_cmd("group", "a"))
        history.execute_cmd(kit.command(1, "x", lambda: history, lambda: None))
        kiv.GlobalSelection.get().extend([top, Item(kiv.Path(":x")), kiv.Hierarchy.create_item(":y")])
        kiv.NamedSelection.get("kept").append(Item(kiv.Path(":z")))
        table = kit.AttributeTable().add("size", kiv.Attribute.FLOAT, lambda path: 1.0)
        trie = kiv.Trie()
        trie.add(":x", trie)
        print(len(kiv.GlobalSelection.get()))
    """) == "3\n"
