"""The guide is true: its blocks run one after another, and print what stands below them."""

import contextlib
import importlib.util
import io
import os
import re
from pathlib import Path

import pytest

import kiv

GUIDE = Path(os.environ.get("KIV_GUIDE", Path(__file__).parents[2] / "docs" / "python.md"))


@pytest.fixture(autouse=True)
def nothing_is_left():
    yield
    kiv._kiv._clear_all()


@pytest.mark.skipif(not GUIDE.exists(), reason="the guide is not beside the tests")
def test_every_block_prints_what_the_guide_says():
    text = GUIDE.read_text()
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
