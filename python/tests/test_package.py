"""What an installed package consists of."""

from pathlib import Path

import pytest

import kiv


def test_a_wheel_loads_the_libraries_that_it_holds(run_script):
    own = Path(kiv.__file__).parent / "lib"
    held = {file.name.split(".so")[0] for file in own.glob("lib*.so*")}
    if "libassimp" not in held:
        pytest.skip("not a wheel with scene files")
    loaded = [Path(line) for line in run_script("""
        import kiv.assimp, kiv._program
        for line in open("/proc/self/maps").read().splitlines():
            if ".so" in line:
                print(line.split()[-1])
    """).splitlines()]
    assert {file.name.split(".so")[0] for file in loaded if file.parent == own} == held
    assert not [file for file in loaded if file.name.split(".so")[0] in held and file.parent != own]
