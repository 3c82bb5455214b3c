"""What the border between Python and C++ costs, per item, beside plain Python. Run it with the package installed."""

import statistics
import time
from collections.abc import Callable

import kiv
from kiv import memory

COUNT = 100_000


class Node:
    """A plain tree in Python: what a pipeline tool would write itself."""

    __slots__ = ("attributes", "children", "name", "parent")

    def __init__(self, name: str, parent: "Node | None" = None) -> None:
        self.name, self.parent = name, parent
        self.children: list[Node] = []
        self.attributes = {"size": 1.0}
        if parent:
            parent.children.append(self)

    @property
    def path(self) -> str:
        names, node = [], self
        while node:
            names.append(node.name)
            node = node.parent
        return "/" + "/".join(reversed(names))


def measure(work: Callable[[], object], count: int = COUNT, repetitions: int = 5) -> float:
    """The median time of `work`, in nanoseconds for each of its `count` items."""
    times = []
    for _ in range(repetitions):
        begin = time.perf_counter_ns()
        work()
        times.append(time.perf_counter_ns() - begin)
    return statistics.median(times) / count


def main() -> None:
    run_time = memory.RunTime()
    top = run_time.model.make(run_time.model.root, "group", "top")
    run_time.model.make_all(top.path, "mesh", [f"m{index}" for index in range(COUNT)])
    plain = Node("top", Node("world"))
    for index in range(COUNT):
        Node(f"m{index}", plain)
    items, nodes = top.children, plain.children
    selection, texts = kiv.Selection(items), [node.path for node in nodes]
    newer = kiv.Hierarchy_v4_2.of(top)
    size = items[0].attributes.add_attribute(kiv.Attribute.DOUBLE, "size")
    rows = [
        ("list the children", lambda: list(top.children), lambda: list(plain.children)),
        ("names and types, no items", lambda: newer.child_infos(0, COUNT), lambda: [(n.name, "mesh") for n in nodes]),
        ("the path of an item", lambda: [item.path for item in items], lambda: [node.path for node in nodes]),
        ("select all", lambda: kiv.Selection(items), lambda: dict.fromkeys(texts)),
        ("is it selected", lambda: [item in selection for item in items], lambda s=set(texts): [t in s for t in texts]),
        ("all selected paths as text", lambda: selection.path_texts, lambda: [node.path for node in nodes]),
        ("a path from text", lambda: [kiv.Path(text) for text in texts], lambda: [t.split("/") for t in texts]),
        ("read an attribute", lambda: [size.value for _ in texts], lambda: [n.attributes["size"] for n in nodes]),
    ]
    print(f"{'work, ns per item of ' + str(COUNT):34}{'kiv':>10}{'plain Python':>14}{'ratio':>8}")
    for name, ours, theirs in rows:
        mine, other = measure(ours), measure(theirs)
        print(f"{name:34}{mine:10.0f}{other:14.0f}{mine / other:8.1f}")


if __name__ == "__main__":
    main()
