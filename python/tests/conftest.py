"""What the tests share: a scene in memory with a host's services, and an interpreter of its own for a script."""

import os
import subprocess
import sys
import textwrap
from collections.abc import Callable, Iterator

import pytest

import kiv
from kiv import host, memory


@pytest.fixture
def history() -> Iterator[host.UndoHistory]:
    """An installed undo history, and an installed scene."""
    made = host.UndoHistory()
    kiv.Scene.initialize_instance(host.HostScene())
    kiv.UndoableCommandMgr.initialize_instance(made)
    yield made
    made.clear()
    kiv.UndoableCommandMgr.initialize_instance(None)
    kiv.Scene.initialize_instance(None)


@pytest.fixture
def scene(history: host.UndoHistory) -> Iterator[memory.DataModel]:
    """An empty model at `/world`, under an installed scene and an installed undo history."""
    with memory.RunTime() as run_time:
        yield run_time.model
        history.clear()


@pytest.fixture
def run_script() -> Callable[[str], str]:
    """Runs a script in an interpreter of its own; it must end well and leak nothing. Gives its output."""

    def run(script: str) -> str:
        ended = subprocess.run([sys.executable, "-X", "dev", "-W", "error", "-c", textwrap.dedent(script)],
                               capture_output=True, text=True, check=False, timeout=300,
                               env={**os.environ, "KIV_LEAK_WARNINGS": "1"})
        assert ended.returncode == 0, ended.stderr
        assert "nanobind" not in ended.stderr, ended.stderr
        return ended.stdout

    return run
