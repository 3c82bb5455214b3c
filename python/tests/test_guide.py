"""The guide is true: its blocks run one after another, and print what stands below them."""

import contextlib
import importlib.util
import io
import os
import re
import subprocess
import sys
from pathlib import Path

import pytest

import kiv

GUIDE = Path(os.environ.get("KIV_GUIDE", Path(__file__).parents[2] / "docs" / "python.md"))


@pytest.fixture(autouse=True)
def nothing_is_left():
    yield
    kiv._kiv._clear_all()


def text_of_guide():
    if not GUIDE.exists():
        pytest.skip("the guide is not beside the tests")
    return GUIDE.read_text()


def test_every_block_prints_what_the_guide_says():
    text = text_of_guide()
    if not importlib.util.find_spec("pxr"):
        text = re.sub(r"^## OpenUSD stages\n.*?(?=^## )", "", text, flags=re.S | re.M)
    names = {"__name__": "guide"}
    blocks = re.findall(r"^```python\n(.*?)^```\n(?:\n?```text\n(.*?)^```\n)?", text, flags=re.S | re.M)
    assert len(blocks) > 8
    for number, (code, expected) in enumerate(blocks, 1):
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            exec(compile(code, f"block {number} of {GUIDE.name}", "exec"), names)
        assert output.getvalue() == expected, code


def test_the_run_times_of_the_guide_are_shown_by_the_program(tmp_path):
    pytest.importorskip("kiv._program", exc_type=ImportError)
    text = text_of_guide()
    for name, content in re.findall(r"^<!-- (\S+) -->\n```\w+\n(.*?)^```\n", text, flags=re.S | re.M):
        with open(tmp_path / name, "a") as file:
            file.write(content)
    sessions = re.findall(r"^```console\n(.*?)^```\n", text, flags=re.S | re.M)
    assert len(sessions) > 1
    for session in sessions:
        printed = ""
        for line in re.findall(r"^\$ (.*)\n", session, flags=re.M):
            command = line.replace("python", f"'{sys.executable}'", 1)
            ended = subprocess.run(command, shell=True, capture_output=True, text=True, check=False, cwd=tmp_path)
            printed += f"$ {line}\n{ended.stdout}{ended.stderr}"
        assert printed == session
