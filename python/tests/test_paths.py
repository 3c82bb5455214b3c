"""Paths and the trie against models of lists of names."""

import copy
import pickle

import pytest
from hypothesis import given
from hypothesis import strategies as st

import kiv

NAMES = st.text(st.characters(exclude_characters="/,\0", exclude_categories=["Cs"]), min_size=1, max_size=6)
SHORT = st.lists(st.sampled_from("abc"), min_size=1, max_size=4)


@pytest.fixture(scope="module", autouse=True)
def separators():
    with kiv.RunTimeRegistration("paths", "/"), kiv.RunTimeRegistration("colons", ":"):
        yield


def path_of(names):
    return kiv.Path(kiv.PathSegment(names, kiv.RunTimeMgr.instance().get_id("paths"), "/"))


@given(st.lists(NAMES, min_size=1, max_size=5))
def test_a_path_is_its_names(names):
    path = path_of(names)
    assert (path.names, list(path), len(path), path.name) == (names, names, len(names), names[-1])
    assert [path[index] for index in range(-len(names), len(names))] == names * 2
    assert path.parent == (path_of(names[:-1]) if names[1:] else kiv.Path())
    assert path / "x" == path + "x" == path_of([*names, "x"])
    assert path.pop_head().names == names[1:]
    assert path.head(len(names)) == path
    assert path.sibling("x").names == [*names[:-1], "x"]


@given(st.lists(st.sampled_from(["a", "b", "c1"]), min_size=1, max_size=5))
def test_paths_go_to_text_and_back(names):
    path = path_of(names)
    assert str(path) == "/" + "/".join(names)
    assert kiv.Path(str(path)) == pickle.loads(pickle.dumps(path)) == copy.deepcopy(path) == path
    assert repr(path) == f"Path('{path}')"


@given(SHORT, SHORT)
def test_paths_are_ordered_and_hashed_by_their_names(left, right):
    a, b = path_of(left), path_of(right)
    assert (a == b, a < b, a <= b, a > b) == (left == right, left < right, left <= right, left > right)
    assert (hash(a) == hash(b)) >= (left == right)
    assert a.starts_with(b) == (left[: len(right)] == right)
    if a.starts_with(b):
        assert a.reparent(b, path_of(["new"])).names == ["new", *left[len(right):]]


def test_what_is_wrong_with_a_path_is_said_by_a_class():
    with pytest.raises(kiv.InvalidOperationOnPath):
        kiv.Path().pop()
    for text, kind in (("/a,,b", kiv.EmptyPathSegment), ("a", kiv.InvalidPath)):
        with pytest.raises(kind) as caught:
            kiv.Path(text)
        assert isinstance(caught.value, kiv.Error) and isinstance(caught.value, ValueError)
    with pytest.raises(IndexError):
        path_of(["a"])[1]
    with pytest.raises(TypeError):
        kiv.Path(1)


def test_segments_count_in_equality():
    nested = kiv.Path("/a,:b")
    assert (nested.nb_segments, [str(part) for part in nested.segments]) == (2, ["/a", ":b"])
    assert nested.run_time_id == kiv.RunTimeMgr.instance().get_id("colons")
    assert nested != kiv.Path("/a/b") and nested.names == ["a", "b"]
    assert len({nested, kiv.Path("/a,:b"), kiv.Path("/a/b")}) == 2


@given(st.lists(st.tuples(st.booleans(), SHORT), max_size=30), SHORT)
def test_the_trie_answers_as_a_dictionary_does(steps, asked):
    trie, model = kiv.Trie(), {}
    for adding, names in steps:
        path = path_of(names)
        if adding:
            trie.add(path, model.setdefault(path, object()))
        else:
            assert trie.remove(path) == (model.pop(path, None) is not None)
    path = path_of(asked)
    below = {at: data for at, data in model.items() if at.starts_with(path)}
    above = {at for at in model if path.starts_with(at)}
    assert trie.find(path) is model.get(path)
    assert set(trie.data_under(path)) == set(below.values())
    assert (path in trie, trie.contains_ancestor_inclusive(path)) == (path in model, bool(above))
    assert trie.contains_ancestor(path) == bool(above - {path})
    assert trie.contains_descendant(path) == bool(set(below) - {path})
