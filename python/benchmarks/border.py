"""What the border between Python and C++ costs, per item, beside the same in C++ and beside trees of Python objects.

Run it with the package installed, from a release build; `pip install anytree`, and `--cpp` with the program made of
border.cpp, fill the other columns.
"""

import argparse
import statistics
import subprocess
import time
from collections.abc import Callable, Sequence

import kiv
from kiv import memory

try:
    import anytree
except ImportError:
    anytree = None

COUNT = 100_000

Work = Callable[[], object] | float | None  # what is measured, what was measured in nanoseconds, or nothing


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


def measure(work: Callable[[], object], count: int = COUNT, repetitions: int = 7) -> float:
    """The median time of `work`, in nanoseconds for each of its `count` items."""
    times = []
    for _ in range(repetitions):
        begin = time.process_time_ns()
        work()
        times.append(time.process_time_ns() - begin)
    return statistics.median(times) / count


def report(names: Sequence[str], rows: Sequence[tuple[str, int, Sequence[Work]]]) -> None:
    """Measures and prints the rows: a name, the number of items, and the work in each library; the first is ours.
    Times are those of the process, so that a busy machine matters less."""
    print("| work, ns per item |" + "".join(f" {name} |" for name in names)
          + "".join(f" {names[0]} / {name} |" for name in names[1:]))
    print("| --- |" + " ---: |" * (2 * len(names) - 1))
    for row, count, works in rows:
        times = [measure(work, count) if callable(work) else work for work in works]
        ratios = [times[0] / other if other else None for other in times[1:]]  # type: ignore[operator]
        print(f"| {row} |" + "".join(f" {taken:.0f} |" if taken else " |" for taken in times)
              + "".join(f" {ratio:.1f} |" if ratio else " |" for ratio in ratios), flush=True)


def in_cpp(program: str | None) -> dict[str, float]:
    """The times that the C++ program measures, by the names of the rows."""
    if not program:
        return {}
    lines = subprocess.run([program], capture_output=True, text=True, check=True).stdout.splitlines()
    return {name: float(number) for name, number in (line.rsplit(" ", 1) for line in lines)}


def main() -> None:
    parser = argparse.ArgumentParser()
    parser.add_argument("--cpp", help="the program of border.cpp")
    cpp = in_cpp(parser.parse_args().cpp)
    run_time = memory.RunTime()
    top = run_time.model.make(run_time.model.root, "group", "top")
    run_time.model.make_all(top.path, "mesh", [f"m{index}" for index in range(COUNT)])
    plain = Node("top", Node("world"))
    for index in range(COUNT):
        Node(f"m{index}", plain)
    items, nodes = top.children, plain.children
    others = []
    if anytree:
        other = anytree.Node("top", anytree.Node("world"))
        # One assignment for all: each single one takes time linear in the children there.
        other.children = others = [anytree.Node(f"m{index}", length=1.0) for index in range(COUNT)]
    selection, texts = kiv.Selection(items), [node.path for node in nodes]
    newer = kiv.Hierarchy_v4_2.of(top)
    size = items[0].attributes.add_attribute(kiv.Attribute.DOUBLE, "size")

    def known(work: Callable[[], object]) -> Work:
        return work if anytree else None

    rows = [
        ("list the children", lambda: list(top.children), lambda: list(plain.children),
         known(lambda: list(other.children))),
        ("names and types, no items", lambda: newer.child_infos(0, COUNT), lambda: [(n.name, "mesh") for n in nodes],
         known(lambda: [(n.name, "mesh") for n in others])),
        ("the path of an item", lambda: [item.path for item in items], lambda: [node.path for node in nodes],
         known(lambda: [node.path for node in others])),
        ("select all", lambda: kiv.Selection(items), lambda: dict.fromkeys(texts), None),
        ("is it selected", lambda: [item in selection for item in items],
         lambda s=set(texts): [t in s for t in texts], None),
        ("all selected paths as text", lambda: selection.path_texts, lambda: [node.path for node in nodes],
         known(lambda: ["/".join([str(n.name) for n in node.path]) for node in others])),
        ("a path from text", lambda: [kiv.Path(text) for text in texts], lambda: [t.split("/") for t in texts], None),
        ("read an attribute", lambda: [size.value for _ in texts], lambda: [n.attributes["size"] for n in nodes],
         known(lambda: [n.length for n in others])),
    ]
    report(["kiv", "C++", "plain Python", "anytree"],
           [(name, COUNT, (ours, cpp.get(name), theirs, third)) for name, ours, theirs, third in rows])


if __name__ == "__main__":
    main()
