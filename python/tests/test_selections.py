"""Selections against a list of paths, and what they announce."""

import pytest
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st

import kiv

STEPS = st.lists(st.tuples(st.sampled_from(["append", "remove", "insert", "clear", "replace"]), st.integers(0, 7),
                           st.integers(0, 7)), max_size=25)


@pytest.fixture
def items(scene):
    top = scene.root
    made = [scene.make(top, "group", f"g{index}") for index in range(4)]
    return made + [scene.make(item.path, "mesh", "m") for item in made]


@settings(suppress_health_check=[HealthCheck.function_scoped_fixture])
@given(steps=STEPS)
def test_a_selection_is_an_ordered_set(items, steps):
    selection, model, told = kiv.ObservableSelection(), [], []
    with selection.add_observer(told.append):
        for what, first, second in steps:
            item, other = items[first], items[second]
            told.clear()
            before = list(model)
            if what == "append":
                assert selection.append(item) == (item not in model)
                model += [item] if item not in model else []
            elif what == "remove":
                assert selection.remove(item.path) == (item in model)
                model = [each for each in model if each != item]
            elif what == "insert" and other in model:
                assert selection.insert(other, item) == (item not in model)
                if item not in model:
                    model.insert(model.index(other), item)
            elif what == "clear":
                selection.clear()
                model = []
            elif what == "replace":
                selection.replace_with(kiv.Selection([other, item]))
                model = [other] if item == other else [other, item]
            assert list(selection) == model
            assert bool(told) or model == before
    assert list(reversed(selection)) == model[::-1]
    assert selection[1:3] == model[1:3] and [selection[row] for row in range(len(model))] == model
    assert selection.path_texts == [str(item.path) for item in model]
    for item in items:
        assert (item in selection, str(item.path) in selection) == (item in model,) * 2
        below = {each for each in model if each.path.starts_with(item.path)}
        assert selection.contains_descendant_inclusive(item.path) == bool(below)
        assert set(selection.items_under(item.path)) == below


def test_sets_of_selections_keep_their_order(items):
    left, right = kiv.Selection(items[:3]), kiv.Selection(items[2:5])
    assert list(left | right) == items[:5]
    assert list(left & right) == items[2:3]
    assert list(left - right) == items[:2]
    texts = kiv.Selection()
    assert texts.extend_texts([*left.path_texts, "/world/gone"]) == 3 and texts == left
    with pytest.raises(ValueError):
        left.next(items[7])
    with pytest.raises(TypeError):
        left.append(None)


def test_a_guard_gathers_changes(items):
    selection, told = kiv.ObservableSelection(), []
    with selection.add_observer(told.append), kiv.NotificationGuard(selection):
        selection.append(items[0])
        selection.remove(items[0])
        assert told == []
    (composite,) = told
    assert [op.op_type.name for op in composite] == ["APPEND", "REMOVE"] and len(composite) == 2
